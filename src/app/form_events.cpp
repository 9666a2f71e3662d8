#include "app/form_events.hpp"

#include "partslist/partslist.hpp"
#include "shell/shell.hpp"
#include "version.h"

namespace app {

namespace {

using controls::Form1;

// The save and open buttons answer a right click by keeping and reloading the working list, which
// start-up and closing ask for in the same way.
void PressWithRightButton(const controls::Button& button) {
    controls::Raise(button.MouseDown, controls::kRightButton, controls::kShiftHeld, 1, 1);
}

void Form_Unload(Form1& form) {
    partslist::Ulozit_List(form, form.Combo1);
    partslist::Ulozit_List(form, form.Combo2);
    partslist::Ulozit_List(form, form.Combo3);
    partslist::Ulozit_List(form, form.Combo4);
    PressWithRightButton(form.Command17);
    shell::SaveConfigurationSetting(form);
}

// Runs a handler with the default handling of what it does not trap.
void Run(Form1& form, const std::function<void()>& handler) {
    ++form.running_handlers;
    try {
        handler();
    } catch (const automation::RunTimeError& error) {
        // An action that ended because the window was closed has nothing to report.
        if (error.number != automation::UserInterrupt().number) {
            form.StatusBar1.SetState(controls::ActionState::kFailed);
            form.ports.message_boxes.ShowError(error);
        }
    }
    --form.running_handlers;
    if (form.running_handlers == 0 && form.StatusBar1.State() == controls::ActionState::kRunning) {
        form.StatusBar1.SetState(controls::ActionState::kDone);
    }
}

void Close(Form1& form) {
    if (form.closing) {
        return;
    }
    form.close_requested = true;
    form.closing = true;
    Run(form, [&form] { Form_Unload(form); });
    form.unloaded = true;
}

} // namespace

void Dispatch(Form1& form, const std::function<void()>& handler) {
    // Once the window is closed nothing new starts but the closing steps.
    if (form.unloaded || (form.close_requested && !form.closing)) {
        return;
    }
    Run(form, handler);
    if (form.running_handlers == 0 && form.close_requested) {
        Close(form);
    }
}

void Form_Load(Form1& form) {
    Dispatch(form, [&form] {
        shell::Vycentruj(form);
        form.Caption = "Dorvak pro Catii " DORVAK_VERSION_TEXT;
        shell::LoadConfigurationSetting(form);
        partslist::Nacist_List(form, form.Combo1);
        partslist::Nacist_List(form, form.Combo2);
        partslist::Nacist_List(form, form.Combo3);
        partslist::Nacist_List(form, form.Combo4);
        PressWithRightButton(form.Command27);
        form.Check2.SetValue(1);
    });
}

void Form_Resize(Form1& form) {
    if (form.Check2.Value() == 1) {
        shell::Nastav_Navrch(form, form.hWnd);
    }
}

void RequestClose(Form1& form) {
    if (form.close_requested) {
        return;
    }
    if (form.running_handlers > 0) {
        form.close_requested = true;
    } else {
        Close(form);
    }
}

void EndSession(Form1& form) {
    Close(form);
}

} // namespace app
