#include "partslist/known_parts.hpp"
#include "partslist/list_file.hpp"
#include "partslist/partslist.hpp"
#include "partslist/tree_names.hpp"
#include "shell/data_files.hpp"
#include "shell/explanations.hpp"
#include "shell/save_trap.hpp"
#include "shell/shell.hpp"

namespace partslist {

namespace {

constexpr const char* kFilter = "tab (*.tab)|*.tab";

constexpr const char* kWorkingFile = "list.txt";

// The folder of the list files, which is made when it is first needed.
std::string ListFolder(Form1& form) {
    std::string folder = shell::DataFile(form, "Tabulky");
    form.ports.files.MakeFolder(folder);
    return folder;
}

// A part number as a file name.
std::string ProposedFileName(std::string part_number) {
    return shell::WithoutForbiddenCharacters(std::move(part_number)) + ".tab";
}

// The file before stays as "list.bak".
void Save(Form1& form, const std::string& path) {
    const std::string file = WriteListFile(form.ListView1);
    form.ports.files.Write(path, file,
                           {.keep_before_as = WithEnding(path, ".bak"), .patient = form.closing});
    KeepTreeNames(form, path, file);
    form.ListView1.ClearMarks();
}

void SaveToWorkingFile(Form1& form) {
    const std::string path = shell::DataFile(form, kWorkingFile);
    shell::KeepUnreadFile(form, kWorkingFile);
    Save(form, path);
    ++form.working_saves;
    shell::stat(form, "Ulozeni listu ok " + path);
    if (!form.closing) { // which learns at its end
        LearnParts(form);
    }
}

void Load(Form1& form, const std::string& path) {
    form.ListView1.Clear();
    shell::ShowRowCount(form);
    const std::string file = form.ports.files.Read(path);
    ReadListFile(file, form.ListView1);
    TakeTreeNames(form, path, file);
    shell::ShowRowCount(form);
}

void SaveToChosenFile(Form1& form) {
    controls::FileDialog& dialog = form.CMD;
    if (form.TreeView1.Count() > 0 && dialog.file_name.empty()) {
        dialog.file_name = ProposedFileName(form.TreeView1.Node(1).text);
    }
    dialog.initial_folder = ListFolder(form);
    dialog.filter = kFilter;
    dialog.title = "Uložení tabulky";
    dialog.path_must_exist = true;
    dialog.file_must_exist = false;
    dialog.cancel_is_error = true;
    if (!form.show_save_dialog(dialog)) {
        throw automation::CancelSelected();
    }
    if (dialog.file_name.empty()) {
        return;
    }
    const std::string path = dialog.file_name;
    if (form.ports.files.Exists(path) &&
        !form.ports.message_boxes.AskYesNo("Přepsat Existujcí Soubor")) {
        shell::Refuse(form, "Ulozeni preruseno");
        return;
    }
    Save(form, path);
    shell::stat(form, "Ulozeni ok " + path);
    LearnParts(form);
}

// With a dialog of its own: the one that saving and opening share keeps its name. The path that was
// tried; nothing where none was chosen.
std::optional<std::string> SaveElsewhere(Form1& form) {
    controls::FileDialog dialog;
    dialog.initial_folder = ListFolder(form);
    dialog.filter = kFilter;
    dialog.title = "Uložení tabulky";
    dialog.path_must_exist = true;
    // One that cannot open is as good as cancelled: the question comes again.
    bool chosen = false;
    shell::TrapSilently([&] { chosen = form.show_save_dialog(dialog); });
    if (!chosen || dialog.file_name.empty() ||
        (form.ports.files.Exists(dialog.file_name) &&
         !form.ports.message_boxes.AskYesNo("Přepsat Existujcí Soubor"))) {
        return std::nullopt;
    }
    shell::TrapSaving(form, [&form, &dialog] {
        Save(form, dialog.file_name);
        shell::stat(form, "Ulozeni ok " + dialog.file_name);
    });
    return dialog.file_name;
}

void LoadChosenFile(Form1& form) {
    controls::FileDialog& dialog = form.CMD;
    dialog.file_name.clear();
    dialog.path_must_exist = false;
    dialog.file_must_exist = true;
    dialog.initial_folder = ListFolder(form);
    dialog.filter = kFilter;
    dialog.title = "Nacteni tabulky";
    // The switch is the saving dialog's: it stays on once that was shown.
    if (!form.show_open_dialog(dialog) && dialog.cancel_is_error) {
        throw automation::CancelSelected();
    }
    if (dialog.file_name.empty()) {
        return;
    }
    Load(form, dialog.file_name);
    shell::stat(form, "Nacteni ok " + std::to_string(form.ListView1.Count()));
}

void LoadWorkingFile(Form1& form) {
    const std::string path = shell::NewestDataFile(form, kWorkingFile);
    form.unread_files.insert(kWorkingFile); // until it is read to its end
    Load(form, path);
    form.unread_files.erase(kWorkingFile);
    shell::stat(form, "Nacteni listu ok " + std::to_string(form.ListView1.Count()));
    const std::string kept = shell::DataFile(form, kWorkingFile);
    if (path != kept && form.ports.files.Exists(kept)) {
        shell::Explain(form, shell::NewerListLoaded(path, kept));
    }
}

template <typename Body>
void TrapLoading(Form1& form, Body&& body) {
    shell::Trap(body, [&form](const automation::RunTimeError& error) {
        shell::ShowRowCount(form);
        shell::ShowError(form, error, "Nacteni Error ");
    });
}

} // namespace

void Command17_Click(Form1& form) {
    if (form.ListView1.Count() == 0) {
        return;
    }
    shell::TrapSaving(form, [&form] { SaveToChosenFile(form); });
}

void Command17_MouseDown(Form1& form, int button, int /*shift*/, int /*x*/, int /*y*/) {
    if (button != controls::kRightButton || form.ListView1.Count() == 0) {
        return;
    }
    shell::TrapSaving(form, [&form] { SaveToWorkingFile(form); });
}

void Command17_MenuKey(Form1& form) {
    form.m_Ulozit_pracovni.enabled = form.ListView1.Count() > 0;
    form.show_popup(form.m_Ulozeni, controls::PopupPlace::kCurrentRow);
}

void m_Ulozit_pracovni_Click(Form1& form) {
    Command17_MouseDown(form, controls::kRightButton, 0, 0, 0);
}

bool SaveBeforeClosing(Form1& form) {
    // A right click on the save button keeps the working list.
    const auto save = [&form] {
        controls::Raise(form.Command17.MouseDown, controls::kRightButton, controls::kShiftHeld, 1,
                        1);
    };
    form.save_error.reset();
    std::string path = shell::DataFile(form, kWorkingFile);
    save();
    while (form.save_error && !form.session_ending) {
        switch (form.ports.message_boxes.AskAfterFailedSave(path + "\n" +
                                                            shell::FileTrouble(*form.save_error))) {
        case platform::AfterFailedSave::kTryAgain:
            path = shell::DataFile(form, kWorkingFile);
            save();
            break;
        case platform::AfterFailedSave::kChooseFile:
            path = SaveElsewhere(form).value_or(path);
            break;
        case platform::AfterFailedSave::kCloseWithoutSaving:
            form.save_error.reset();
            break;
        }
    }
    return !form.save_error;
}

void Command27_Click(Form1& form) {
    TrapLoading(form, [&form] { LoadChosenFile(form); });
}

void Command27_MouseDown(Form1& form, int button, int /*shift*/, int /*x*/, int /*y*/) {
    if (button != controls::kRightButton) {
        return;
    }
    TrapLoading(form, [&form] { LoadWorkingFile(form); });
}

void Command27_MenuKey(Form1& form) {
    form.show_popup(form.m_Otevreni, controls::PopupPlace::kCurrentRow);
}

void m_Otevrit_pracovni_Click(Form1& form) {
    Command27_MouseDown(form, controls::kRightButton, 0, 0, 0);
}

} // namespace partslist
