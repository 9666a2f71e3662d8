// The sheet list over COM: the sheets of the drawing loaded, named, completed and put in order.
#include <algorithm>
#include <iostream>

#include "fixture.hpp"
#include "tests/support/drawing_text.hpp"

using namespace driver;
using testing_support::SheetNames;

namespace {

using Rows = std::vector<std::string>;

constexpr const char* kDialogClass = "#32770";

// Four parts; the first three get a sheet.
const std::string kFourParts = "\r\n0\tTop"
                               "\r\n1\tHřídel\tTop"
                               "\r\n1\tPříruba\tTop"
                               "\r\n1\tVíko\tTop"
                               "\r\n1\tŠroub M8x25\tTop";

class SheetsTest : public DesktopTest {
  protected:
    explicit SheetsTest(const std::string& sample, const std::vector<std::string>& options = {})
        : catia_({SamplePath("sheets\\" + sample)}, options) {}

    [[nodiscard]] HWND List() const { return dorvak_[ID_ListView3]; }

    void FillParts() const {
        FillList(dorvak_, kFourParts, 4);
        const HWND parts = dorvak_[ID_ListView1];
        for (int row = 0; row < 3; ++row) {
            Click(parts, RowCheckPoint(parts, row));
            WaitForText("the part's sheet", std::to_string(row + 2),
                        [&] { return Cell(parts, row, 3); });
        }
    }

    void LoadSheets(int expected) const {
        dorvak_.OpenPage(kSheetPage);
        dorvak_.Press(ID_Command21);
        dorvak_.WaitForStatus("Sheets nacteny: " + std::to_string(expected), kLong);
        WaitUntil("the rows", [&] { return RowCount(List()) == expected; });
    }

    void WaitForColumn(int column, const Rows& expected) const {
        driver::WaitForColumn(List(), column, expected);
    }
    void WaitForSheets(const Rows& expected) const {
        WaitForText("the drawing's sheets", Joined(expected),
                    [&] { return Joined(SheetNames(catia_.Drawing())); });
    }

    void SelectRow(int row) const { driver::SelectRow(List(), row); }
    // Presses a button that asks something; gives the box, which is in front.
    [[nodiscard]] HWND PressForBox(int button) const {
        dorvak_.Press(button);
        const HWND box = dorvak_.Process().WaitForWindow(kDialogClass);
        BringToFront(box);
        return box;
    }
    void SetText(int edit, const std::string& text) const {
        Click(dorvak_[edit]);
        PressKey('A', {VK_CONTROL});
        TypeText(text);
        WaitForText("the typed text", text, [&] { return Text(dorvak_[edit]); });
    }
    void ExpectTicked(const std::vector<bool>& ticked) const {
        ASSERT_EQ(RowCount(List()), static_cast<int>(ticked.size()));
        for (int row = 0; row < RowCount(List()); ++row) {
            EXPECT_EQ(RowChecked(List(), row), ticked[static_cast<std::size_t>(row)]) << row;
        }
    }

    CatiaSession catia_;
    DorvakWindow dorvak_;
};

class Sheets : public SheetsTest {
  protected:
    Sheets() : SheetsTest("three-sheets.txt") {
        FillParts();
        LoadSheets(3);
    }
};

class DetailSheets : public SheetsTest {
  protected:
    DetailSheets() : SheetsTest("forty-sheets.txt", {"--detail-as-number"}) {
        FillParts();
        LoadSheets(40);
    }

    // Scrolls to the end of the list and makes the last row the current one.
    void GoToTheEnd() const {
        Click(List(), RowPoint(List(), 0));
        PressKey(VK_END);
        WaitUntil("the last row", [&] { return FocusedRow(List()) == 39; });
    }
};

class ManySheets : public SheetsTest {
  protected:
    ManySheets() : SheetsTest("six-hundred-sheets.txt") { FillParts(); }

    // Runs an action up to its last status text, counts its calls and tells its time.
    void Measure(const std::string& what, int button, const std::string& last_status,
                 int expected_calls) const {
        catia_.Do("log clear");
        const Clock::time_point start = Clock::now();
        dorvak_.Press(button);
        dorvak_.WaitForStatus(last_status, kLong);
        const long long time = MillisecondsSince(start);
        const int calls = CallsMade(catia_.Log());
        EXPECT_EQ(calls, expected_calls) << what;
        std::cout << "600 sheets: " << what << " in " << time << " ms with " << calls << " calls\n";
    }
};

} // namespace

// Load, name after the parts list, add what is missing, apply, put in order, reload.
TEST_F(Sheets, TheWholeRoadMakesTheDrawingAsPlanned) {
    WaitForColumn(0, {"1", "2", "9"});
    ExpectTicked({true, true, true});
    Click(List(), RowCheckPoint(List(), 2)); // sheet 9 keeps its name
    WaitUntil("the tick gone", [&] { return !RowChecked(List(), 2); });
    Click(dorvak_[ID_Check1]);
    WaitUntil("the assembly's tick", [&] { return Ticked(dorvak_[ID_Check1]); });

    dorvak_.Press(ID_Command33);
    dorvak_.WaitForStatus("Schazi:   listu 3 + sestava  - catie 2");
    EXPECT_EQ(Text(dorvak_[ID_Text7]), "2");
    dorvak_.Press(ID_Command32);
    WaitForColumn(0, {"1", "2", "9", "Nový", "Nový"});
    ExpectTicked({true, true, false, true, true});

    dorvak_.Press(ID_Command22);
    dorvak_.WaitForStatus("Pojmenovano: 4");
    WaitForColumn(1, {"1.Sestava", "2.Hřídel", "", "3.Příruba", "4.Víko"});
    dorvak_.Press(ID_Command23);
    dorvak_.WaitForStatus("Prejmenovano: 4");
    WaitForSheets({"1.Sestava", "2.Hřídel", "9", "3.Příruba", "4.Víko"});
    WaitForColumn(0, {"1", "2", "9", "Nový", "Nový"}); // until it is loaded again

    LoadSheets(5);
    WaitForColumn(0, {"1.Sestava", "2.Hřídel", "9", "3.Příruba", "4.Víko"});
    Drag(List(), RowPoint(List(), 2), RowPoint(List(), 4));
    const Rows plan{"1.Sestava", "2.Hřídel", "3.Příruba", "4.Víko", "9"};
    WaitForColumn(0, plan);
    Click(List(), RowCheckPoint(List(), 4));
    WaitUntil("a tick to be set again", [&] { return !RowChecked(List(), 4); });

    dorvak_.Press(ID_Command34);
    WaitForSheets(plan);
    WaitUntil("the list loaded again", [&] { return RowChecked(List(), 4); });
    WaitForColumn(0, plan);
    WaitForColumn(1, Rows(5));
    dorvak_.WaitForStatus("Sheets nacteny: 5");
}

TEST_F(Sheets, EachActionTakesExactlyTheCallsItNeeds) {
    const std::map<std::string, int> opening{{"Application.ActiveDocument", 1},
                                             {"DrawingDocument.Name", 1},
                                             {"DrawingDocument.Selection", 1},
                                             {"DrawingDocument.Sheets", 1},
                                             {"DrawingSheets.ActiveSheet", 1}};
    catia_.Do("log clear");
    dorvak_.Press(ID_Command35); // ten test rows, so that the status text to wait for comes anew
    LoadSheets(3);
    auto loading = opening;
    loading.insert({{"DrawingSheets.Count", 1},
                    {"DrawingSheets.Item", 3},
                    {"DrawingSheet.Name", 3},
                    {"DrawingSheet.IsDetail", 3}});
    EXPECT_EQ(CallCounts(catia_.Log()), loading);

    SetText(ID_Text6, "11");
    dorvak_.Press(ID_Command20);
    dorvak_.WaitForStatus("Ocislovano: 13");
    catia_.Do("log clear");
    dorvak_.Press(ID_Command23);
    dorvak_.WaitForStatus("Prejmenovano: 3");
    auto naming = opening;
    naming.insert({{"DrawingSheets.Item", 3}, {"DrawingSheet.Name", 3}});
    EXPECT_EQ(CallCounts(catia_.Log()), naming);
    WaitForSheets({"11", "12", "13"});
}

TEST_F(Sheets, EnterInTheFieldGivesTheRowItsNewName) {
    SelectRow(1);
    SetText(ID_Text5, " 7.Čep ");
    PressKey(VK_RETURN);
    WaitForColumn(1, {"", "7.Čep", ""});
    SelectRow(0);
    WaitForText("the field", "", [&] { return Text(dorvak_[ID_Text5]); });
    SelectRow(1);
    WaitForText("the field", "7.Čep", [&] { return Text(dorvak_[ID_Text5]); });
}

TEST_F(Sheets, TheButtonBesideTheFieldDoesTheSame) {
    SelectRow(2);
    SetText(ID_Text5, "8.Klín");
    dorvak_.Press(ID_Command28);
    WaitForColumn(1, {"", "", "8.Klín"});
}

TEST_F(Sheets, EnterWithoutARowIsAnOrdinaryError) {
    SetText(ID_Text5, "8.Klín");
    PressKey(VK_RETURN);
    const HWND box = dorvak_.Process().WaitForWindow(kDialogClass);
    PressKey(VK_RETURN);
    WaitUntil("the box gone", [&] { return IsWindow(box) == FALSE; });
    WaitForColumn(1, {"", "", ""});
    EXPECT_TRUE(dorvak_.Process().Running());
}

TEST_F(Sheets, NamesAreNotEditedInPlace) {
    SelectRow(1);
    PressKey(VK_F2);
    Click(List(), RowPoint(List(), 1)); // a second click would begin to edit it
    Sleep(1000);
    EXPECT_EQ(Send(List(), LVM_GETEDITCONTROL), 0);
    PressKey('5');
    PressKey(VK_RETURN);
    WaitForColumn(0, {"1", "2", "9"});
}

TEST_F(Sheets, TheMenuAddsAPlannedSheetAndRemovesARow) {
    SelectRow(0);
    PressKey(VK_F10, {VK_SHIFT});
    WaitForPopupMenu();
    PressKey(VK_DOWN);
    PressKey(VK_RETURN);
    WaitForColumn(0, {"1", "2", "9", "Nový"});
    EXPECT_TRUE(RowChecked(List(), 3));
    Click(List(), RowPoint(List(), 1), MouseButton::kRight);
    ClickEntry(WaitForPopupMenu(), 1, 0);
    WaitForColumn(0, {"1", "9", "Nový"});
    WaitForSheets({"1", "2", "9"}); // nothing changes in CATIA
}

TEST_F(Sheets, TickingOneOfSeveralSelectedRowsTicksThemAll) {
    SelectRow(0);
    PressKey(VK_DOWN, {VK_SHIFT});
    WaitUntil("two rows selected", [&] { return RowSelected(List(), 1); });
    PressKey(VK_SPACE);
    WaitUntil("no tick", [&] { return !RowChecked(List(), 0); });
    ExpectTicked({false, false, true});
    Click(List(), RowCheckPoint(List(), 1));
    WaitUntil("the ticks", [&] { return RowChecked(List(), 0); });
    ExpectTicked({true, true, true});
}

TEST_F(Sheets, TheRangeIsAskedForInABox) {
    const HWND box = PressForBox(ID_Command24);
    EXPECT_EQ(Text(box), Text(dorvak_.Window()));
    EXPECT_EQ(Text(Control(box, ID_InputBox_Prompt)), "Rozsah listu");
    EXPECT_EQ(Text(Control(box, ID_InputBox_Text)), "1-3");
    EXPECT_EQ(Text(Control(box, IDCANCEL)), "Storno");
    EXPECT_FALSE(IsWindowEnabled(dorvak_.Window()));
    TypeText("5-6"); // in the place of the proposal
    PressKey(VK_RETURN);
    WaitForSheets({"5", "6", "9"});
    EXPECT_TRUE(IsWindowEnabled(dorvak_.Window()));
    EXPECT_TRUE(Topmost(dorvak_.Window()));
}

TEST_F(Sheets, ARangeWithoutAHyphenIsRefusedAndEscapeChangesNothing) {
    static_cast<void>(PressForBox(ID_Command24));
    TypeText("7");
    PressKey(VK_RETURN);
    dorvak_.WaitForStatus("Spatny pocet listu");
    const HWND box = PressForBox(ID_Command24);
    PressKey(VK_ESCAPE);
    WaitUntil("the box gone", [&] { return IsWindow(box) == FALSE; });
    WaitForSheets({"1", "2", "9"});
}

TEST_F(Sheets, SheetNazvyAsksWhetherTheFirstIsTheAssembly) {
    const HWND cancelled = PressForBox(ID_Command25);
    EXPECT_EQ(Text(cancelled), Text(dorvak_.Window()));
    PressKey(VK_ESCAPE);
    WaitUntil("the box gone", [&] { return IsWindow(cancelled) == FALSE; });
    WaitForSheets({"1", "2", "9"});

    Click(GetDlgItem(PressForBox(ID_Command25), IDNO));
    WaitForSheets({"1.Hřídel", "2.Příruba", "3.Víko"});

    Click(GetDlgItem(PressForBox(ID_Command25), IDYES));
    WaitForSheets({"1.Sestava", "2.Hřídel", "3.Příruba"});
}

TEST_F(Sheets, TheDiagnosticsReachCatia) {
    dorvak_.Press(ID_Command29); // two sheets only, where CATIA wants all of the drawing's three
    dorvak_.WaitForStatus("-2147467259 The method reorder_Sheets failed");
    WaitForSheets({"1", "2", "9"});
    dorvak_.Press(ID_Command31);
    WaitUntil("a fourth sheet", [&] { return SheetNames(catia_.Drawing()).size() == 4; });
    const double seconds = std::stod(SheetNames(catia_.Drawing())[3]);
    SYSTEMTIME now;
    GetLocalTime(&now);
    const double expected = (now.wHour * 60 + now.wMinute) * 60 + now.wSecond;
    EXPECT_NEAR(seconds, expected, 30);
    const std::vector<std::string> log = catia_.Log();
    EXPECT_TRUE(std::ranges::any_of(log, [](const std::string& call) {
        return call.starts_with("DrawingSheets.Add(") && call.ends_with("!)");
    })) << "the seconds are a number of single precision";
    dorvak_.Press(ID_Command35);
    WaitUntil("the test rows", [&] { return RowCount(List()) == 10; });
    EXPECT_EQ(Cell(List(), 9, 0), "test 10");
    EXPECT_FALSE(RowChecked(List(), 9));
}

TEST_F(Sheets, AFailureOfCatiaIsShownOnTheStatusLine) {
    dorvak_.Press(ID_Command35); // rows that name no sheets
    WaitUntil("the test rows", [&] { return RowCount(List()) == 10; });
    dorvak_.Press(ID_Command34);
    dorvak_.WaitForStatus("-2147467259 The method Item failed");
    WaitForSheets({"1", "2", "9"});
}

TEST_F(DetailSheets, TheyAreNeitherTickedNorDraggedAndMoveToTheEnd) {
    EXPECT_TRUE(RowChecked(List(), 37));
    EXPECT_FALSE(RowChecked(List(), 38));
    GoToTheEnd();
    Click(List(), RowCheckPoint(List(), 39));
    Sleep(300); // what should not happen would have happened
    EXPECT_FALSE(RowChecked(List(), 39));

    const Rows before = Column(List(), 0);
    Drag(List(), RowPoint(List(), 39), RowPoint(List(), 36));
    Drag(List(), RowPoint(List(), 36), RowPoint(List(), 38));
    Sleep(300);
    EXPECT_EQ(Joined(Column(List(), 0)), Joined(before));

    Drag(List(), RowPoint(List(), 36), RowPoint(List(), 35));
    Rows after = before;
    std::swap(after[35], after[36]);
    WaitForColumn(0, after);
}

TEST_F(DetailSheets, TheTipShowsTheDetailMarkAndTheWindowStaysOnTop) {
    GoToTheEnd();
    Click(List(), RowPoint(List(), 38));
    MoveMouse(List(), {40, 40});
    MoveMouse(List(), {44, 44});
    const HWND tip = dorvak_.Process().WaitForWindow(TOOLTIPS_CLASSA);
    EXPECT_EQ(Text(tip), "A0001");
    EXPECT_TRUE(Topmost(tip));
    EXPECT_TRUE(StandsBefore(tip, dorvak_.Window()));
    EXPECT_TRUE(Topmost(dorvak_.Window()));
    Click(dorvak_[ID_Check2]);
    WaitUntil("the window not on top", [&] { return !Topmost(dorvak_.Window()); });
    Click(dorvak_[ID_Check2]);
    WaitUntil("the window on top", [&] { return Topmost(dorvak_.Window()); });

    // A row without a mark has no tip.
    SelectRow(36);
    MoveMouse(List(), {40, 40});
    MoveMouse(List(), {44, 44});
    Sleep(1500);
    EXPECT_EQ(dorvak_.Process().FindVisible(TOOLTIPS_CLASSA), nullptr);
}

TEST_F(ManySheets, AreLoadedRenamedAndReordered) {
    dorvak_.OpenPage(kSheetPage);
    constexpr int kOpening = 5; // the document, its name, selection, sheets, active sheet
    constexpr int kLoading = kOpening + 1 + 3 * 600; // the count; each sheet, its name and kind
    Measure("loaded", ID_Command21, "Sheets nacteny: 600", kLoading);
    SetText(ID_Text6, "1001");
    dorvak_.Press(ID_Command20);
    dorvak_.WaitForStatus("Ocislovano: 1600");
    Measure("renamed", ID_Command23, "Prejmenovano: 600", kOpening + 2 * 600);
    LoadSheets(600);
    Drag(List(), RowPoint(List(), 5), RowPoint(List(), 1));
    WaitUntil("the row moved", [&] { return Cell(List(), 1, 0) == "1006"; });
    const Rows plan = Column(List(), 0);
    dorvak_.Press(ID_Command33); // another status text meanwhile
    dorvak_.WaitForStatus("Schazi:   listu 3 - catie 600");
    // The document, its name, sheets and root, each sheet, the new order.
    Measure("reordered and loaded again", ID_Command34, "Sheets nacteny: 600",
            4 + 600 + 1 + kLoading);
    WaitForSheets(plan);
}
