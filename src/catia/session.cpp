#include "catia/session.hpp"

namespace catia {

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

} // namespace catia
