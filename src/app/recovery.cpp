#include "app/recovery.hpp"

#include <algorithm>
#include <array>

#include "app/form_events.hpp"
#include "shell/data_files.hpp"
#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"

namespace app {

namespace {

using controls::ComboBox;
using controls::Form1;

constexpr const char* kFile = "obnova.txt";
constexpr const char* kRefusedFile = "obnova-minula.txt";

// The file: lines of fields separated by tabs, the first of them saying what the line holds. Line
// ends, tabs and backslashes in a field stand as "\n", "\r", "\t" and "\\".
constexpr std::string_view kHeader = "obnova";       // the time of day
constexpr std::string_view kConfiguration = "text2"; // its text
constexpr std::string_view kValue = "hodnota";       // the picker's tag, the value
constexpr std::string_view kRow = "radek";           // "1" where it is ticked, its texts
constexpr std::string_view kTreeName = "strom";      // of the tree that the rows come from
constexpr std::string_view kEnd = "konec";

using Fields = std::vector<std::string>;

struct Leftover {
    std::string time;
    std::vector<Fields> lines; // of what the form holds
};

std::array<ComboBox*, 4> Pickers(Form1& form) {
    return {&form.Combo1, &form.Combo2, &form.Combo3, &form.Combo4};
}

// Everything that is kept, a line each.
std::vector<Fields> Content(Form1& form) {
    std::vector<Fields> lines{{std::string(kConfiguration), form.Text2.Text()}};
    for (const ComboBox* picker : Pickers(form)) {
        for (const std::string& value : picker->Items()) {
            lines.push_back({std::string(kValue), picker->Tag(), value});
        }
    }
    const controls::ListView& list = form.ListView1;
    const bool is_read = list.Count() == 0 && !form.rows_before_reading.empty();
    for (const controls::ListRow& row : is_read ? form.rows_before_reading : list.Rows()) {
        Fields fields{std::string(kRow), row.checked ? "1" : "0", row.text};
        fields.insert(fields.end(), row.sub_items.begin(), row.sub_items.end());
        fields.resize(2 + list.Columns().size());
        lines.push_back(std::move(fields));
    }
    const auto& names = is_read ? form.names_before_reading : list.SourceNames();
    if (names) {
        lines.push_back({std::string(kTreeName)}); // there may be none in it
        for (const std::string& name : *names) {
            lines.push_back({std::string(kTreeName), name});
        }
    }
    return lines;
}

std::string TimeOfDay(Form1& form) {
    const auto minutes = static_cast<int>(form.ports.clock.SecondsSinceMidnight()) / 60;
    std::string time = std::to_string(minutes / 60) + ":";
    if (minutes % 60 < 10) {
        time += '0';
    }
    return time + std::to_string(minutes % 60);
}

std::string FileText(Form1& form) {
    std::string text = std::string(kHeader) + "\t" + TimeOfDay(form) + "\r\n";
    for (const Fields& line : Content(form)) {
        for (std::size_t field = 0; field < line.size(); ++field) {
            text += field == 0 ? "" : "\t";
            text += text::Escaped(line[field]);
        }
        text += "\r\n";
    }
    return text + std::string(kEnd) + "\r\n";
}

// Nothing where the text is none that FileText has made.
std::optional<Leftover> ReadLeftover(std::string_view text) {
    std::vector<Fields> lines;
    for (const std::string_view line : text::Lines(text)) {
        Fields fields;
        for (const std::string_view field : text::Split(line, "\t")) {
            fields.push_back(text::Unescaped(field));
        }
        lines.push_back(std::move(fields));
    }
    constexpr std::size_t kRowFields = 9;
    if (lines.size() < 2 || lines.front().size() != 2 || lines.front()[0] != kHeader ||
        lines.back() != Fields{std::string(kEnd)}) {
        return std::nullopt;
    }
    Leftover leftover{lines.front()[1], {}};
    for (std::size_t i = 1; i + 1 < lines.size(); ++i) {
        const std::string& kind = lines[i].front();
        const std::size_t fields = lines[i].size();
        if ((kind == kConfiguration && fields == 2) || (kind == kValue && fields == 3) ||
            (kind == kRow && fields == kRowFields) || (kind == kTreeName && fields <= 2)) {
            leftover.lines.push_back(std::move(lines[i]));
        } else {
            return std::nullopt;
        }
    }
    return leftover;
}

// Lines that are not of that kind.
std::vector<Fields> Without(std::string_view kind, std::vector<Fields> lines) {
    std::erase_if(lines, [kind](const Fields& line) { return line.front() == kind; });
    return lines;
}

// What the person would miss: not where the rows come from.
std::vector<Fields> Work(std::vector<Fields> lines) {
    return Without(kTreeName, std::move(lines));
}

std::vector<Fields> WithoutRows(std::vector<Fields> lines) {
    return Without(kRow, Work(std::move(lines)));
}

void Restore(Form1& form, const Leftover& leftover) {
    controls::ListView& list = form.ListView1;
    list.Clear();
    std::optional<controls::NameSet> names;
    for (const Fields& line : leftover.lines) {
        if (line.front() == kTreeName) {
            if (!names) {
                names.emplace();
            }
            names->insert(line.begin() + 1, line.end());
        } else if (line.front() == kConfiguration) {
            form.Text2.SetText(line[1]);
        } else if (line.front() == kValue) {
            for (ComboBox* picker : Pickers(form)) {
                if (picker->Tag() == line[1] &&
                    std::ranges::find(picker->Items(), line[2]) == picker->Items().end()) {
                    picker->AddItem(line[2]);
                }
            }
        } else {
            const std::size_t row = list.Add(line[2]);
            list.SetChecked(row, line[1] == "1");
            for (std::size_t field = 3; field < line.size(); ++field) {
                list.SetSubItem(row, field - 2, line[field]);
            }
        }
    }
    if (names) {
        list.SetSourceNames(std::move(*names));
    }
    shell::ShowRowCount(form);
}

// Keeps a leftover that is not wanted under another name, where that has not been done yet.
void PutAsideUnwanted(Form1& form) {
    if (!form.recovery.leftover_unwanted) {
        return;
    }
    const std::string path = shell::DataFile(form, kFile);
    form.ports.files.Copy(path, shell::DataFile(form, kRefusedFile));
    form.ports.files.Remove(path);
    form.recovery.leftover_unwanted = false;
}

// Whether what is to become of the leftover is known: taken, worth nothing, or not wanted.
bool DealWithLeftover(Form1& form, const std::string& path) {
    platform::Files& files = form.ports.files;
    if (!files.Exists(path)) {
        return true;
    }
    try {
        const auto leftover = ReadLeftover(files.Read(path));
        const std::vector<Fields> content = Content(form);
        if (leftover && Work(leftover->lines) == Work(content)) {
            return true;
        }
        // The list may have been saved after it was kept last.
        const bool is_older = leftover && WithoutRows(leftover->lines) == WithoutRows(content) &&
                              files.IsNewer(shell::DataFile(form, "list.txt"), path);
        if (leftover && !is_older) {
            const auto rows = std::ranges::count(leftover->lines, kRow,
                                                 [](const Fields& line) { return line.front(); });
            const bool wanted = form.ports.message_boxes.AskYesNo(
                shell::RestoreQuestion(leftover->time, static_cast<std::size_t>(rows)));
            if (form.unloaded) {
                return false; // closed meanwhile: that was no answer
            }
            if (wanted) {
                Dispatch(
                    form, [&] { Restore(form, *leftover); }, "Obnovení");
                return true;
            }
        }
        form.recovery.leftover_unwanted = true;
        return true;
    } catch (const automation::RunTimeError&) {
        return false;
    }
}

// Rises with every change of what is kept, the configuration excepted, and with every save: the
// recovery file then stays the newer one.
std::uint64_t Version(Form1& form) {
    std::uint64_t version = form.parts_history.Changes() + form.working_saves;
    for (const ComboBox* picker : Pickers(form)) {
        version += picker->Items().size() + 2 * picker->Removals();
    }
    return version;
}

void Write(Form1& form) {
    controls::Recovery& recovery = form.recovery;
    try {
        PutAsideUnwanted(form);
        form.ports.files.Write(shell::DataFile(form, kFile), FileText(form));
        recovery.version = recovery.seen_version;
        recovery.configuration = recovery.seen_configuration;
        recovery.changed_since.reset();
    } catch (const automation::RunTimeError&) {
        recovery.changed_since = recovery.last_look; // again when it is due again
        recovery.last_change = recovery.last_look;
    }
}

// Whether there is anything that the file lacks.
bool Look(Form1& form, long long now) {
    controls::Recovery& recovery = form.recovery;
    recovery.last_look = now;
    form.parts_history.Note(form.innermost.step, form.innermost.number);
    const std::uint64_t version = Version(form);
    const std::string& configuration = form.Text2.Text();
    if (version != recovery.seen_version || configuration != recovery.seen_configuration) {
        recovery.seen_version = version;
        recovery.seen_configuration = configuration;
        recovery.last_change = now;
        if (!recovery.changed_since) {
            recovery.changed_since = now;
        }
    }
    return version != recovery.version || configuration != recovery.configuration;
}

} // namespace

void OfferRecovery(Form1& form) {
    controls::Recovery& recovery = form.recovery;
    recovery.leftover_waits = true;
    if (DealWithLeftover(form, shell::DataFile(form, kFile))) {
        recovery.leftover_waits = false;
        shell::TrapSilently([&] { PutAsideUnwanted(form); }); // else when there is more to keep
        Look(form, 0);
        recovery.version = recovery.seen_version;
        recovery.configuration = recovery.seen_configuration;
        recovery.changed_since.reset();
        recovery.on = true;
    }
}

void KeepRecovery(Form1& form, long long now, const RecoveryPace& pace) {
    const controls::Recovery& recovery = form.recovery;
    if (!recovery.on || form.closing || !Look(form, now)) {
        return;
    }
    const bool idle = form.running_handlers == 0 && now - recovery.last_change >= pace.idle;
    if (idle || now - recovery.changed_since.value_or(now) >= pace.longest) {
        Write(form);
    }
}

void KeepRecoveryNow(Form1& form) {
    if (form.recovery.on && Look(form, form.recovery.last_look)) {
        Write(form);
    }
}

void KeepLeftover(Form1& form) {
    const std::string path = shell::DataFile(form, kFile);
    if (form.recovery.leftover_waits && form.ports.files.Exists(path)) {
        shell::TrapSilently([&] { form.ports.files.Copy(path, path); });
    }
}

void RemoveRecovery(Form1& form) {
    if (form.recovery.on) {
        shell::TrapSilently([&] {
            PutAsideUnwanted(form);
            form.ports.files.Remove(shell::DataFile(form, kFile));
        });
        form.recovery.on = false;
    }
}

} // namespace app
