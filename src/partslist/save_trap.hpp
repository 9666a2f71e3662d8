#pragma once

#include "shell/shell.hpp"

namespace partslist {

// The trap of what saves, and of loading a picker's values: the error in the words of saving.
template <typename Body>
void TrapSaving(controls::Form1& form, Body&& body) {
    form.save_error.reset();
    shell::Trap(body, [&form](const automation::RunTimeError& error) {
        form.save_error = error;
        shell::ShowError(form, error, "Ulozeni Error ");
    });
}

} // namespace partslist
