// Values to and from VARIANTs, for both ends of a COM call.
#pragma once

#include <functional>

#include <windows.h>

#include <comutil.h>

#include "automation/value.hpp"

// An object's interface to send, and the object for an interface that came. Neither is called with
// null.
using ObjectToDispatch = std::function<IDispatchPtr(const automation::ObjectPtr&)>;
using DispatchToObject = std::function<automation::ObjectPtr(IDispatch*)>;
