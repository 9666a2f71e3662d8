#include "shell/shell.hpp"

namespace shell {

void stat(Form1& form, const std::string& tt) {
    form.StatusBar1.SetPanelText(1, tt);
    controls::Raise(form.show_now);
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

std::string ErrorText(const automation::RunTimeError& error) {
    return std::to_string(error.number) + " " + error.description;
}

} // namespace shell
