#include "app/form_events.hpp"

#include "app/action_log.hpp"
#include "app/recovery.hpp"
#include "partslist/known_parts.hpp"
#include "partslist/partslist.hpp"
#include "shell/shell.hpp"
#include "tables/tables.hpp"
#include "version.h"

namespace app {

namespace {

using controls::Form1;

// The open button answers a right click by reloading the working list, which start-up asks for in
// the same way.
void PressWithRightButton(const controls::Button& button) {
    controls::Raise(button.MouseDown, controls::kRightButton, controls::kShiftHeld, 1, 1);
}

// What could not be saved, and not because the person wants it so, stays in the recovery file.
void Form_Unload(Form1& form) {
    tables::PutBackRowsBeforeReading(form);
    bool saved = true;
    for (const controls::ComboBox* picker :
         {&form.Combo1, &form.Combo2, &form.Combo3, &form.Combo4}) {
        form.save_error.reset();
        partslist::Ulozit_List(form, *picker);
        saved = saved && !form.save_error;
    }
    saved = partslist::SaveBeforeClosing(form) && saved;
    KeepLeftover(form);
    if (!saved) {
        KeepRecoveryNow(form); // also what was done since it was kept last
    }
    if (form.preview.width != 0) { // it was shown
        shell::SavePreviewSetting(form);
    }
    shell::SaveConfigurationSetting(form);
    if (saved) {
        RemoveRecovery(form);
    }
    partslist::LearnParts(form); // when everything else is safe
}

// What a handler has changed in the lists so far is a step of its own.
void NoteChanges(Form1& form) {
    form.parts_history.Note(form.innermost.step, form.innermost.number);
    form.sheets_history.Note(form.innermost.step, form.innermost.number);
}

void ShowStep(controls::MenuItem& item, const char* words, const std::optional<std::string>& step) {
    item.caption = step ? std::string(words) + ": " + *step : words;
    item.enabled = step.has_value();
}

void ShowWhatCanBeTakenBack(Form1& form) {
    ShowStep(form.m_Zpet, "Zpět", form.parts_history.UndoName());
    ShowStep(form.m_Znovu, "Znovu", form.parts_history.RedoName());
    ShowStep(form.m_Sheet_zpet, "Zpět", form.sheets_history.UndoName());
    ShowStep(form.m_Sheet_znovu, "Znovu", form.sheets_history.RedoName());
    form.m_Sheet_vratit_jmena.enabled = !form.planned_names.empty();
    form.m_Kopirovat_chybu.enabled = form.last_error.has_value();
}

// The last of the handlers has ended.
void Rest(Form1& form) {
    if (form.stop_requested) {
        form.stop_requested = false;
        shell::SetMousePointer(form, controls::MousePointer::kDefault);
    }
    controls::StatusBar& bar = form.StatusBar1;
    if (bar.State() == controls::ActionState::kRunning) {
        bar.SetState(controls::ActionState::kDone);
    }
}

// Runs a handler with the default handling of what it does not trap.
void Run(Form1& form, const std::function<void()>& handler, const std::string& step) {
    if (form.running_handlers > 0) {
        NoteChanges(form);
        ShowWhatCanBeTakenBack(form);
    } else {
        form.parts_history.NoteSelection();
        form.sheets_history.NoteSelection();
    }
    // The amount that a handler shows is its own.
    const auto amount_around = form.StatusBar1.ShownProgress();
    form.StatusBar1.SetProgress(std::nullopt);
    const controls::HandlerRun around = form.innermost;
    form.innermost = {step.empty() ? "Změna" : step, ++form.runs};
    ++form.running_handlers;
    const BegunAction begun = LogBegin(form, step);
    try {
        handler();
    } catch (const automation::RunTimeError& error) {
        shell::NoteError(form, error);
        // An action that ended because the window was closed has nothing to report.
        if (shell::IsInterrupt(error)) {
            if (!form.close_requested) {
                shell::ExplainError(form, error);
            }
        } else if (!form.session_ending) {
            form.StatusBar1.SetState(controls::ActionState::kFailed);
            form.ports.message_boxes.ShowError(error);
        }
    }
    LogEnd(form, step, begun);
    --form.running_handlers;
    NoteChanges(form);
    ShowWhatCanBeTakenBack(form);
    form.innermost = around;
    form.StatusBar1.SetProgress(amount_around);
    if (form.running_handlers == 0) {
        Rest(form);
    }
}

void Close(Form1& form) {
    if (form.closing) {
        return;
    }
    form.close_requested = true;
    form.stop_requested = form.running_handlers > 0;
    form.closing = true;
    Run(
        form, [&form] { Form_Unload(form); }, "Ukončení");
    form.unloaded = true;
}

} // namespace

void Dispatch(Form1& form, const std::function<void()>& handler, const std::string& step) {
    // Once the window is closed nothing new starts but the closing steps.
    if (form.unloaded || (form.close_requested && !form.closing)) {
        return;
    }
    Run(form, handler, step);
    if (form.running_handlers == 0 && form.close_requested) {
        Close(form);
    }
}

void Form_Load(Form1& form) {
    Dispatch(
        form,
        [&form] {
            shell::Vycentruj(form);
            form.Caption = "Dorvak pro Catii " DORVAK_VERSION_TEXT;
            if (form.on_trial) {
                form.Caption += " - na zkoušku";
            }
            shell::LoadConfigurationSetting(form);
            shell::LoadRedrawingSetting(form);
            tables::OfferLayouts(form);
            shell::LoadPreviewSetting(form);
            partslist::Nacist_List(form, form.Combo1);
            partslist::Nacist_List(form, form.Combo2);
            partslist::Nacist_List(form, form.Combo3);
            partslist::Nacist_List(form, form.Combo4);
            PressWithRightButton(form.Command27);
            form.Check2.SetValue(1);
        },
        "Spuštění " DORVAK_VERSION_TEXT);
    // Before the first save there is nothing to load.
    if (form.last_error && form.last_error->error.number == automation::FileNotFound().number) {
        form.last_error.reset();
        if (form.StatusBar1.State() == controls::ActionState::kFailed) {
            form.StatusBar1.SetState(controls::ActionState::kNone);
        }
    }
    // What was loaded is where the person begins.
    form.parts_history.Start();
    ShowWhatCanBeTakenBack(form);
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
        form.stop_requested = true;
    } else {
        Close(form);
    }
}

void RequestStop(Form1& form) {
    form.stop_requested = form.running_handlers > 0;
}

void EndSession(Form1& form) {
    form.session_ending = true;
    KeepRecoveryNow(form); // before anything of it may fail
    Close(form);
}

} // namespace app
