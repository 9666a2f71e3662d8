#include "automation/object.hpp"

#include "automation/run_time_error.hpp"

namespace automation {

namespace {

template <typename Body>
auto NamingTheMember(const Member& member, Body&& body) {
    try {
        return body();
    } catch (RunTimeError& error) {
        if (error.member.empty()) {
            error.member = std::string(member.object_class) + "." + std::string(member.name);
        }
        throw;
    }
}

} // namespace

Value Object::get(const Member& member) {
    return NamingTheMember(member, [&] { return Get(member); });
}

void Object::put(const Member& member, const Value& value) {
    NamingTheMember(member, [&] { Put(member, value); });
}

Value Object::call(const Member& member, const Array& arguments) {
    return NamingTheMember(member, [&] { return Call(member, arguments); });
}

} // namespace automation
