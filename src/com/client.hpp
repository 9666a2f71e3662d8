// Calls to an automation server over COM. The thread that uses it has called OleInitialize or
// CoInitializeEx for an apartment.
//
// A busy server rejects calls. One policy holds for all of them: a rejected call is tried again
// every quarter of a second until thirty seconds have passed since its first attempt, then it
// fails. The window keeps painting meanwhile and takes no input. Windows asks the message filter
// before a rejected call returns; where the system returns the rejection without asking (Wine), the
// call is tried again here, under the same limits.
#pragma once

#include <string_view>

#include "automation/object.hpp"

namespace com {

// The application that runs registered under `program_id`; never starts one. Raises 429 where there
// is none.
automation::ObjectPtr GetActiveObject(std::string_view program_id);

// Registers the thread's message filter for as long as it lives; stands in wWinMain after the
// apartment has been entered.
class MessageFilterRegistration {
  public:
    MessageFilterRegistration();
    ~MessageFilterRegistration();
    MessageFilterRegistration(const MessageFilterRegistration&) = delete;
    MessageFilterRegistration& operator=(const MessageFilterRegistration&) = delete;
};

} // namespace com
