// CATIA's application and documents: the members that the program calls, one call each. A failing
// call raises RunTimeError.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "automation/object.hpp"
#include "catia/drawing.hpp"
#include "catia/product.hpp"

namespace catia {

// Whether a window of this title belongs to a CATIA V5 session: the title begins with
// "CATIASessionWnd" or "CATIA V5", in any letter case. The words further in do not count.
bool IsSessionTitle(std::string_view title);

class Document {
  public:
    explicit Document(automation::ObjectPtr object) : object_(std::move(object)) {}

    // With its extension: "Product1.CATProduct".
    [[nodiscard]] std::string Name() const;
    [[nodiscard]] catia::Selection Selection() const;

    [[nodiscard]] const automation::ObjectPtr& object() const { return object_; }

  private:
    automation::ObjectPtr object_;
};

class ProductDocument {
  public:
    explicit ProductDocument(const Document& document) : object_(document.object()) {}

    // The top product.
    [[nodiscard]] catia::Product Product() const;

  private:
    automation::ObjectPtr object_;
};

class DrawingDocument {
  public:
    explicit DrawingDocument(const Document& document) : object_(document.object()) {}

    [[nodiscard]] DrawingSheets Sheets() const;
    [[nodiscard]] catia::DrawingRoot DrawingRoot() const;

  private:
    automation::ObjectPtr object_;
};

// What CATIA says of itself: V5 R28 SP4 is 5, 28 and 4.
class SystemConfiguration {
  public:
    explicit SystemConfiguration(automation::ObjectPtr object) : object_(std::move(object)) {}

    [[nodiscard]] int Version() const;
    [[nodiscard]] int Release() const;
    [[nodiscard]] int ServicePack() const;

  private:
    automation::ObjectPtr object_;
};

class Application {
  public:
    explicit Application(automation::ObjectPtr object) : object_(std::move(object)) {}

    // Fails when no document is open.
    [[nodiscard]] Document ActiveDocument() const;
    [[nodiscard]] std::string Name() const;
    [[nodiscard]] catia::SystemConfiguration SystemConfiguration() const;

  private:
    automation::ObjectPtr object_;
};

} // namespace catia
