#include "shell/explanations.hpp"
#include "shell/shell.hpp"

namespace shell {

using controls::ActionState;

namespace {

void Announce(Form1& form, const std::string& message) {
    form.innermost.announcement = message;
    form.StatusBar1.SetPanelText(1, message);
    form.StatusBar1.SetState(ActionState::kRunning);
}

} // namespace

void stat(Form1& form, const std::string& tt) {
    Announce(form, tt);
    if (!form.StatusBar1.ShownExplanation().text.empty()) {
        form.StatusBar1.SetExplanation({});
    }
    controls::Raise(form.show_now);
}

void ShowPassing(Form1& form, const std::string& tt) {
    Announce(form, tt);
    controls::Raise(form.show_soon);
}

void ShowProgress(Form1& form, int done, int total) {
    form.StatusBar1.SetProgress(controls::Progress{done, total});
    controls::Raise(form.show_soon);
}

void Refuse(Form1& form, const std::string& message) {
    stat(form, message);
    form.StatusBar1.SetState(ActionState::kNone);
}

void Explain(Form1& form, const std::string& text) {
    form.StatusBar1.SetExplanation({.text = text, .is_error = false});
}

void ExplainDone(Form1& form, const std::string& text) {
    form.StatusBar1.SetState(ActionState::kRunning); // until its handler has ended
    Explain(form, text);
}

void NoteError(Form1& form, const automation::RunTimeError& error) {
    automation::RunTimeError noted = error;
    if (const std::string& document = form.document_worked_on; !document.empty()) {
        noted.given.push_back(document);
        noted.given.push_back(document.substr(0, document.rfind('.')));
    }
    form.innermost.error = noted;
    if (!IsInterrupt(error)) {
        form.last_error = {noted, form.innermost.step, form.ports.clock.Now()};
    }
}

void ExplainError(Form1& form, const automation::RunTimeError& error) {
    NoteError(form, error);
    controls::StatusBar& bar = form.StatusBar1;
    bar.SetState(ActionState::kFailed);
    bar.SetExplanation({.text = IsInterrupt(error)
                                    ? Interrupted(form.innermost.announcement, bar.ShownProgress())
                                    : Explained(error),
                        .is_error = true});
}

bool IsInterrupt(const automation::RunTimeError& error) {
    return error.number == automation::UserInterrupt().number;
}

std::string ErrorText(const automation::RunTimeError& error) {
    return std::to_string(error.number) + " " + error.description;
}

void ShowError(Form1& form, const automation::RunTimeError& error, const std::string& words) {
    NoteError(form, error);
    controls::StatusBar& bar = form.StatusBar1;
    const std::string came_to = form.innermost.announcement;
    stat(form, words + ErrorText(error));
    bar.SetState(ActionState::kFailed);
    if (IsInterrupt(error)) {
        bar.SetExplanation({.text = Interrupted(came_to, bar.ShownProgress()), .is_error = true});
    } else if (!error.reason.empty()) {
        bar.SetExplanation({.text = error.reason, .is_error = true});
    }
    controls::Raise(form.show_now); // a box may follow
}

void ShowRowCount(Form1& form) {
    form.StatusBar1.SetPanelText(2, "Pozic: " + std::to_string(form.ListView1.Count()));
}

void SetMousePointer(Form1& form, controls::MousePointer pointer) {
    form.Pointer = pointer;
    controls::Raise(form.show_now);
}

void DoEvents(Form1& form) {
    form.ports.events.DoEvents();
    if (form.stop_requested) {
        throw automation::UserInterrupt();
    }
}

} // namespace shell
