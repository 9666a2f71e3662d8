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
//     fail N close | fail N delete      closes the active document in it, deletes its tables
//     disarm
//     recompute US       computing a table's display takes US microseconds, at first none
//     dialog open | dialog close                         while it is open, every call is rejected
//     log clear | log write PATH
//     drawing write PATH | display write PATH            what it holds, and what it displays
//     open PATH | close all | close active | activate DOCUMENT
//     select SHEET VIEW TABLE [first | last]             TABLE counts from 1; with its view and the
//                                                        view's texts, before them or after them
//     sheet SHEET | view SHEET VIEW                      makes it the active one
//     delete tables                                      of the active drawing
//     names TEXT                                         adds TEXT to the active document's names
//     title TEXT                                         the window's title; without TEXT its own
// or switches how the session answers; the first of the two is how one begins:
//     detail boolean | detail number                     what IsDetail answers
//     convert call | convert user        texts to numbers in the call's language, or in Czech
//     lengths plain | lengths inches                     13.88 comes as 13.879999999999999
//     zero refused | zero automatic                      a row's height, a column's width of 0
//     sheets last | sheets before                        new sheets before the detail sheets
//     empty taken | empty refused                        a new text without text
//     breaks lf | breaks crlf                            in texts that are read
//     changes taken | changes refused                    of documents
//     with CLASS.MEMBER | without CLASS.MEMBER           a member that the release lacks
// Names that hold blanks stand in double quotes; a PATH, DOCUMENT or TEXT reaches to the end and
// needs none. Raises std::runtime_error where the command is unknown or fails.
void DoRemoteCommand(Session& session, std::string_view command_line, const WindowCommands& window);

// The log, one line per call.
std::string LogAsText(const Session& session);

} // namespace simulator
