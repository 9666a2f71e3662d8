#include "shell/explanations.hpp"
#include "shell/shell.hpp"

namespace shell {

using controls::ActionState;

void stat(Form1& form, const std::string& tt) {
    form.StatusBar1.SetPanelText(1, tt);
    form.StatusBar1.SetState(ActionState::kRunning);
    if (!form.StatusBar1.ShownExplanation().text.empty()) {
        form.StatusBar1.SetExplanation({});
    }
    controls::Raise(form.show_now);
}

void Refuse(Form1& form, const std::string& message) {
    stat(form, message);
    form.StatusBar1.SetState(ActionState::kNone);
}

void Explain(Form1& form, const std::string& text) {
    form.StatusBar1.SetExplanation({.text = text, .is_error = false});
}

void ExplainError(Form1& form, const automation::RunTimeError& error) {
    form.StatusBar1.SetState(ActionState::kFailed);
    form.StatusBar1.SetExplanation({.text = Explained(error), .is_error = true});
}

std::string ErrorText(const automation::RunTimeError& error) {
    return std::to_string(error.number) + " " + error.description;
}

void ShowError(Form1& form, const automation::RunTimeError& error, const std::string& words) {
    stat(form, words + ErrorText(error));
    form.StatusBar1.SetState(ActionState::kFailed);
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
    if (form.close_requested) {
        throw automation::UserInterrupt();
    }
}

} // namespace shell
