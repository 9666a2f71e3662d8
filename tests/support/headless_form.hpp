// The whole program without a window: Form1 bound to its actions, with ports that live in memory.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/form_events.hpp"
#include "automation/run_time_error.hpp"
#include "controls/form1.hpp"
#include "simulator/session.hpp"
#include "text/text.hpp"

namespace testing_support {

constexpr platform::WindowHandle kFormWindow = 1000;
constexpr const char* kWorkingFile = "C:\\Dorvak\\list.txt";

struct MemoryDesktop : platform::DesktopWindows {
    std::vector<std::string> titles; // of the top-level windows, in the system's order
    std::set<platform::WindowHandle> not_of_catia; // whatever their titles
    std::map<platform::WindowHandle, bool> topmost;
    int times_put_on_top = 0;
    int screen_width = 19200; // twips: 1280 pixels
    int screen_height = 15360;

    void EnumWindows(const std::function<long(platform::WindowHandle)>& callback) override {
        for (std::size_t window = 1; window <= titles.size(); ++window) {
            if (callback(window) == 0) {
                return;
            }
        }
    }
    std::string GetWindowTitle(platform::WindowHandle window) override {
        return titles.at(window - 1);
    }
    bool MayBeOfCatia(platform::WindowHandle window) override {
        return !not_of_catia.contains(window);
    }
    void SetTopmost(platform::WindowHandle window, bool on) override {
        topmost[window] = on;
        times_put_on_top += on ? 1 : 0;
    }
    int ScreenWidth() override { return screen_width; }
    int ScreenHeight() override { return screen_height; }
};

struct MemorySettings : platform::SettingsStore {
    std::map<std::string, std::string> stored;
    bool broken = false;

    static std::string Path(std::string_view application, std::string_view section,
                            std::string_view key) {
        return std::string(application) + "\\" + std::string(section) + "\\" + std::string(key);
    }
    std::string GetSetting(std::string_view application, std::string_view section,
                           std::string_view key, std::string_view fallback) override {
        if (broken) {
            throw automation::RunTimeError(75, "Path/File access error");
        }
        const auto found = stored.find(Path(application, section, key));
        return found == stored.end() ? std::string(fallback) : found->second;
    }
    void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                     std::string_view value) override {
        if (broken) {
            throw automation::RunTimeError(75, "Path/File access error");
        }
        stored[Path(application, section, key)] = value;
    }
};

struct ScriptedEvents : platform::EventPump {
    int yields = 0;
    std::map<int, std::function<void()>> at_yield; // what the person does at the n-th yield
    std::function<void()> at_every_yield;          // and at each of them

    void DoEvents() override {
        ++yields;
        if (const auto act = at_yield.find(yields); act != at_yield.end()) {
            act->second();
        }
        if (at_every_yield) {
            at_every_yield();
        }
    }
};

struct SessionServers : platform::AutomationServers {
    simulator::Session* session = nullptr;
    int obtained = 0;
    // What the program gets for the session's application object; that itself where empty.
    std::function<automation::ObjectPtr(const automation::ObjectPtr&)> hand_out;

    automation::ObjectPtr GetActiveObject(std::string_view program_id) override {
        if (session == nullptr || program_id != "Catia.application") {
            throw automation::CannotCreateObject();
        }
        ++obtained;
        const automation::ObjectPtr application = session->Application();
        return hand_out ? hand_out(application) : application;
    }
};

// Every window belongs to one program, which is the one that is registered.
struct OneProgram : platform::Programs {
    std::map<platform::WindowHandle, platform::Rights> rights; // that are not the same
    std::string path = R"(C:\CATIA\code\bin\CNEXT.exe)";
    platform::Registration registration{true, path};

    platform::Rights RightsOf(platform::WindowHandle window) override {
        const auto found = rights.find(window);
        return found == rights.end() ? platform::Rights::kSame : found->second;
    }
    std::string PathOf(platform::WindowHandle /*window*/) override { return path; }
    platform::Registration RegisteredUnder(std::string_view program_id) override {
        return program_id == "Catia.application" ? registration : platform::Registration{};
    }
};

// Numbers with a decimal comma, as Czech users write them.
struct CzechNumbers : platform::NumberFormat {
    bool groups_by_points = false; // "1.234,5", as the person has set it

    std::optional<double> ReadNumber(std::string_view text) override {
        std::string plain(text);
        if (groups_by_points) {
            std::erase(plain, '.');
        }
        if (plain.find('.') != std::string::npos) {
            return std::nullopt;
        }
        if (const auto comma = plain.find(','); comma != std::string::npos) {
            plain[comma] = '.';
        }
        return text::Number(plain);
    }
};

struct RecordedBoxes : platform::MessageBoxes {
    std::vector<automation::RunTimeError> shown;
    std::vector<std::string> questions;
    bool answer = true;
    std::function<void()> while_asking; // what happens while a question stands there

    bool AskYesNo(std::string_view question) override {
        questions.emplace_back(question);
        if (while_asking) {
            while_asking();
        }
        return answer;
    }

    // What the person answers to failed saves, in turn; then to close without saving.
    std::deque<platform::AfterFailedSave> after_failed_save;
    std::vector<std::string> failed_saves; // the reasons that were shown

    std::vector<std::string> informed; // texts and titles of boxes that ask nothing

    void ShowInformation(std::string_view text, std::string_view title) override {
        informed.emplace_back(text);
        informed.emplace_back(title);
    }

    bool cannot_ask = false;

    platform::AfterFailedSave AskAfterFailedSave(std::string_view reason) override {
        if (cannot_ask) {
            throw automation::RunTimeError(7, "Out of memory");
        }
        failed_saves.emplace_back(reason);
        if (after_failed_save.empty()) {
            return platform::AfterFailedSave::kCloseWithoutSaving;
        }
        const auto chosen = after_failed_save.front();
        after_failed_save.pop_front();
        return chosen;
    }

    platform::Answer three_way_answer = platform::Answer::kCancel;
    std::string text_answer;
    std::vector<std::string> asked; // the words of the last box, in their order

    platform::Answer AskYesNoCancel(std::string_view question, std::string_view title) override {
        asked = {std::string(question), std::string(title)};
        return three_way_answer;
    }
    std::string AskText(std::string_view prompt, std::string_view title,
                        std::string_view proposal) override {
        asked = {std::string(prompt), std::string(title), std::string(proposal)};
        return text_answer;
    }

    void ShowError(const automation::RunTimeError& error) override { shown.push_back(error); }
};

// The Western code page, where code 248 is the diameter sign.
struct WesternCodePage : platform::CodePage {
    std::string Character(unsigned char code) override { return code == 248 ? "ø" : "?"; }
};

struct FixedClock : platform::Clock {
    float seconds = 45296.25F;

    float SecondsSinceMidnight() override { return seconds; }
    std::string Now() override { return "2026-03-01 14:32:05.123"; }
    // A quarter of a second later whenever it is asked.
    double Seconds() override { return 0.25 * ++asked; }

    int asked = 0;
};

struct MemoryLog : platform::Log {
    std::vector<std::string> lines;
    int times_shown = 0;
    bool broken = false;

    std::string Folder() override { return "C:\\Local\\Dorvak"; }
    void Write(std::string_view line) override { lines.emplace_back(line); }
    void ShowFolder() override {
        if (broken) {
            throw automation::FileNotFound();
        }
        ++times_shown;
    }
};

struct FixedComputer : platform::Computer {
    std::vector<platform::Fact> Facts() override { return {{"Windows", "11"}, {"Jazyk", "cs"}}; }
};

// Keeps the pages that were opened.
struct MemoryGuide : platform::Guide {
    std::vector<std::string> pages;
    std::optional<automation::RunTimeError> error; // of opening any of them

    void Show(std::string_view page) override {
        if (error) {
            throw automation::RunTimeError(*error);
        }
        pages.emplace_back(page);
    }
};

// Files by their paths. A path can be made to fail, in reading or in writing.
struct MemoryFiles : platform::Files {
    std::map<std::string, std::string, std::less<>> stored;
    std::map<std::string, automation::RunTimeError, std::less<>> failing;
    std::vector<std::string> folders;

    std::string other_folder;
    std::map<std::string, int, std::less<>> written; // the order in which files were written
    std::vector<platform::Writing> writings;

    std::string DataFolder() override { return "C:\\Dorvak"; }
    std::string OtherDataFolder() override { return other_folder; }
    std::string ProgramFolder() override { return R"(C:\Program)"; }
    bool Exists(std::string_view path) override { return stored.contains(path); }
    bool IsNewer(std::string_view path, std::string_view than) override {
        const auto order = [this](std::string_view name) {
            const auto found = written.find(name);
            return stored.contains(name) ? (found == written.end() ? 0 : found->second) : -1;
        };
        return order(path) > order(than);
    }
    std::string DateOf(std::string_view path) override {
        if (!stored.contains(path)) {
            throw automation::FileNotFound();
        }
        return "2026-03-01 14-32-05";
    }
    void Copy(std::string_view from, std::string_view to) override {
        const std::string text = Read(from);
        Fail(to);
        Store(to, text);
    }
    void Remove(std::string_view path) override {
        if (!failing.contains(path)) {
            stored.erase(std::string(path));
        }
    }
    void MakeFolder(std::string_view path) override { folders.emplace_back(path); }
    std::vector<std::string> NamesIn(std::string_view folder, std::string_view ending) override {
        std::vector<std::string> names;
        for (const auto& [path, content] : stored) {
            const std::size_t name = path.rfind('\\') + 1;
            if (path.ends_with(ending) && path.substr(0, name) == std::string(folder) + "\\") {
                names.push_back(path.substr(name, path.size() - name - ending.size()));
            }
        }
        return names;
    }
    std::string Read(std::string_view path) override {
        Fail(path);
        const auto found = stored.find(path);
        if (found == stored.end()) {
            throw automation::FileNotFound();
        }
        return found->second;
    }
    void Write(std::string_view path, std::string_view text,
               const platform::Writing& writing) override {
        Fail(path);
        writings.push_back(writing);
        if (!writing.keep_before_as.empty() && stored.contains(path)) {
            Store(writing.keep_before_as, stored.find(path)->second);
        }
        Store(path, text);
    }

  private:
    void Store(std::string_view path, std::string_view text) {
        stored[std::string(path)] = text;
        int last = 0;
        for (const auto& [name, order] : written) {
            last = std::max(last, order);
        }
        written[std::string(path)] = last + 1;
    }
    void Fail(std::string_view path) {
        if (const auto found = failing.find(path); found != failing.end()) {
            throw found->second;
        }
    }
};

class HeadlessForm {
  public:
    HeadlessForm()
        : form({desktop, settings, events, servers, programs, number_format, message_boxes, files,
                code_page, clock, log, computer, guide}) {
        form.hWnd = kFormWindow;
        form.Width = 9600;
        form.Height = 7155;
        form.show_now = form.show_soon = [this] {
            const std::string& message = form.StatusBar1.PanelText(1);
            if (messages.empty() || messages.back() != message) {
                messages.push_back(message);
            }
        };
        form.show_popup = [this](controls::PopupMenu& menu, controls::PopupPlace place) {
            popups.emplace_back(menu.caption, place);
        };
        form.copy_text = [this](const std::string& text) {
            copied.push_back(text);
            return true;
        };
        form.pasted_text = [this] { return clipboard; };
        form.show_save_dialog = form.show_open_dialog = [this](controls::FileDialog& dialog) {
            dialogs.push_back(dialog);
            if (chosen_file) {
                dialog.file_name = *chosen_file;
            }
            return chosen_file.has_value();
        };
        // Lists whose rows are one pixel high, so that a row's number is its place.
        for (controls::ListView* list : {&form.ListView1, &form.ListView3}) {
            list->HitTest = [list](int, int y) -> std::optional<std::size_t> {
                if (y < 1 || static_cast<std::size_t>(y) > list->Count()) {
                    return std::nullopt;
                }
                return static_cast<std::size_t>(y);
            };
        }
        app::BindActions(form);
    }

    // Lets the desktop show the session's window, and its application be found.
    void Connect(simulator::Session& session) {
        desktop.titles = {"Desktop", "CATIA V5 - [" + session.ActiveDocumentName() + "]"};
        servers.session = &session;
    }

    [[nodiscard]] const std::string& Status() const { return form.StatusBar1.PanelText(1); }
    [[nodiscard]] const std::string& RowCount() const { return form.StatusBar1.PanelText(2); }
    [[nodiscard]] bool Busy() const { return form.Pointer == controls::MousePointer::kHourglass; }

    MemoryDesktop desktop;
    MemorySettings settings;
    ScriptedEvents events;
    SessionServers servers;
    OneProgram programs;
    CzechNumbers number_format;
    RecordedBoxes message_boxes;
    MemoryFiles files;
    WesternCodePage code_page;
    FixedClock clock;
    MemoryLog log;
    FixedComputer computer;
    MemoryGuide guide;
    std::vector<std::string> copied;      // to the clipboard
    std::optional<std::string> clipboard; // what other programs have put there
    // What the person does in the file dialog: the file chosen, nothing for cancelling.
    std::optional<std::string> chosen_file;
    std::vector<controls::FileDialog> dialogs; // as they were shown
    std::vector<std::string> messages;         // that the status line has shown, in their order
    std::vector<std::pair<std::string, controls::PopupPlace>> popups;

    controls::Form1 form;
};

// Appends a row with the texts of its first fields, from the name on.
inline void AddRow(controls::ListView& list, const std::vector<std::string>& fields,
                   bool checked = false) {
    const std::size_t row = list.Add(fields.at(0));
    list.SetChecked(row, checked);
    for (std::size_t field = 1; field < fields.size(); ++field) {
        list.SetSubItem(row, field, fields[field]);
    }
}

// Presses a mouse button on row `from` and releases one on row `to`.
inline void Drag(controls::ListView& list, int from, int to, int pressed = controls::kLeftButton,
                 int released = controls::kLeftButton) {
    list.UserMouseDown(pressed, 0, 5, from);
    list.UserMouseUp(released, 0, 5, to);
}

// A row of a list view as its texts, from the name on.
inline std::vector<std::string> RowTexts(const controls::ListView& list, std::size_t row) {
    std::vector<std::string> texts{list.Row(row).text};
    for (std::size_t sub_item = 1; sub_item < list.Columns().size(); ++sub_item) {
        texts.push_back(list.SubItem(row, sub_item));
    }
    return texts;
}

inline std::vector<std::string> Column(const controls::ListView& list, std::size_t sub_item) {
    std::vector<std::string> texts;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        texts.push_back(sub_item == 0 ? list.Row(row).text : list.SubItem(row, sub_item));
    }
    return texts;
}

} // namespace testing_support
