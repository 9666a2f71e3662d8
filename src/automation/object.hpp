#pragma once

#include <functional>
#include <string_view>

#include "automation/value.hpp"

namespace automation {

// A member of a class of objects. The class is the caller's name for what it talks to; a late-bound
// object looks a member's name up once per class, so that a call is one round trip.
struct Member {
    std::string_view object_class;
    std::string_view name; // matched without regard to case
};

// A late-bound object of an automation server. Every function is one call of the server and raises
// RunTimeError, which names the member, when the server refuses it or is gone.
class Object {
  public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    // Reads a property, or calls a function without arguments: servers take both alike.
    Value get(const Member& member);
    // Assigns a property.
    void put(const Member& member, const Value& value);
    // Calls a function or sub with arguments in their declared order.
    Value call(const Member& member, const Array& arguments);

  private:
    static const std::function<void()>* BeforeCall();
    virtual Value Get(const Member& member) = 0;
    virtual void Put(const Member& member, const Value& value) = 0;
    virtual Value Call(const Member& member, const Array& arguments) = 0;
};

// What is asked before every call of any object. It may raise instead of the call: the person may
// want what runs to end. Asked for as long as it lives; of several the one that was made last.
class CallGate {
  public:
    explicit CallGate(std::function<void()> before_call);
    ~CallGate();
    CallGate(const CallGate&) = delete;
    CallGate& operator=(const CallGate&) = delete;

  private:
    friend class Object;
    std::function<void()> before_call_;
};

} // namespace automation
