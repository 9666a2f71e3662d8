// The actions against the bare client, which makes the same calls in the same order.
#include <algorithm>
#include <filesystem>
#include <sstream>
#include <stdexcept>

#include "measuring.hpp"
#include "sections.hpp"
#include "win32/resource.h"

namespace measuring {

namespace {

using Log = std::vector<std::string>;

// A run of the bare client, in milliseconds.
struct BareRun {
    double all = 0;
    double inside = 0; // Invoke, GetIDsOfNames and Release
    double releasing = 0;
    double session_at_work = 0;
    int releases = 0;
};

// What both do, and how the program is brought to it.
struct Job {
    std::string name; // of the bare client
    std::string rows; // the file that it works on
    int button;
    std::string last_status;
    std::function<void()> before = [] {}; // each run, of either
};

struct Pairs {
    std::vector<BareRun> bare;
    std::vector<Run> dorvak;
    std::size_t calls = 0;
};

std::string BareClient() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return (std::filesystem::path(path).parent_path() / "BareClient.exe").string();
}

double TicksToMilliseconds(LONG64 ticks) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(ticks) * 1000 / static_cast<double>(frequency.QuadPart);
}

BareRun RunBareClient(const SessionTimes& session, const std::string& job,
                      const std::string& rows) {
    const std::string result = TemporaryPath("bare-client.txt");
    std::filesystem::remove(result);
    std::vector<std::string> arguments{job, result};
    if (!rows.empty()) {
        arguments.push_back(rows);
    }
    session.Clear();
    const Program client(BareClient(), arguments);
    const DWORD code = client.WaitForEnd(kLong);
    const std::string text = ReadFile(result);
    double all = 0;
    double invoking = 0;
    double looking_up = 0;
    double releasing = 0;
    BareRun run;
    if (code != 0 ||
        !(std::istringstream(text) >> all >> invoking >> looking_up >> releasing >> run.releases)) {
        throw std::runtime_error("the bare client: " + text);
    }
    run.all = all / 1000;
    run.inside = (invoking + looking_up + releasing) / 1000;
    run.releasing = releasing / 1000;
    run.session_at_work = TicksToMilliseconds(session.Read().at_work);
    return run;
}

void Compare(const Log& bare, const Log& dorvak) {
    const auto [at, other] = std::mismatch(bare.begin(), bare.end(), dorvak.begin(), dorvak.end());
    if (at == bare.end() && other == dorvak.end()) {
        return;
    }
    const auto line = [](const Log& log, Log::const_iterator place) {
        return place == log.end() ? "its end" : *place;
    };
    throw std::runtime_error(
        "the calls differ: the bare client makes " + std::to_string(bare.size()) + ", Dorvak " +
        std::to_string(dorvak.size()) + "; call " + std::to_string(at - bare.begin() + 1) + " is " +
        line(bare, at) + ", Dorvak's is " + line(dorvak, other));
}

// One pair of runs, whose calls must be the same.
void AddPair(Pairs& pairs, const CatiaSession& catia, const SessionTimes& session,
             const DorvakWindow& dorvak, const Job& job,
             const std::function<void()>& meanwhile = {}) {
    job.before();
    catia.Do("log clear");
    pairs.bare.push_back(RunBareClient(session, job.name, job.rows));
    const Log bare = catia.Log();
    job.before();
    catia.Do("log clear");
    pairs.dorvak.push_back(RunAction(dorvak, session, job.button, static_cast<LONG64>(bare.size()),
                                     job.last_status, meanwhile));
    Compare(bare, catia.Log());
    pairs.calls = bare.size();
}

template <typename Runs, typename Part>
std::vector<double> TimesOf(const Runs& runs, Part part) {
    std::vector<double> times;
    times.reserve(runs.size());
    for (const auto& run : runs) {
        times.push_back(run.*part);
    }
    return times;
}

double Median(const auto& runs, auto part) {
    return SpreadOf(TimesOf(runs, part)).median;
}

void PrintJobs() {
    PrintHeadings({"job", "calls", "bare client", "Dorvak to its last call", "ratio",
                   "ratio of a pair", "Dorvak outside the calls", "ratio to the last text"});
}

// What follows the last call, the tree of a walk above all, is not the bare client's work.
double ToLastCall(const Run& run) {
    return run.all - run.from_last_call;
}

void PrintPairs(const std::string& what, const Pairs& pairs) {
    std::vector<double> ratios;
    std::vector<double> times;
    for (std::size_t i = 0; i < pairs.dorvak.size(); ++i) {
        times.push_back(ToLastCall(pairs.dorvak[i]));
        ratios.push_back(times.back() / pairs.bare[i].all);
    }
    const double bare = Median(pairs.bare, &BareRun::all);
    const Spread dorvak = SpreadOf(times);
    const double inside = Median(pairs.bare, &BareRun::inside);
    const Spread spread = SpreadOf(ratios);
    PrintRow({what, std::to_string(pairs.calls),
              Shown(SpreadOf(TimesOf(pairs.bare, &BareRun::all))), Shown(dorvak),
              Ratio(dorvak.median, bare), Ratio(spread.least, 1) + " to " + Ratio(spread.most, 1),
              Share(dorvak.median - inside, dorvak.median),
              Ratio(Median(pairs.dorvak, &Run::all), bare)});
}

// Where the time of the pairs went.
void PrintParts(const Pairs& pairs) {
    PrintHeadings({"of it", "bare client", "Dorvak"});
    PrintRow({"before the first call", "", Shown(Median(pairs.dorvak, &Run::to_first_call))});
    PrintRow({"after the last call", "", Shown(Median(pairs.dorvak, &Run::from_last_call))});
    PrintRow({"the session at work", Shown(Median(pairs.bare, &BareRun::session_at_work)),
              Shown(Median(pairs.dorvak, &Run::session_at_work))});
    PrintRow(
        {"in Invoke, GetIDsOfNames and Release", Shown(Median(pairs.bare, &BareRun::inside)), ""});
    PrintRow({std::to_string(pairs.bare.front().releases) + " releases",
              Shown(Median(pairs.bare, &BareRun::releasing)), ""});
}

Pairs MeasurePairs(int count, const CatiaSession& catia, const DorvakWindow& dorvak,
                   const Job& job) {
    const SessionTimes session;
    Pairs pairs;
    for (int i = 0; i < count; ++i) {
        AddPair(pairs, catia, session, dorvak, job);
        WaitUntilDone(dorvak.Window(), dorvak[ID_Text7]);
    }
    return pairs;
}

std::string Rows(const std::vector<std::vector<std::string>>& rows) {
    std::string text;
    for (const auto& row : rows) {
        for (std::size_t field = 0; field < row.size(); ++field) {
            text += (field > 0 ? "\t" : "") + row[field];
        }
        text += '\n';
    }
    return text;
}

std::shared_ptr<ProgramFolder> FolderWithList(int rows) {
    auto folder = std::make_shared<ProgramFolder>();
    const std::string written = WriteTemporary("list.txt", ListFile(MakeParts(rows)));
    std::filesystem::copy_file(written, folder->Path("list.txt"));
    return folder;
}

// A drawing with a selected table of the parts, the first one at the bottom.
std::string WriteTable(int rows) {
    std::string content = "DrawingDocument Tabulka.CATDrawing\nsheet \"List\"\n"
                          "  view \"Main View\"\n"
                          "    table at 0 0 selected columns 14 44 16 38 35 32 15\n"
                          "      row 5 cells Pozice nazev Kusu Ciste Material Poznamka List\n";
    const auto parts = MakeParts(rows);
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        content += "      row 7 cells";
        for (const std::size_t field : {1U, 0U, 2U, 5U, 4U, 6U, 3U}) {
            content += " \"" + part->at(field) + '"';
        }
        content += '\n';
    }
    return WriteTemporary("table.txt", content);
}

constexpr int kSheets = 600;

// Sheets 1 to 600; `backwards` puts them the other way round.
std::string WriteSheets(const std::string& file_name, bool backwards) {
    std::string content = "DrawingDocument Listy.CATDrawing\n";
    for (int i = 1; i <= kSheets; ++i) {
        const int number = backwards ? kSheets + 1 - i : i;
        content += "sheet \"" + std::to_string(number) + "\"\n";
    }
    return WriteTemporary(file_name, content);
}

} // namespace

void Walk(const Options& options) {
    const CatiaSession catia({WriteProduct("Walked", 47, 29, 294)});
    const DorvakWindow dorvak;
    const Pairs pairs = MeasurePairs(
        options.pairs, catia, dorvak,
        {.name = "walk", .rows = {}, .button = ID_Command3, .last_status = "Sestav: 48"});
    PrintJobs();
    PrintPairs("walk of 1,410 instances", pairs);
    PrintParts(pairs);
}

void Table(const Options& options) {
    constexpr int kRows = 294;
    const CatiaSession catia({"gearbox-drawing.txt"});
    const DorvakWindow dorvak(FolderWithList(kRows), kExportPage);
    const Pairs pairs =
        MeasurePairs(options.pairs, catia, dorvak,
                     {.name = "table",
                      .rows = WriteTemporary("rows.txt", Rows(MakeParts(kRows))),
                      .button = ID_Command11,
                      .last_status = "Tabulka vytvorena Ok",
                      .before = [&] { catia.Do("open " + SamplePath("gearbox-drawing.txt")); }});
    PrintJobs();
    PrintPairs("table of 294 parts", pairs);
    PrintParts(pairs);
}

void ReadBack(const Options& options) {
    const CatiaSession catia({WriteTable(500)});
    const DorvakWindow dorvak;
    dorvak.OpenPage(kImportPage);
    const Pairs pairs = MeasurePairs(
        options.pairs, catia, dorvak,
        {.name = "read", .rows = {}, .button = ID_Command9, .last_status = "Nacteni tabulky Ok"});
    PrintJobs();
    PrintPairs("a table of 500 rows read", pairs);
    PrintParts(pairs);
}

void Update(const Options& options) {
    constexpr int kRows = 500;
    constexpr LONG64 kNewTable = 10613;
    constexpr LONG64 kUpdate = 3556;
    const CatiaSession catia({"gearbox-drawing.txt"});
    const DorvakWindow dorvak(FolderWithList(kRows), kExportPage);
    const SessionTimes session;
    const auto run = [&](int button, LONG64 calls, const std::string& last_status) {
        catia.Do("log clear");
        const Run done = RunAction(dorvak, session, button, calls, last_status);
        WaitUntilDone(dorvak.Window(), dorvak[ID_Text7]);
        if (CallsMade(catia.Log()) != calls) {
            throw std::runtime_error("the action makes other calls than it is known to");
        }
        return done.all;
    };
    std::vector<double> made;
    std::vector<double> updated;
    for (int i = 0; i < options.pairs; ++i) {
        catia.Do("open " + SamplePath("gearbox-drawing.txt"));
        made.push_back(run(ID_Command11, kNewTable, "Tabulka vytvorena Ok"));
        // The new table is selected. Of every part there are two.
        dorvak.OpenPage(kEditPage);
        Click(dorvak[ID_ListView1], RowPoint(dorvak[ID_ListView1], 0));
        PasteText(FindWindowExW(dorvak[ID_Combo4], nullptr, L"Edit", nullptr),
                  std::to_string(3 + i));
        PressKey(VK_RETURN);
        dorvak.OpenPage(kExportPage);
        updated.push_back(run(ID_Command37, kUpdate, "Aktualizovano bunek: 1, radku: 0"));
    }
    PrintHeadings({"500 parts", "calls", "time"});
    PrintRow({"a new table", std::to_string(kNewTable), Shown(SpreadOf(made))});
    PrintRow(
        {"one quantity brought up to date", std::to_string(kUpdate), Shown(SpreadOf(updated))});
}

void Sheets(const Options& options) {
    const std::string forwards = WriteSheets("sheets.txt", false);
    const std::string backwards = WriteSheets("backwards.txt", true);
    std::vector<std::vector<std::string>> names;
    std::vector<std::vector<std::string>> renamings;
    for (int i = 1; i <= kSheets; ++i) {
        names.push_back({std::to_string(i)});
        renamings.push_back({std::to_string(i), std::to_string(1000 + i)});
    }
    const std::string order_rows = WriteTemporary("order.txt", Rows(names));
    const std::string rename_rows = WriteTemporary("rename.txt", Rows(renamings));

    const CatiaSession catia({forwards});
    const DorvakWindow dorvak(FolderWithList(3), kSheetPage);
    Send(dorvak[ID_Text6], WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"1001"));
    const SessionTimes session;
    const auto open = [&](const std::string& path) {
        return [&catia, path] { catia.Do("open " + path); };
    };
    Pairs load;
    Pairs order;
    Pairs rename;
    for (int i = 0; i < options.pairs; ++i) {
        const auto add = [&](Pairs& pairs, const Job& job) {
            AddPair(pairs, catia, session, dorvak, job);
            WaitUntilDone(dorvak.Window(), dorvak[ID_Text7]);
        };
        add(load, {"load", {}, ID_Command21, "Sheets nacteny: 600", open(forwards)});
        // From the list's order, which is the other way round in the drawing.
        add(order, {"order", order_rows, ID_Command34, "Sheets nacteny: 600", open(backwards)});
        Press(dorvak, ID_Command20);
        dorvak.WaitForStatus("Ocislovano: 1600");
        add(rename, {"rename", rename_rows, ID_Command23, "Prejmenovano: 600", open(forwards)});
    }
    PrintJobs();
    PrintPairs("600 sheets loaded", load);
    PrintPairs("600 sheets renamed", rename);
    PrintPairs("600 sheets put in order and loaded again", order);
}

void LargeWalk(const Options& options) {
    constexpr int kSmall = 1410;
    constexpr int kLarge = 1818 + 18180;
    const std::string walked = WriteProduct("Walked", 47, 29, 294);
    const std::string large = WriteProduct("Large", 1818, 10, 2000);
    const CatiaSession catia({walked});
    const DorvakWindow dorvak;
    const SessionTimes session;
    const double memory_before = WorkingSet(dorvak.Process());

    Pairs small_pairs;
    for (int i = 0; i < std::min(options.pairs, 3); ++i) {
        AddPair(small_pairs, catia, session, dorvak,
                {.name = "walk", .rows = {}, .button = ID_Command3, .last_status = "Sestav: 48"});
        WaitUntilDone(dorvak.Window(), dorvak[ID_Text7]);
    }

    catia.Do("open " + large);
    Pairs pairs;
    std::vector<double> answers;
    AddPair(pairs, catia, session, dorvak,
            {.name = "walk", .rows = {}, .button = ID_Command3, .last_status = "Sestav: 1819"},
            [&] {
                const Clock::time_point asked = Clock::now();
                Send(dorvak.Window(), WM_NULL);
                answers.push_back(MillisecondsSince(asked));
            });
    const Clock::time_point walk_end = Clock::now();
    WaitTightly(
        "the large tree",
        [&] { return Send(dorvak[ID_TreeView1], TVM_GETCOUNT, 0, 0, kLong) == kLarge + 1; }, kLong);
    WaitUntilDone(dorvak.Window(), dorvak[ID_Text7]);
    const double tree = MillisecondsSince(walk_end);
    const double memory_after = WorkingSet(dorvak.Process());
    const Clock::time_point fill = Clock::now();
    Press(dorvak, ID_Command4);
    WaitTightly("the large list", [&] { return RowCount(dorvak[ID_ListView1]) == 2000; });
    const double list = MillisecondsSince(fill);

    const double bare_small = Median(small_pairs.bare, &BareRun::all) / kSmall;
    const double dorvak_small = Median(small_pairs.dorvak, &Run::all) / kSmall;
    const double bare_large = pairs.bare.front().all / kLarge;
    const double dorvak_large = pairs.dorvak.front().all / kLarge;
    PrintJobs();
    PrintPairs("walk of 1,410 instances", small_pairs);
    PrintPairs("walk of 19,998 instances", pairs);
    PrintHeadings({"per instance", "1,410", "19,998", "ratio"});
    PrintRow({"bare client", Shown(bare_small), Shown(bare_large), Ratio(bare_large, bare_small)});
    PrintRow(
        {"Dorvak", Shown(dorvak_small), Shown(dorvak_large), Ratio(dorvak_large, dorvak_small)});
    PrintHeadings({"walk of 19,998 instances", ""});
    PrintRow({"the window's answer to a message meanwhile, median and longest",
              Shown(SpreadOf(answers).median) + ", " + Shown(SpreadOf(answers).most)});
    PrintRow({"tree shown after the walk's end", Shown(tree)});
    PrintRow({"list of 2,000 parts filled", Shown(list)});
    PrintRow({"working set before and after",
              std::to_string(static_cast<int>(memory_before)) + " MB, " +
                  std::to_string(static_cast<int>(memory_after)) + " MB"});
}

} // namespace measuring
