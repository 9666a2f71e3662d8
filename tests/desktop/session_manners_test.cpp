// A session that answers over COM as one CATIA does and another does not, or that is none.
#include <algorithm>
#include <array>
#include <fstream>
#include <memory>

#include "fixture.hpp"
#include "tests/support/drawing_text.hpp"

using namespace driver;

namespace {

using Rows = std::vector<std::string>;

constexpr const char* kTableIsMade = "Tabulka vytvorena Ok ";
constexpr const char* kTable = R"(select "Kusovník" "Main View" 1)";
constexpr int kListColumns = 7;

// All tests have the same two programs.
class SessionManners : public DesktopTest {
  public:
    static void TearDownTestSuite() {
        dorvak_.reset();
        catia_.reset();
    }

  protected:
    SessionManners() {
        if (catia_ == nullptr) {
            catia_ = std::make_unique<CatiaSession>(Rows{TablesPath()});
            dorvak_ = std::make_unique<DorvakWindow>();
        }
        AsItIs();
        Do(kTable);
        Press(kImportPage, ID_Command9, "Nacteni tabulky Ok");
    }

    static std::string TablesPath() { return SamplePath("tables\\tables.txt"); }
    static void Do(const std::string& command) { catia_->Do(command); }
    static HWND Control(int id) { return (*dorvak_)[id]; }

    // The session as it is by itself, with the tables' drawing.
    static void AsItIs() {
        for (const char* command :
             {"disarm", "detail boolean", "convert call", "lengths plain", "zero refused",
              "sheets last", "empty taken", "breaks lf", "changes taken",
              "with Application.ActiveDocument", "with DrawingTables.Add"}) {
            Do(command);
        }
        Do("open " + TablesPath());
        Do("log clear");
    }

    // The status may be the same as before: it is the new one once CATIA has been called.
    static void Press(int page, int button, const std::string& status) {
        dorvak_->OpenPage(page);
        const std::size_t calls = catia_->Log().size();
        dorvak_->Press(button);
        WaitUntil("a call", [&] { return catia_->Log().size() > calls; });
        dorvak_->WaitForStatus(status, kLong);
    }
    static void MakeCurrent(int row) {
        dorvak_->OpenPage(kEditPage);
        SelectRow(Control(ID_ListView1), row);
    }
    static void Configure(const std::string& more) {
        dorvak_->OpenPage(kExportPage);
        PasteText(Control(ID_Text2), Text(Control(ID_Text4)) + more);
    }

    static std::unique_ptr<CatiaSession> catia_;
    static std::unique_ptr<DorvakWindow> dorvak_;
};
std::unique_ptr<CatiaSession> SessionManners::catia_;
std::unique_ptr<DorvakWindow> SessionManners::dorvak_;

// Where `part` stands in a text of the session; fails where it does not.
std::size_t PlaceOf(const std::string& whole, const std::string& part) {
    const std::size_t place = whole.find(part);
    EXPECT_NE(place, std::string::npos) << part << " in\n" << whole;
    return place;
}

} // namespace

TEST_F(SessionManners, TextsConvertedInTheUsersLanguageGiveTheSameDrawingAndList) {
    // Creation, both exports into tables, the row of its own, and reading; then what there is.
    const auto work = [] {
        Do("open " + TablesPath());
        Do(kTable);
        Press(kImportPage, ID_Command9, "Nacteni tabulky Ok");
        MakeCurrent(1);
        Press(kExportPage, ID_Command11, kTableIsMade);
        Press(kExportPage, ID_Command7, kTableIsMade);
        Do(R"(select "Kusovník" "Main View" 2)");
        Press(kExportPage, ID_Command30, "Vlozeni dat Ok");
        Do(R"(select "Příruba" "Popis" 1)");
        Press(kExportPage, ID_Command16, "Vlozeni dat Ok");
        Do(R"(select "Kusovník" "Main View" 2)");
        Press(kImportPage, ID_Command9, "Nacteni tabulky Ok");
        Rows left{catia_->Drawing(), Text(Control(ID_Text3))};
        const HWND list = Control(ID_ListView1);
        for (int row = 0; row < RowCount(list); ++row) {
            left.push_back(Joined(Row(list, row, kListColumns)));
        }
        return left;
    };
    const Rows left = work();
    EXPECT_EQ(left.size(), 2U + 3U);
    Do("convert user");
    Do("log clear");
    EXPECT_EQ(work(), left);
    const Rows log = catia_->Log();
    const auto added =
        std::ranges::find(log, R"(DrawingTables.Add(100.0, 100.0, 9, 7, "6.8", 20))");
    ASSERT_NE(added, log.end());
    EXPECT_EQ(added[1], "DrawingTables.Add(100.0, 100.0, 9, 7, 6.8, 20)");
    EXPECT_EQ(CallCounts(log)["DrawingTable.SetColumnSize"], 2 * 2 * kListColumns);

    Configure("/vyska1;abc\r\n");
    Do("log clear");
    Press(kExportPage, ID_Command11, "Catie upravuje velikost 1 radku");
    Sleep(300);
    EXPECT_EQ(CallCounts(catia_->Log())["DrawingTable.SetRowSize"], 1);
    dorvak_->Press(ID_Command19);
}

TEST_F(SessionManners, LengthsThroughInchesReadAsTheyWereSet) {
    Press(kExportPage, ID_Command11, kTableIsMade);
    Do(R"(select "Kusovník" "Main View" 2)");
    Do("lengths inches");
    Press(kImportPage, ID_Command10, "Nacteni parametru Ok");
    PlaceOf(Text(Control(ID_Text3)), "/sirka;13.88;43.67;15.76;37.51;34.61;31.53;14.68\r\n");
}

TEST_F(SessionManners, ASizeOfZeroIsAutomatic) {
    Do("zero automatic");
    Configure("/sirka;0;40;40;40;40;40;40\r\n");
    Press(kExportPage, ID_Command11, kTableIsMade);
    dorvak_->Press(ID_Command19);
    const std::string drawing = catia_->Drawing();
    const std::string columns = drawing.substr(PlaceOf(drawing, " 40 40 40 40 40 40\n") - 10, 10);
    EXPECT_EQ(columns.find(" 0"), std::string::npos) << columns;
    KeepPicture("automatic-width.png");
}

TEST_F(SessionManners, ANewSheetStandsBeforeTheDetails) {
    Do("open " + SamplePath(kDrawing));
    const auto sheets = [] { return testing_support::SheetNames(catia_->Drawing()); };
    const Rows before = sheets();
    Do("sheets before");
    dorvak_->OpenPage(kSheetPage);
    dorvak_->Press(ID_Command31);
    WaitUntil("the new sheet", [&] { return sheets().size() == before.size() + 1; });
    EXPECT_EQ(sheets().back(), before.back());
}

TEST_F(SessionManners, AnEmptyTextThatIsRefusedEndsTheTexts) {
    Do("empty refused");
    MakeCurrent(2); // it has no size
    Do("log clear");
    Press(kExportPage, ID_Command6, "Cekam na Catii");
    WaitUntil("the empty text", [] { return CallCounts(catia_->Log())["DrawingTexts.Add"] == 4; });
    Sleep(300);
    EXPECT_EQ(catia_->Log().back(), R"(DrawingTexts.Add("", 100.0, 100.0))");
}

TEST_F(SessionManners, LineBreaksAsPairsAreLineFeedsInTheListAndTheParameters) {
    const std::string path = TemporaryPath("line-breaks.txt");
    std::ofstream(path) << "DrawingDocument Zlomy.CATDrawing\nsheet S\n  view V\n"
                           "    table selected columns 10 10 10 10 10 10 10\n"
                           "      row 5 cells Pozice \"na\\nzev\" K R M P List\n"
                           "      row 7 cells 1 \"dva\\nřádky\" 1 R M P \"\"\n";
    Do("open " + path);
    Do("breaks crlf");
    Press(kImportPage, ID_Command9, "Nacteni tabulky Ok");
    EXPECT_EQ(Cell(Control(ID_ListView1), 0, 0), "dva\nřádky");
    PlaceOf(Text(Control(ID_Text3)), "/hlavicka;Pozice;na\nzev;K;R;M;P;List\r\n");
}

TEST_F(SessionManners, OfSeveralSelectedElementsTheFirstCounts) {
    Do(std::string(kTable) + " last");
    Press(kExportPage, ID_Command30, "Spatny vyber");
    Do(std::string(kTable) + " first");
    Press(kExportPage, ID_Command30, "Vlozeni dat Ok");
    Do(kTable);
}

TEST_F(SessionManners, TheBackgroundViewTakesTextsWhereItIsActive) {
    Do(R"(view "Kusovník" "Background View")");
    dorvak_->OpenPage(kExportPage);
    dorvak_->Press(ID_Command8);
    WaitUntil("the text",
              [] { return catia_->Drawing().find(R"(text "ahoj")") != std::string::npos; });
    const std::string drawing = catia_->Drawing();
    EXPECT_GT(PlaceOf(drawing, R"(text "ahoj")"), PlaceOf(drawing, R"(view "Background View")"));
}

TEST_F(SessionManners, NamesThatNoCodePageHasAreWalkedAndLoaded) {
    const std::string names = " Ж漢😀";
    Do("open " + SamplePath(kDrawing));
    Do("names" + names);
    Press(kSheetPage, ID_Command21, "Sheets nacteny: 3");
    for (const std::string& name : Column(Control(ID_ListView3), 0)) {
        EXPECT_TRUE(name.ends_with(names.substr(1))) << name;
    }
    Do("open " + SamplePath(kProduct));
    Do("names" + names);
    Press(kStructurePage, ID_Command3, kWalked);
    const auto items = TreeItems(Control(ID_TreeView1));
    ASSERT_EQ(items.size(), 59U);
    EXPECT_TRUE(items.back().text.ends_with(names.substr(1))) << items.back().text;
    KeepPicture("names.png");
}

TEST_F(SessionManners, ADetailSheetThatAnswersABooleanLoadsTicked) {
    Do("open " + SamplePath(kDrawing));
    for (const bool boolean : {true, false}) {
        Do(boolean ? "detail boolean" : "detail number");
        Press(kSheetPage, ID_Command21, "Sheets nacteny: 3");
        WaitUntil("the last sheet",
                  [&] { return RowChecked(Control(ID_ListView3), 2) == boolean; });
    }
}

TEST_F(SessionManners, WhatGoesInTheMiddleOrIsNoCatiaEndsATableAndTheNextOneIsMade) {
    struct Case {
        const char* command;
        const char* status;
    };
    constexpr auto kCases = std::to_array<Case>({
        {"without Application.ActiveDocument", "Cekam na Catii"}, // any other program
        {"without DrawingTables.Add", "Catie vytvari tabulku"},
        {"changes refused", "Catie vytvari tabulku"},
        {"fail 12 close", "Catie upravuje sirku slopcu"},
        {"fail 18 delete", "Catie upravuje font"},
    });
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.command);
        Do(each.command);
        Press(kExportPage, ID_Command11, each.status);
        Sleep(300);
        EXPECT_EQ(dorvak_->Status(), each.status);
        AsItIs();
        Press(kExportPage, ID_Command11, kTableIsMade);
    }
}

TEST_F(SessionManners, AClipboardThatAnotherProgramHoldsForAMomentIsWaitedFor) {
    MakeCurrent(0);
    const std::string expected = "Hřídel\t1\t2\t2\t12 050\tØ30-210\tkalit @@ popouštět\r\n";
    constexpr int kTries = 5; // a busy machine may hold it too long
    bool copied = false;
    for (int tries = 0; tries < kTries && !copied; ++tries) {
        PutTextOnClipboard("before");
        WaitUntil("the clipboard", [] { return OpenClipboard(nullptr) != 0; });
        PressKey('C', {VK_CONTROL});
        Sleep(50);
        CloseClipboard();
        Sleep(300);
        copied = ClipboardText() == expected;
    }
    EXPECT_TRUE(copied) << ClipboardText().value_or("nothing");
}
