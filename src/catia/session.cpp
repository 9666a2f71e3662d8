#include "catia/session.hpp"

#include "text/text.hpp"

namespace catia {

bool IsSessionTitle(std::string_view title) {
    return text::StartsWithIgnoringCase(title, "CATIASessionWnd") ||
           text::StartsWithIgnoringCase(title, "CATIA V5");
}

std::string Document::Name() const {
    return object_->get({"Document", "Name"}).AsText();
}

Selection Document::Selection() const {
    return catia::Selection(object_->get({"Document", "Selection"}).AsObject());
}

Product ProductDocument::Product() const {
    return catia::Product(object_->get({"ProductDocument", "Product"}).AsObject());
}

DrawingSheets DrawingDocument::Sheets() const {
    return DrawingSheets(object_->get({"DrawingDocument", "Sheets"}).AsObject());
}

DrawingRoot DrawingDocument::DrawingRoot() const {
    return catia::DrawingRoot(object_->get({"DrawingDocument", "DrawingRoot"}).AsObject());
}

Document Application::ActiveDocument() const {
    return Document(object_->get({"Application", "ActiveDocument"}).AsObject());
}

std::string Application::Name() const {
    return object_->get({"Application", "Name"}).AsText();
}

SystemConfiguration Application::SystemConfiguration() const {
    return catia::SystemConfiguration(
        object_->get({"Application", "SystemConfiguration"}).AsObject());
}

int SystemConfiguration::Version() const {
    return object_->get({"SystemConfiguration", "Version"}).AsInteger();
}

int SystemConfiguration::Release() const {
    return object_->get({"SystemConfiguration", "Release"}).AsInteger();
}

int SystemConfiguration::ServicePack() const {
    return object_->get({"SystemConfiguration", "ServicePack"}).AsInteger();
}

} // namespace catia
