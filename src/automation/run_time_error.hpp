#pragma once

#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace automation {

// The one error of the whole program: a failed automation call, a failed file operation, an index
// beyond a control's bounds. `number` is one of the classic run-time error numbers, or the HRESULT
// of the failed call as a signed number; `description` is the text that the user may see. `member`
// is the member of CATIA whose call failed ("DrawingTable.Add"), where one did, and `given` the
// texts that the call was given and those that were answered lately, which the description may
// repeat; `reason` says in a Czech sentence what is wrong, where the place that raises it knows
// more than the number says.
class RunTimeError : public std::exception {
  public:
    RunTimeError(long error_number, std::string error_description)
        : number(error_number), description(std::move(error_description)) {}

    [[nodiscard]] const char* what() const noexcept override { return description.c_str(); }

    long number;
    std::string description;
    std::string member;
    std::vector<std::string> given;
    std::string reason;
};

// The error, with a sentence that says what is wrong.
RunTimeError WithReason(RunTimeError error, std::string reason);

// Makers of the errors that more than one place raises, under their classic descriptions.
RunTimeError InvalidProcedureCall(); // 5
RunTimeError Overflow();             // 6
RunTimeError SubscriptOutOfRange();  // 9
RunTimeError TypeMismatch();         // 13
RunTimeError UserInterrupt();        // 18
RunTimeError FileNotFound();         // 53
RunTimeError ObjectVariableNotSet(); // 91
RunTimeError InvalidPropertyValue(); // 380
RunTimeError ObjectRequired();       // 424
RunTimeError CannotCreateObject();   // 429
RunTimeError MemberNotSupported();   // 438
RunTimeError CancelSelected();       // 32755
RunTimeError IndexOutOfBounds();     // 35600
RunTimeError ElementNotFound();      // 35601
RunTimeError KeyNotUnique();         // 35602

} // namespace automation
