#include <algorithm>

#include "partslist/partslist.hpp"
#include "shell/data_files.hpp"
#include "shell/save_trap.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"

namespace partslist {

namespace {

using controls::ComboBox;

std::string ValueFileName(const ComboBox& picker) {
    return picker.Tag() + ".txt";
}

// Gives the picker's text to the field of every selected row, and remembers it.
void Apply(Form1& form, ComboBox& picker, controls::PartField field) {
    controls::ListView& list = form.ListView1;
    const std::string value = text::WithLineFeeds(picker.Text());
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        if (list.Row(row).selected) {
            list.SetSubItem(row, field, value);
        }
    }
    if (std::ranges::find(picker.Items(), value) == picker.Items().end()) {
        picker.AddItem(value);
    }
}

void ApplyOnEnter(Form1& form, ComboBox& picker, controls::PartField field, int key) {
    if (key == controls::kEnterKey) {
        Apply(form, picker, field);
    }
}

// The closing keeps the file of a picker without values as it is, so the last one goes out of it at
// once.
void ForgetItem(Form1& form, ComboBox& picker, std::size_t item) {
    if (item >= picker.Items().size()) {
        return;
    }
    picker.RemoveItem(item);
    const std::string path = shell::DataFile(form, ValueFileName(picker));
    if (picker.Items().empty() && form.ports.files.Exists(path)) {
        shell::TrapSaving(form, [&] {
            shell::KeepUnreadFile(form, ValueFileName(picker));
            form.ports.files.Write(path, "");
        });
    }
}

// The file of values that the program brings along for those who have none; it may be missing.
std::string InitialFile(Form1& form, const std::string& name) {
    return form.ports.files.ProgramFolder() + "\\Hodnoty\\" + name;
}

bool IsBlank(std::string_view value) {
    return text::TrimBlanks(value).empty();
}

} // namespace

void Combo1_KeyPress(Form1& form, int key) {
    ApplyOnEnter(form, form.Combo1, kMaterial, key);
}
void Combo2_KeyPress(Form1& form, int key) {
    ApplyOnEnter(form, form.Combo2, kSize, key);
}
void Combo3_KeyPress(Form1& form, int key) {
    ApplyOnEnter(form, form.Combo3, kNote, key);
}
void Combo4_KeyPress(Form1& form, int key) {
    ApplyOnEnter(form, form.Combo4, kQuantity, key);
}

void Combo1_Forget(Form1& form, std::size_t item) {
    ForgetItem(form, form.Combo1, item);
}
void Combo2_Forget(Form1& form, std::size_t item) {
    ForgetItem(form, form.Combo2, item);
}
void Combo3_Forget(Form1& form, std::size_t item) {
    ForgetItem(form, form.Combo3, item);
}
void Combo4_Forget(Form1& form, std::size_t item) {
    ForgetItem(form, form.Combo4, item);
}

void Command12_Click(Form1& form) {
    Combo1_KeyPress(form, controls::kEnterKey);
}
void Command13_Click(Form1& form) {
    Combo2_KeyPress(form, controls::kEnterKey);
}
void Command14_Click(Form1& form) {
    Combo3_KeyPress(form, controls::kEnterKey);
}
void Command15_Click(Form1& form) {
    Combo4_KeyPress(form, controls::kEnterKey);
}

void Nacist_List(Form1& form, ComboBox& list) {
    shell::TrapSaving(form, [&] {
        platform::Files& files = form.ports.files;
        std::string path = shell::NewestDataFile(form, ValueFileName(list));
        const std::string initial = InitialFile(form, ValueFileName(list));
        const bool is_first = !files.Exists(path) && files.Exists(initial);
        if (is_first) {
            path = initial;
        }
        form.unread_files.insert(ValueFileName(list));
        const std::string file = files.Read(path);
        form.unread_files.erase(ValueFileName(list));
        for (const std::string_view line : text::Lines(file)) {
            if (!IsBlank(line)) {
                list.AddItem(std::string(line));
            }
        }
        if (is_first) {
            // From now on they are the person's, who may also forget all of them.
            files.Copy(initial, shell::DataFile(form, ValueFileName(list)));
        }
        shell::stat(form, "Nacteni ok " + path);
    });
}

void Ulozit_List(Form1& form, const ComboBox& list) {
    if (list.Items().empty()) {
        return;
    }
    shell::TrapSaving(form, [&] {
        const std::string path = shell::DataFile(form, ValueFileName(list));
        std::string file;
        for (const std::string& value : list.Items()) {
            if (!IsBlank(value)) {
                file += value;
                file += "\r\n";
            }
        }
        shell::KeepUnreadFile(form, ValueFileName(list));
        form.ports.files.Write(path, file, {.patient = form.closing});
        shell::stat(form, "Ulozeni ok " + path);
    });
}

} // namespace partslist
