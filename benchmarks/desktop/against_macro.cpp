// The program against walk_and_table.vbs, what a user would otherwise run.
#include <filesystem>
#include <sstream>

#include "measuring.hpp"
#include "sections.hpp"
#include "win32/resource.h"

namespace measuring {

namespace {

constexpr int kInstances = 600;
constexpr LONG64 kWalkCalls = 6 + 4 * kInstances;
constexpr int kParts = 22;

// The macro's own time in milliseconds.
double MacroTime(const std::string& macro, const std::string& task) {
    const std::string result = TemporaryPath("macro.txt");
    std::filesystem::remove(result);
    const Program host("cscript.exe", {"//nologo", macro, task, result});
    host.WaitForEnd(kLong);
    double time = 0;
    std::istringstream(ReadFile(result)) >> time;
    return time;
}

void PrintAgainst(const std::string& what, const std::vector<double>& dorvak,
                  const std::vector<double>& macro) {
    PrintRow({what, Shown(SpreadOf(dorvak)), Shown(SpreadOf(macro)),
              Ratio(SpreadOf(dorvak).median, SpreadOf(macro).median)});
}

} // namespace

void Macro(const Options& options) {
    const std::string product = WriteProduct("Measured", 100, 5, 5);
    const CatiaSession catia({product, "gearbox-assembly.txt", "gearbox-drawing.txt"});
    const DorvakWindow dorvak;
    const SessionTimes session;
    std::vector<double> walks;
    std::vector<double> usual;
    std::vector<double> tuned;
    std::vector<double> tables;
    std::vector<double> macro_tables;
    for (int i = 0; i < options.pairs; ++i) {
        walks.push_back(RunAction(dorvak, session, ID_Command3, kWalkCalls, "Sestav: 101").all);
        WaitUntilDone(dorvak.Window(), dorvak[ID_Text7]);
        tuned.push_back(MacroTime(options.macro, "tuned"));
        if (i < 3) {
            usual.push_back(MacroTime(options.macro, "walk"));
        }
    }

    catia.Do("activate Gearbox.CATProduct");
    Press(dorvak, ID_Command3);
    dorvak.WaitForStatus("Sestav: 14 Partu: 45");
    Press(dorvak, ID_Command4);
    WaitTightly("the parts list", [&] { return RowCount(dorvak[ID_ListView1]) == kParts; });
    for (int i = 0; i < options.pairs; ++i) {
        catia.Do("open " + SamplePath("gearbox-drawing.txt"));
        catia.Do("log clear");
        macro_tables.push_back(MacroTime(options.macro, "table"));
        const auto macro_calls = static_cast<LONG64>(CallsMade(catia.Log()));
        catia.Do("open " + SamplePath("gearbox-drawing.txt"));
        tables.push_back(
            RunAction(dorvak, session, ID_Command11, macro_calls, "Tabulka vytvorena Ok").all);
        WaitUntilDone(dorvak.Window(), dorvak[ID_Text7]);
    }

    PrintHeadings({"job", "Dorvak", "macro", "ratio"});
    PrintAgainst("walk of 600 instances, macro with one reference per level", walks, tuned);
    PrintAgainst("walk of 600 instances, macro as usually written", walks, usual);
    PrintAgainst("table of 22 parts", tables, macro_tables);
}

} // namespace measuring
