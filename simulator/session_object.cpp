#include "session_object.hpp"

#include <algorithm>

#include "automation/run_time_error.hpp"
#include "call_log.hpp"
#include "session.hpp"
#include "text/text.hpp"

namespace simulator {

using automation::Array;
using automation::Member;
using automation::RunTimeError;
using automation::Value;

const MemberInfo* ClassInfo::Find(std::string_view member_name) const {
    const auto found = std::find_if(members.begin(), members.end(), [&](const MemberInfo& member) {
        return text::EqualsIgnoringCase(member.name, member_name);
    });
    return found != members.end() ? &*found : nullptr;
}

const MemberInfo* SessionObject::FindMember(std::string_view name) const {
    const MemberInfo* const member = Class().Find(name);
    if (member == nullptr || link_->session == nullptr) {
        return member;
    }
    const auto& missing = link_->session->manner.missing_members;
    return missing.contains(Class().name + "." + member->name) ? nullptr : member;
}

bool SessionObject::Gone() const {
    const Table* const table = DisplayingTable();
    return table != nullptr && table->deleted;
}

Value SessionObject::Get(const Member& member) {
    return Call(member, {});
}

Value SessionObject::Call(const Member& member, const Array& arguments) {
    const MemberInfo* const info = FindMember(member.name);
    const std::string_view shown_name = info != nullptr ? info->name : member.name;
    Session& session = BeginCall(
        info, member.name,
        CallLine(Class().name, shown_name, info != nullptr && info->is_method, arguments));
    if (arguments.size() != info->parameters.size()) {
        throw WrongArgumentCount();
    }
    Array converted;
    converted.reserve(arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        converted.push_back(Coerce(arguments[i], info->parameters[i], session.DecimalSeparator()));
    }
    if (session.manner.read_only && info->changes && !info->when_read_only) {
        throw MethodFailed(info->name);
    }
    Value result;
    try {
        result = info->call(*this, converted);
    } catch (const Refusal&) {
        throw MethodFailed(info->name);
    }
    if (info->changes) {
        NoteChange(session);
    }
    return result;
}

void SessionObject::Put(const Member& member, const Value& value) {
    const MemberInfo* const info = FindMember(member.name);
    const std::string_view shown_name = info != nullptr ? info->name : member.name;
    Session& session = BeginCall(info, member.name, PutLine(Class().name, shown_name, value));
    if (!info->put) {
        throw automation::MemberNotSupported();
    }
    const Value converted = Coerce(value, info->put_kind, session.DecimalSeparator());
    if (session.manner.read_only) {
        throw MethodFailed(info->name);
    }
    try {
        info->put(*this, converted);
    } catch (const Refusal&) {
        throw MethodFailed(info->name);
    }
    NoteChange(session);
}

void SessionObject::NoteChange(Session& session) const {
    if (const Table* const table = DisplayingTable()) {
        session.ComputeDisplay(*table);
    }
    session.NoteChange();
}

// Returns when `member` exists and may run.
Session& SessionObject::BeginCall(const MemberInfo* member, std::string_view called_name,
                                  const std::string& line) {
    if (link_->session == nullptr) {
        throw ServerUnavailable();
    }
    link_->session->BeginCall(line, member != nullptr ? member->name : called_name);
    // What was done meanwhile may have ended the session or closed the document.
    if (link_->session == nullptr) {
        throw ServerUnavailable();
    }
    if (document_ != nullptr && !document_->open) {
        throw Disconnected();
    }
    if (Gone()) {
        throw Disconnected();
    }
    if (member == nullptr) {
        throw automation::MemberNotSupported();
    }
    return *link_->session;
}

RunTimeError MethodFailed(std::string_view member_name) {
    return {-2147467259, "The method " + std::string(member_name) + " failed"};
}

RunTimeError CallRejected() {
    return {-2147418111, "Call was rejected by callee."};
}

RunTimeError ServerUnavailable() {
    return {-2147023174, "The RPC server is unavailable."};
}

RunTimeError Disconnected() {
    return {-2147417848, "The object invoked has disconnected from its clients."};
}

RunTimeError WrongArgumentCount() {
    return {450, "Wrong number of arguments or invalid property assignment"};
}

} // namespace simulator
