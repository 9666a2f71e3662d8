// Calls to an automation server over COM. The thread that uses it has called OleInitialize or
// CoInitializeEx for an apartment.
//
// A busy server rejects calls. One policy holds for all of them: a rejected call is tried again
// every quarter of a second until thirty seconds have passed since its first attempt, then it
// fails. A watch is told of the wait and may end it. Windows asks the message filter before a
// rejected call returns; where the system returns the rejection without asking (Wine), the call is
// tried again here, under the same limits.
#pragma once

#include <string_view>

#include <windows.h>

#include "automation/object.hpp"

namespace com {

// The application that runs registered under `program_id`; never starts one. Raises 429 where there
// is none. Waits for it as a call does.
automation::ObjectPtr GetActiveObject(std::string_view program_id);
// The same of the application that runs under a class.
automation::ObjectPtr GetActiveObject(const CLSID& class_id);

// What goes on while a call waits for its answer.
class CallWatch {
  public:
    virtual ~CallWatch() = default;

    // A call has waited for so long: the server works, or rejects it. Told whenever a message comes
    // for the thread, and of rejections many times a second. False ends the wait: the call is
    // cancelled and raises 18 (user interrupt).
    virtual bool Waiting(ULONGLONG milliseconds, bool rejected) = 0;
    // The call whose wait was told of has ended.
    virtual void WaitEnded() = 0;
};

// Whether the thread is in a call.
bool IsCalling();

// Registers the thread's message filter and its watch for as long as it lives; made after the
// apartment has been entered.
class MessageFilterRegistration {
  public:
    explicit MessageFilterRegistration(CallWatch& watch);
    ~MessageFilterRegistration();
    MessageFilterRegistration(const MessageFilterRegistration&) = delete;
    MessageFilterRegistration& operator=(const MessageFilterRegistration&) = delete;
};

} // namespace com
