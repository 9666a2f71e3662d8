#include <algorithm>
#include <optional>

#include "shell/data_files.hpp"
#include "shell/save_trap.hpp"
#include "shell/shell.hpp"
#include "tables/tables.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

constexpr const char* kFolder = "Nastaveni";
constexpr std::string_view kEnding = ".txt";

std::string LayoutFile(const std::string& name, std::string_view ending = kEnding) {
    return std::string(kFolder) + "\\" + name + std::string(ending);
}

// Whether Windows takes a file of that name for a device, whatever its folder and its ending.
bool IsDevice(std::string_view name) {
    const std::string_view stem = text::TrimBlanks(name.substr(0, name.find('.')));
    for (const std::string_view device : {"CON", "PRN", "AUX", "NUL"}) {
        if (text::EqualsIgnoringCase(stem, device)) {
            return true;
        }
    }
    const bool numbered =
        text::StartsWithIgnoringCase(stem, "COM") || text::StartsWithIgnoringCase(stem, "LPT");
    return numbered && stem.size() == 4 && stem[3] >= '0' && stem[3] <= '9';
}

// What stands in the picker, as a file can be named; empty where nothing does.
std::string NameInPicker(const Form1& form) {
    const controls::ComboBox& picker = form.Combo5;
    if (std::ranges::find(picker.Items(), picker.Text()) != picker.Items().end()) {
        return picker.Text();
    }
    std::string name =
        shell::WithoutForbiddenCharacters(std::string(text::TrimBlanks(picker.Text())));
    return IsDevice(name) ? "_" + name : name;
}

// The same; says so where nothing stands there.
std::optional<std::string> AskedName(Form1& form) {
    std::string name = NameInPicker(form);
    if (name.empty()) {
        shell::Refuse(form, "Zadejte nazev rozlozeni");
        return std::nullopt;
    }
    return name;
}

bool Exists(Form1& form, const std::string& name) {
    return form.ports.files.Exists(shell::NewestDataFile(form, LayoutFile(name)));
}

// Whether a name comes before another one, without regard to the case of ASCII letters.
bool Comes(std::string_view left, std::string_view right) {
    const auto upper = [](char c) {
        return static_cast<unsigned char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    };
    return std::ranges::lexicographical_compare(left, right, {}, upper, upper);
}

// A file from elsewhere may end its lines with a line feed alone, which ends none of a
// configuration.
std::string WithLineEnds(const std::string& file) {
    if (file.find("\r\n") != std::string::npos) {
        return file;
    }
    std::string lines;
    for (const std::string_view line : text::Lines(file)) {
        lines.append(line).append("\r\n");
    }
    return lines;
}

// Text2 as a file that is read back to the letter.
std::string FileOf(const std::string& configuration) {
    const bool ended = configuration.empty() || configuration.ends_with("\r\n");
    return ended ? configuration : configuration + "\r\n";
}

void Save(Form1& form, const std::string& name) {
    if (Exists(form, name) && !text::EqualsIgnoringCase(name, form.layout) &&
        !form.ports.message_boxes.AskYesNo("Přepsat rozložení „" + name + "“?")) {
        shell::Refuse(form, "Ulozeni preruseno");
        return;
    }
    const std::string path = shell::DataFile(form, LayoutFile(name));
    form.ports.files.MakeFolder(shell::DataFile(form, kFolder));
    form.ports.files.Write(path, FileOf(form.Text2.Text()),
                           {.keep_before_as = shell::DataFile(form, LayoutFile(name, ".bak"))});
    form.layout = name;
    form.Combo5.SetText(name);
    OfferLayouts(form);
    shell::stat(form, "Ulozeni ok " + path);
}

void Load(Form1& form, const std::string& name) {
    const std::string path = shell::NewestDataFile(form, LayoutFile(name));
    std::string configuration = WithLineEnds(form.ports.files.Read(path));
    // Setting the same would take from the person what can be taken back.
    if (configuration != form.Text2.Text()) {
        form.Text2.SetText(std::move(configuration));
    }
    form.layout = name;
    shell::stat(form, "Nacteni ok " + path);
}

void Delete(Form1& form, const std::string& name) {
    if (!Exists(form, name)) {
        shell::Refuse(form, "Rozlozeni neexistuje");
        return;
    }
    if (!form.ports.message_boxes.AskYesNo("Smazat rozložení „" + name + "“?")) {
        shell::Refuse(form, "Smazani preruseno");
        return;
    }
    // Also the one that an earlier run kept elsewhere.
    while (Exists(form, name)) {
        const std::string path = shell::NewestDataFile(form, LayoutFile(name));
        form.ports.files.Remove(path);
        if (form.ports.files.Exists(path)) {
            throw automation::RunTimeError(75, "Path/File access error");
        }
    }
    if (text::EqualsIgnoringCase(name, form.layout)) {
        form.layout.clear();
    }
    form.Combo5.SetText("");
    OfferLayouts(form);
    shell::stat(form, "Smazani ok " + shell::DataFile(form, LayoutFile(name)));
}

} // namespace

void OfferLayouts(Form1& form) {
    platform::Files& files = form.ports.files;
    std::vector<std::string> names;
    for (const std::string& folder : {files.DataFolder(), files.OtherDataFolder()}) {
        if (!folder.empty()) {
            const auto found = files.NamesIn(folder + "\\" + kFolder, kEnding);
            names.insert(names.end(), found.begin(), found.end());
        }
    }
    std::ranges::stable_sort(names, Comes);
    names.erase(std::unique(names.begin(), names.end(), text::EqualsIgnoringCase), names.end());
    form.Combo5.SetItems(std::move(names));
}

void Combo5_DropDown(Form1& form) {
    OfferLayouts(form);
}

void Combo5_Choose(Form1& form) {
    if (const auto name = AskedName(form)) {
        shell::Trap([&] { Load(form, *name); },
                    [&form](const automation::RunTimeError& error) {
                        shell::ShowError(form, error, "Nacteni Error ");
                    });
    }
}

void Combo5_KeyPress(Form1& form, int key) {
    if (key == controls::kEnterKey) {
        Combo5_Choose(form);
    }
}

void Command40_Click(Form1& form) {
    if (const auto name = AskedName(form)) {
        shell::TrapSaving(form, [&] { Save(form, *name); });
    }
}

void Command41_Click(Form1& form) {
    if (const auto name = AskedName(form)) {
        shell::Trap([&] { Delete(form, *name); },
                    [&form](const automation::RunTimeError& error) {
                        shell::ShowError(form, error, "Smazani Error ");
                    });
    }
}

} // namespace tables
