// The automation objects' common ground: a class of objects is a table of members, and one function
// carries out every call of any of them. It logs the call, makes it fail when it is armed to,
// converts the arguments to their declared types and runs the member.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "automation/object.hpp"
#include "automation/run_time_error.hpp"
#include "coercion.hpp"
#include "model.hpp"

namespace simulator {

class Session;
class SessionObject;

// Thrown by a member that does what CATIA refuses; it reaches the client as "The method ...
// failed".
struct Refusal {};

struct MemberInfo {
    using Call = std::function<automation::Value(SessionObject&, const automation::Array&)>;
    using Put = std::function<void(SessionObject&, const automation::Value&)>;

    std::string name;
    bool is_method = false;      // a function or sub; a property where not
    bool changes = false;        // a call changes the document; an assignment always does
    bool when_read_only = false; // a call that changes what is no part of the document's content
    std::vector<Kind> parameters;
    Call call;
    Kind put_kind = Kind::kText;
    Put put; // empty where the property is only read
};

struct ClassInfo {
    std::string name;
    std::vector<MemberInfo> members;

    // Matched without regard to case; null where the class has no such member.
    [[nodiscard]] const MemberInfo* Find(std::string_view member_name) const;
};

// Makers of members: `Object` is the class of objects, `call` takes it and the converted arguments.
template <typename Object, typename Call>
MemberInfo ReadOnly(std::string name, Call call) {
    MemberInfo member;
    member.name = std::move(name);
    member.call = [call](SessionObject& object, const automation::Array&) {
        return automation::Value(call(static_cast<Object&>(object)));
    };
    return member;
}

template <typename Object, typename Call, typename Put>
MemberInfo Property(std::string name, Kind kind, Call call, Put put) {
    MemberInfo member = ReadOnly<Object>(std::move(name), call);
    member.put_kind = kind;
    member.put = [put](SessionObject& object, const automation::Value& value) {
        put(static_cast<Object&>(object), value);
    };
    return member;
}

template <typename Object, typename Call>
MemberInfo Function(std::string name, std::vector<Kind> parameters, Call call) {
    MemberInfo member;
    member.name = std::move(name);
    member.is_method = true;
    member.parameters = std::move(parameters);
    member.call = [call](SessionObject& object, const automation::Array& arguments) {
        return automation::Value(call(static_cast<Object&>(object), arguments));
    };
    return member;
}

// A function that changes the document, such as Add of a collection.
template <typename Object, typename Call>
MemberInfo Maker(std::string name, std::vector<Kind> parameters, Call call) {
    MemberInfo member = Function<Object>(std::move(name), std::move(parameters), call);
    member.changes = true;
    return member;
}

// A member without a result, which changes the document.
template <typename Object, typename Call>
MemberInfo Sub(std::string name, std::vector<Kind> parameters, Call call) {
    return Maker<Object>(std::move(name), std::move(parameters),
                         [call](Object& object, const automation::Array& arguments) {
                             call(object, arguments);
                             return automation::Value();
                         });
}

// What all objects of one run of a session share. `session` is null once the session is gone.
struct Link {
    Session* session = nullptr;
};
using LinkPtr = std::shared_ptr<Link>;
using DocumentPtr = std::shared_ptr<Document>;

class SessionObject : public automation::Object {
  public:
    SessionObject(LinkPtr link, DocumentPtr document)
        : link_(std::move(link)), document_(std::move(document)) {}

    [[nodiscard]] virtual const ClassInfo& Class() const = 0;
    // How the object shows in the log: its class, and its name where it has one.
    [[nodiscard]] virtual std::string Label() const { return Class().name; }
    // What a selection takes of the object; null where it cannot be selected.
    [[nodiscard]] virtual std::shared_ptr<Element> Selectable() const { return nullptr; }
    // The table whose display a change of the object changes; null where there is none.
    [[nodiscard]] virtual const Table* DisplayingTable() const { return nullptr; }
    // Whether what the object shows is no longer in the document.
    [[nodiscard]] virtual bool Gone() const;

    // The member of that name; null where the class has none, or the session's release lacks it.
    [[nodiscard]] const MemberInfo* FindMember(std::string_view name) const;

    [[nodiscard]] const LinkPtr& link() const { return link_; }
    // Null for the application object alone.
    [[nodiscard]] const DocumentPtr& document() const { return document_; }

  private:
    automation::Value Get(const automation::Member& member) override;
    void Put(const automation::Member& member, const automation::Value& value) override;
    automation::Value Call(const automation::Member& member,
                           const automation::Array& arguments) override;
    Session& BeginCall(const MemberInfo* member, std::string_view called_name,
                       const std::string& line);
    void NoteChange(Session& session) const;

    LinkPtr link_;
    DocumentPtr document_;
};

// Errors as the client sees them.
automation::RunTimeError MethodFailed(std::string_view member_name); // E_FAIL
automation::RunTimeError CallRejected();                             // RPC_E_CALL_REJECTED
automation::RunTimeError ServerUnavailable();                        // RPC_S_SERVER_UNAVAILABLE
automation::RunTimeError Disconnected();                             // RPC_E_DISCONNECTED
automation::RunTimeError WrongArgumentCount();                       // 450

} // namespace simulator
