// Measure MACRO.vbs: the program against what a user would otherwise run, on the same simulated
// session: the walk and the table against the macro, the start against the system's notepad, and a
// product of 20,000 instances in the real window. Prints a table in Markdown.
#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "programs.hpp"
// after windows.h, which programs.hpp brings
#include <psapi.h>

#include "win32/resource.h"

namespace {

using namespace driver;

constexpr Milliseconds kLong{400000};

long long Median(std::vector<long long> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void PrintRow(const std::string& what, const std::string& value) {
    std::cout << "| " << what << " | " << value << " |" << std::endl;
}

std::string Milli(long long time) {
    return std::to_string(time) + " ms";
}

// From the start to a window that has painted and waits for the person.
long long StartTime(const std::string& program, const std::string& window_class) {
    std::vector<long long> times;
    for (int run = 0; run < 7; ++run) {
        const Clock::time_point start = Clock::now();
        const Program started(program);
        const HWND window = started.WaitForWindow(window_class);
        WaitUntil("the window painted",
                  [&] { return GetUpdateRect(window, nullptr, FALSE) == FALSE; });
        Send(window, WM_NULL);
        times.push_back(MillisecondsSince(start));
    }
    return Median(times);
}

// The macro's own time in milliseconds.
long long MacroTime(const std::string& macro, const std::string& task) {
    std::vector<long long> times;
    for (int run = 0; run < 3; ++run) {
        const std::string result = TemporaryPath("macro.txt");
        std::filesystem::remove(result);
        const Program host("cscript.exe", {"//nologo", macro, task, result});
        host.WaitForEnd(kLong);
        std::istringstream(ReadFile(result)) >> times.emplace_back();
    }
    return Median(times);
}

// From the click on a button to the status text that its action ends with.
long long ActionTime(const DorvakWindow& dorvak, int page, int button,
                     const std::string& last_status) {
    std::vector<long long> times;
    for (int run = 0; run < 3; ++run) {
        dorvak.OpenPage(kStructurePage);
        dorvak.Press(ID_Command26); // another status text meanwhile
        dorvak.WaitForStatus("Spusteni Catie = True");
        dorvak.OpenPage(page);
        const Clock::time_point start = Clock::now();
        dorvak.Press(button);
        WaitUntil(
            "the action's end", [&] { return dorvak.Status().starts_with(last_status); }, kLong);
        times.push_back(MillisecondsSince(start));
    }
    return Median(times);
}

long long WorkingSet(const Program& program) {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(program.Process(), &counters, sizeof counters);
    return static_cast<long long>(counters.WorkingSetSize / 1024 / 1024);
}

// The walk of a product of 600 instances and the table of 22 parts, by the program and by the
// macro.
void CompareWithMacro(const std::string& macro) {
    const std::string product = TemporaryPath("measured.txt");
    std::ofstream(product) << "ProductDocument Measured.CATProduct\n"
                              "product \"Measured\"\n  child \"Sub\" times 100\n"
                              "product \"Sub\"\n  child \"Part\" times 5\n";
    const CatiaSession catia({product, "gearbox-assembly.txt", "gearbox-drawing.txt"});
    const DorvakWindow dorvak;
    const long long walk = ActionTime(dorvak, kStructurePage, ID_Command3, "Sestav: 101");
    const long long usual = MacroTime(macro, "walk");
    const long long tuned = MacroTime(macro, "tuned");

    catia.Do("activate Gearbox.CATProduct");
    dorvak.OpenPage(kStructurePage);
    dorvak.Press(ID_Command3);
    dorvak.WaitForStatus("Sestav: 14 Partu: 45");
    dorvak.Press(ID_Command4);
    WaitUntil("the parts list", [&] { return RowCount(dorvak[ID_ListView1]) == 22; });
    catia.Do("activate Gearbox.CATDrawing");
    const long long table = ActionTime(dorvak, kExportPage, ID_Command11, "Tabulka vytvorena Ok");
    const long long macro_table = MacroTime(macro, "table");

    PrintRow("walk of 600 instances, Dorvak", Milli(walk));
    PrintRow("walk of 600 instances, macro as usually written", Milli(usual));
    PrintRow("walk of 600 instances, macro with one reference per level", Milli(tuned));
    PrintRow("table of 22 parts, Dorvak", Milli(table));
    PrintRow("table of 22 parts, macro", Milli(macro_table));
}

// A product of 20,000 instances, one distinct part in ten, in the real window.
void WalkLargeProduct() {
    const std::string product = TemporaryPath("large.txt");
    {
        std::ofstream file(product);
        file << "ProductDocument Large.CATProduct\nproduct \"Large\"\n";
        for (int i = 0; i < 1818; ++i) {
            file << "  child \"Assembly " << i << "\"\n";
        }
        for (int i = 0; i < 1818; ++i) {
            file << "product \"Assembly " << i << "\"\n";
            for (int part = 0; part < 10; ++part) {
                file << "  child \"Part " << (i * 10 + part) % 2000 << "\"\n";
            }
        }
    }
    const CatiaSession catia({product});
    const DorvakWindow dorvak;
    const long long memory_before = WorkingSet(dorvak.Process());
    const HWND status_bar = dorvak[ID_StatusBar1];

    // Meanwhile the window is asked for an answer again and again, and its progress is read.
    std::vector<long long> answers;
    int changes = 0;
    std::string last;
    const Clock::time_point start = Clock::now();
    dorvak.Press(ID_Command3);
    WaitUntil(
        "the large walk's end",
        [&] {
            const Clock::time_point asked = Clock::now();
            Send(dorvak.Window(), WM_NULL);
            answers.push_back(MillisecondsSince(asked));
            const std::string status = StatusText(status_bar, 0);
            changes += status != last ? 1 : 0;
            last = status;
            return status.starts_with("Sestav: ");
        },
        kLong);
    const long long walk = MillisecondsSince(start);
    WaitUntil(
        "the large tree",
        [&] { return Send(dorvak[ID_TreeView1], TVM_GETCOUNT, 0, 0, kLong) == 1819 + 18180; },
        kLong);
    const long long tree = MillisecondsSince(start) - walk;
    const Clock::time_point fill = Clock::now();
    dorvak.Press(ID_Command4);
    WaitUntil(
        "the large list", [&] { return RowCount(dorvak[ID_ListView1]) == 2000; }, kLong);
    const long long list = MillisecondsSince(fill);

    std::sort(answers.begin(), answers.end());
    PrintRow("20,000 instances: walk", Milli(walk));
    PrintRow("20,000 instances: tree shown after the walk's end", Milli(tree));
    PrintRow("20,000 instances: list of 2,000 parts filled", Milli(list));
    PrintRow("20,000 instances: window's answer meanwhile, median",
             Milli(answers[answers.size() / 2]));
    PrintRow("20,000 instances: window's answer meanwhile, longest", Milli(answers.back()));
    PrintRow("20,000 instances: status texts seen meanwhile", std::to_string(changes));
    PrintRow("memory (working set) before", std::to_string(memory_before) + " MB");
    PrintRow("memory (working set) after", std::to_string(WorkingSet(dorvak.Process())) + " MB");
}

} // namespace

int main(int argc, char** argv) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    int result = 1;
    try {
        const SettingKeeper setting;
        std::cout << "| measured | |\n|---|---|" << std::endl;
        PrintRow("start to a painted window, Dorvak",
                 Milli(StartTime(Environment("DORVAK_EXE"), "DorvakForm1")));
        PrintRow("start to a painted window, notepad", Milli(StartTime("notepad.exe", "Notepad")));
        if (argc == 2) {
            CompareWithMacro(argv[1]);
        }
        WalkLargeProduct();
        result = 0;
    } catch (const std::exception& failure) {
        std::cout << "Measure: " << failure.what() << std::endl;
    }
    LeaveResult(result);
    return result;
}
