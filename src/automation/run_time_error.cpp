#include "automation/run_time_error.hpp"

namespace automation {

RunTimeError WithReason(RunTimeError error, std::string reason) {
    error.reason = std::move(reason);
    return error;
}

RunTimeError InvalidProcedureCall() {
    return {5, "Invalid procedure call or argument"};
}
RunTimeError Overflow() {
    return {6, "Overflow"};
}
RunTimeError SubscriptOutOfRange() {
    return {9, "Subscript out of range"};
}
RunTimeError TypeMismatch() {
    return {13, "Type mismatch"};
}
RunTimeError UserInterrupt() {
    return {18, "User interrupt occurred"};
}
RunTimeError FileNotFound() {
    return {53, "File not found"};
}
RunTimeError ObjectVariableNotSet() {
    return {91, "Object variable or With block variable not set"};
}
RunTimeError InvalidPropertyValue() {
    return {380, "Invalid property value"};
}
RunTimeError ObjectRequired() {
    return {424, "Object required"};
}
RunTimeError CannotCreateObject() {
    return {429, "ActiveX component can't create object"};
}
RunTimeError MemberNotSupported() {
    return {438, "Object doesn't support this property or method"};
}
RunTimeError CancelSelected() {
    return {32755, "Cancel was selected."};
}
RunTimeError IndexOutOfBounds() {
    return {35600, "Index out of bounds"};
}
RunTimeError ElementNotFound() {
    return {35601, "Element not found"};
}
RunTimeError KeyNotUnique() {
    return {35602, "Key is not unique in collection"};
}

} // namespace automation
