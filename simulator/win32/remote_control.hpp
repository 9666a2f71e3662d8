// Commands that a test driver sends to the session's window, one text each. The message is
// WM_COPYDATA with kRemoteControl and the command as UTF-8.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <windows.h>

#include "simulator/session.hpp"

namespace simulator {

constexpr ULONG_PTR kRemoteControl = 0x43534D31;

// What the window does for a command.
struct WindowCommands {
    std::function<void(const std::string&)> set_title; // its own for an empty text
    std::function<void(bool open)> show_dialog;
};

// Carries out one of
//     fail N refused | fail N busy K | fail N vanish    makes the N-th call from now fail
//     fail N slow MS                                     makes it take MS milliseconds
//     disarm
//     recompute US       computing a table's display takes US microseconds, at first none
//     dialog open | dialog close                         while it is open, every call is rejected
//     log clear | log write PATH
//     drawing write PATH | display write PATH            what it holds, and what it displays
//     open PATH | close all | activate DOCUMENT
//     detail number | detail boolean
//     select SHEET VIEW TABLE                            TABLE counts from 1
//     sheet SHEET                                        makes it the active one
//     title TEXT                                         the window's title; without TEXT its own
// Names that hold blanks stand in double quotes; a PATH, DOCUMENT or TEXT reaches to the end and
// needs none. Raises std::runtime_error where the command is unknown or fails.
void DoRemoteCommand(Session& session, std::string_view command_line, const WindowCommands& window);

// The log, one line per call.
std::string LogAsText(const Session& session);

} // namespace simulator
