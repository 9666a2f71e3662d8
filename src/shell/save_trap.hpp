#pragma once

#include "shell/shell.hpp"

namespace shell {

// The trap of what saves, and of loading a picker's values: the error in the words of saving.
template <typename Body>
void TrapSaving(controls::Form1& form, Body&& body) {
    form.save_error.reset();
    Trap(body, [&form](const automation::RunTimeError& error) {
        form.save_error = error;
        ShowError(form, error, "Ulozeni Error ");
    });
}

} // namespace shell
