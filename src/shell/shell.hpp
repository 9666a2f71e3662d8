// The window's own behaviour, the status line, and the ways of every action: how it yields, what
// traps its errors, how it finds the CATIA session.
//
// Actions:
//   Check2_Click     "On Top"
//   Check3_Click     "Bez překreslování"
//   Command18_Click  "min" / "max"
//   Command19_Click  "Reset"
//   Command26_Click  "procesy"
//   Command36_Click  "Náhled"
//   SSTab1_Click     a tab of the window
//   StatusBar1_RightClick, StatusBar1_MenuKey   the status line's popup menu; its actions stand in
//                                               support.hpp
#pragma once

#include <string>

#include "automation/run_time_error.hpp"
#include "catia/session.hpp"
#include "controls/form1.hpp"

namespace shell {

using controls::Form1;

void Check2_Click(Form1& form);
void Check3_Click(Form1& form);
void Command18_Click(Form1& form);
void Command19_Click(Form1& form);
void Command26_Click(Form1& form);
void Command36_Click(Form1& form);
void SSTab1_Click(Form1& form);
void StatusBar1_RightClick(Form1& form);
void StatusBar1_MenuKey(Form1& form);

// Puts the window into the middle of the screen.
void Vycentruj(Form1& form);
// Keeps a window above all others, or lets it go back among them.
void Nastav_Navrch(Form1& form, platform::WindowHandle window);
void Zrus_Navrch(Form1& form, platform::WindowHandle window);

// Shows a message on the status line, as one of an action that runs; the explanation of the text
// before goes. Neither waits nor handles messages.
void stat(Form1& form, const std::string& tt);
// Shows one of many messages that follow one another: the view may leave some of them out.
void ShowPassing(Form1& form, const std::string& tt);
// Shows how much of its work the action has done, in whatever it counts.
void ShowProgress(Form1& form, int done, int total);
// Shows a message that ends an action which had nothing to work on.
void Refuse(Form1& form, const std::string& message);
// Says in a balloon what the status line does not: what a successful action did or found.
void Explain(Form1& form, const std::string& text);
// The same, by an action that announces nothing: it is done, whatever the one before it was.
void ExplainDone(Form1& form, const std::string& text);
// The action has ended by an error: why, in a balloon.
void ExplainError(Form1& form, const automation::RunTimeError& error);
// Keeps an error that has ended an action for the log and for the person to copy.
void NoteError(Form1& form, const automation::RunTimeError& error);
// Shows the number of parts-list rows beside the status line.
void ShowRowCount(Form1& form);
void SetMousePointer(Form1& form, controls::MousePointer pointer);

// The table configuration kept between runs: into Text2 where one is stored, and back.
void LoadConfigurationSetting(Form1& form);
void SaveConfigurationSetting(const Form1& form);
// Whether tables are made without redrawing, kept between runs: Check3 as it was ticked last. It is
// stored when it is clicked.
void LoadRedrawingSetting(Form1& form);
// Whether the preview is open, and where it stands, kept between runs. That it cannot be stored is
// no error: it opens where it did before.
void LoadPreviewSetting(Form1& form);
void SavePreviewSetting(const Form1& form);

// A yield: lets the window repaint and handle what waits for it, other actions included. Raises 18
// (user interrupt) when what runs is to end: the person wants it so, or has closed the window.
void DoEvents(Form1& form);

// Whether the person has ended the action, and no failure.
bool IsInterrupt(const automation::RunTimeError& error);

// An error as the status line shows it: the number, a blank and the description.
std::string ErrorText(const automation::RunTimeError& error);
// Shows the error that has ended an action on the status line, behind `words`.
void ShowError(Form1& form, const automation::RunTimeError& error, const std::string& words = {});

// The trap of an action: runs `body`, and where that raises an error, `handler` with it. Nothing
// but an action traps, and each at most once; what was done before the error stays done.
template <typename Body, typename Handler>
void Trap(Body&& body, Handler&& handler) {
    try {
        body();
    } catch (const automation::RunTimeError& error) {
        handler(error);
    }
}

// The trap of gestures, which end without a word.
template <typename Body>
void TrapSilently(Body&& body) {
    Trap(body, [](const automation::RunTimeError&) {});
}

// The trap of actions whose status line keeps its last text; the error goes into the explanation.
template <typename Body>
void TrapExplaining(Form1& form, Body&& body) {
    Trap(body, [&form](const automation::RunTimeError& error) { ExplainError(form, error); });
}

// The trap of actions that show the error on the status line.
template <typename Body>
void TrapToStatus(Form1& form, Body&& body) {
    Trap(body, [&form](const automation::RunTimeError& error) { ShowError(form, error); });
}

// The class of CATIA's application object.
inline constexpr const char* kCatia = "Catia.application";

// Whether the window of that title belongs to the CATIA V5 session that the program works with.
bool IsWindowOfCatia(platform::DesktopWindows& desktop, platform::WindowHandle window,
                     std::string_view title);

// Whether a CATIA V5 session runs; where none does, the action has nothing to work on. Says so on
// the status line, lists the titles of all windows in List1 and puts the program's window back on
// top, since the search may bring others forward.
bool Spusteni_Catie(Form1& form);
// The search itself: every top-level window through Projdi_Okno.
bool Hledani_Catie(Form1& form);
// Looks at one window; always 1, so that the search goes on.
long Projdi_Okno(Form1& form, platform::WindowHandle window);

// The application object of the running session, obtained anew for each action. Raises 429 when it
// cannot be had, with what keeps the session's window and the program apart; never starts CATIA.
catia::Application CatiaApplication(Form1& form);
// The same, after the announcement of the waiting.
catia::Application WaitForCatia(Form1& form);

// The action works on the document of that name. Where several windows of CATIA are there, the tip
// of the status line says so: only one of the sessions answers.
void NoteDocument(Form1& form, const std::string& name);

// Whether a document of that name is a drawing, with its extension in any letter case; says so
// where it is not.
bool IsDrawing(Form1& form, const std::string& document_name);
void SayThereIsNoDrawing(Form1& form);

} // namespace shell
