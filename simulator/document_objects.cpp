// The application and its documents.
#include "objects.hpp"
#include "session.hpp"

namespace simulator {

namespace {

// The release that the session stands in for: V5 R28 SP4.
class SystemConfigurationObject : public SessionObject {
  public:
    explicit SystemConfigurationObject(LinkPtr link) : SessionObject(std::move(link), nullptr) {}

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "SystemConfiguration",
            {Number("Version", 5), Number("Release", 28), Number("ServicePack", 4)}};
        return info;
    }

  private:
    static MemberInfo Number(std::string name, std::int32_t number) {
        return ReadOnly<SystemConfigurationObject>(
            std::move(name), [number](SystemConfigurationObject&) { return number; });
    }
};

class ApplicationObject : public SessionObject {
  public:
    explicit ApplicationObject(LinkPtr link) : SessionObject(std::move(link), nullptr) {}

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "Application",
            {ReadOnly<ApplicationObject>("ActiveDocument",
                                         [](ApplicationObject& application) {
                                             const DocumentPtr active =
                                                 application.link()->session->ActiveDocument();
                                             if (active == nullptr) {
                                                 throw Refusal();
                                             }
                                             return MakeDocument(application.link(), active);
                                         }),
             ReadOnly<ApplicationObject>("Name", [](ApplicationObject&) { return "CNEXT"; }),
             ReadOnly<ApplicationObject>("SystemConfiguration", [](ApplicationObject& application) {
                 return automation::ObjectPtr(
                     std::make_shared<SystemConfigurationObject>(application.link()));
             })}};
        return info;
    }
};

class DocumentObject : public SessionObject {
  public:
    using SessionObject::SessionObject;

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo product{
            ClassName(DocumentKind::kProduct),
            {Name(), Selection(), ReadOnly<DocumentObject>("Product", [](DocumentObject& object) {
                 return MakeProduct(object.link(), object.document(), object.document()->product);
             })}};
        static const ClassInfo drawing{
            ClassName(DocumentKind::kDrawing),
            {Name(), Selection(),
             ReadOnly<DocumentObject>("Sheets",
                                      [](DocumentObject& object) {
                                          return MakeSheets(object.link(), object.document());
                                      }),
             ReadOnly<DocumentObject>("DrawingRoot", [](DocumentObject& object) {
                 return MakeDrawingRoot(object.link(), object.document());
             })}};
        static const ClassInfo part{ClassName(DocumentKind::kPart), {Name(), Selection()}};
        switch (document()->kind) {
        case DocumentKind::kProduct:
            return product;
        case DocumentKind::kDrawing:
            return drawing;
        case DocumentKind::kPart:
            break;
        }
        return part;
    }

    [[nodiscard]] std::string Label() const override {
        return Class().name + "(\"" + document()->name + "\")";
    }

  private:
    static MemberInfo Name() {
        return ReadOnly<DocumentObject>(
            "Name", [](DocumentObject& object) { return object.document()->name; });
    }

    static MemberInfo Selection() {
        return ReadOnly<DocumentObject>("Selection", [](DocumentObject& object) {
            return MakeSelection(object.link(), object.document());
        });
    }
};

} // namespace

automation::ObjectPtr MakeApplication(LinkPtr link) {
    return std::make_shared<ApplicationObject>(std::move(link));
}

automation::ObjectPtr MakeDocument(LinkPtr link, DocumentPtr document) {
    return std::make_shared<DocumentObject>(std::move(link), std::move(document));
}

} // namespace simulator
