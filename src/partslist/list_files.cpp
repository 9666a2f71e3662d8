#include <algorithm>

#include "partslist/list_file.hpp"
#include "partslist/partslist.hpp"
#include "partslist/save_trap.hpp"
#include "shell/shell.hpp"

namespace partslist {

namespace {

constexpr const char* kFilter = "tab (*.tab)|*.tab";

std::string WorkingFile(Form1& form) {
    return form.ports.files.ProgramFolder() + "\\list.txt";
}

// The folder of the list files, which is made when it is first needed.
std::string ListFolder(Form1& form) {
    std::string folder = form.ports.files.ProgramFolder() + "\\Tabulky";
    form.ports.files.MakeFolder(folder);
    return folder;
}

// A part number as a file name: the characters that Windows takes in none become "_".
std::string ProposedFileName(std::string part_number) {
    std::ranges::replace_if(
        part_number,
        [](char c) {
            return static_cast<unsigned char>(c) < ' ' ||
                   std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos;
        },
        '_');
    return part_number + ".tab";
}

void Save(Form1& form, const std::string& path) {
    form.ports.files.Write(path, WriteListFile(form.ListView1));
}

void Load(Form1& form, const std::string& path) {
    form.ListView1.Clear();
    shell::ShowRowCount(form);
    ReadListFile(form.ports.files.Read(path), form.ListView1);
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
    TrapSaving(form, [&form] { SaveToChosenFile(form); });
}

void Command17_MouseDown(Form1& form, int button, int /*shift*/, int /*x*/, int /*y*/) {
    if (button != controls::kRightButton || form.ListView1.Count() == 0) {
        return;
    }
    TrapSaving(form, [&form] {
        const std::string path = WorkingFile(form);
        Save(form, path);
        shell::stat(form, "Ulozeni listu ok " + path);
    });
}

void Command27_Click(Form1& form) {
    TrapLoading(form, [&form] { LoadChosenFile(form); });
}

void Command27_MouseDown(Form1& form, int button, int /*shift*/, int /*x*/, int /*y*/) {
    if (button != controls::kRightButton) {
        return;
    }
    TrapLoading(form, [&form] {
        Load(form, WorkingFile(form));
        shell::stat(form, "Nacteni listu ok " + std::to_string(form.ListView1.Count()));
    });
}

} // namespace partslist
