// Tables of a drawing read back into the parts list, and the smaller exports, over COM.
#include <array>
#include <fstream>
#include <iostream>

#include "com/utf.hpp"
#include "fixture.hpp"

using namespace driver;

namespace {

using Rows = std::vector<std::string>;

constexpr int kColumns = 7;

// The fields of a row of the parts list in the order of the table's columns.
struct Part {
    std::string position, name, pieces, size, material, note, sheet;

    [[nodiscard]] Rows Cells() const {
        return {position, name, pieces, size, material, note, sheet};
    }
    // In the order of the list's columns.
    [[nodiscard]] Rows ListRow() const {
        return {name, position, pieces, sheet, material, size, note};
    }
};

// Czech texts, empty fields, and what separates fields in the program's own texts.
std::vector<Part> MakeParts(int count) {
    const auto kinds = std::to_array<Part>({
        {"", "Hřídel předlohová", "2", "Ø30-210", "12 050", "kalit; popouštět", "2"},
        {"", "Šroub M8x25", "16", "", "", "", ""},
        {"", "Příruba @@ víko", "1", "D80x20", "11 373", "žíhat @@ na měkko", "3"},
        {"", "Těsnění;olejové", "", "20x40x7", "pryž", "", ""},
        {"", "Úhelník \"L\"", "4", "50x50x5", "", "ďobat", "4"},
    });
    std::vector<Part> parts;
    for (int i = 1; i <= count; ++i) {
        Part part = kinds[static_cast<std::size_t>(i - 1) % kinds.size()];
        part.position = std::to_string(i);
        part.name += " " + std::to_string(i);
        parts.push_back(std::move(part));
    }
    return parts;
}

std::string CellsLine(const Rows& cells) {
    return "cells " + QuotedCells(cells);
}

constexpr const char* kHeader =
    R"(cells "Pozice" "nazev" "Kusu" "Ciste rozmery" "Material" "Poznamka" "List")";

// A drawing with a table of the parts, the first one at the bottom. Gives its path.
std::string WriteDrawing(const std::vector<Part>& parts) {
    std::string path = TemporaryPath("parts-table.txt");
    std::ofstream file(path);
    file << "DrawingDocument Tabulka.CATDrawing\nsheet \"List\"\n  view \"Main View\"\n"
            "    table at 0 0 columns 14 44 16 38 35 32 15\n      row 5 "
         << kHeader << '\n';
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        file << "      row 7 " << CellsLine(part->Cells()) << '\n';
    }
    return path;
}

void ReadTable(const DorvakWindow& dorvak) {
    dorvak.OpenPage(kImportPage);
    dorvak.Press(ID_Command9);
    dorvak.WaitForStatus("Nacteni tabulky Ok", kLong);
}

void ExpectList(const DorvakWindow& dorvak, const std::vector<Part>& parts) {
    const HWND list = dorvak[ID_ListView1];
    ASSERT_EQ(RowCount(list), static_cast<int>(parts.size()));
    for (int row = 0; row < RowCount(list); ++row) {
        const Part& part = parts[static_cast<std::size_t>(row)];
        EXPECT_EQ(Row(list, row, kColumns), part.ListRow());
        EXPECT_EQ(RowChecked(list, row), !part.sheet.empty()) << part.name;
    }
    EXPECT_EQ(dorvak.Positions(), "Pozic: " + std::to_string(parts.size()));
}

// From a table into the list, from the list into a new table, and from that into the list again.
void RoundTrip(int count) {
    const std::vector<Part> parts = MakeParts(count);
    const CatiaSession catia({WriteDrawing(parts)});
    const DorvakWindow dorvak;
    catia.Do(R"(select "List" "Main View" 1)");
    ReadTable(dorvak);
    ExpectList(dorvak, parts);

    dorvak.OpenPage(kExportPage);
    catia.Do("log clear");
    const Clock::time_point write = Clock::now();
    dorvak.Press(ID_Command11);
    dorvak.WaitForStatus("Tabulka vytvorena Ok ", kLong);
    const long long written = MillisecondsSince(write);
    const int write_calls = CallsMade(catia.Log());

    catia.Do(R"(select "List" "Main View" 2)");
    catia.Do("log clear");
    const Clock::time_point read = Clock::now();
    ReadTable(dorvak);
    const long long reread = MillisecondsSince(read);
    const int read_calls = CallsMade(catia.Log());
    ExpectList(dorvak, parts);
    std::cout << count << " rows: written in " << written << " ms with " << write_calls
              << " calls, read in " << reread << " ms with " << read_calls << " calls\n";
}

class TablesBack : public DesktopTest {};

// The parts list that the sample's hand-made table holds.
const std::vector<Part> kSampleParts{
    {"1", "Hřídel", "2", "Ø30-210", "12 050", "kalit @@ popouštět", "2"},
    {"2", "Příruba", "1", "D80x20", "11 373", "", "3"},
    {"3", "Šroub M8x25", "4", "", "8.8", "DIN 933; pozinkovaný", ""},
};

class Tables : public DesktopTest {
  protected:
    Tables() { catia_.Do(R"(select "Kusovník" "Main View" 1)"); }

    // The parts list from the sample's table, with the given row current.
    void FillFromTable(int row) const {
        ReadTable(dorvak_);
        dorvak_.OpenPage(kEditPage);
        const HWND list = dorvak_[ID_ListView1];
        SelectRow(list, row);
    }

    void PressExport(int button, const std::string& last_status) const {
        dorvak_.OpenPage(kExportPage);
        dorvak_.Press(button);
        dorvak_.WaitForStatus(last_status);
    }

    [[nodiscard]] bool DrawingHas(const std::string& line) const {
        return catia_.Drawing().find(line) != std::string::npos;
    }

    CatiaSession catia_{{SamplePath("tables\\tables.txt"), SamplePath("tables\\dimension.txt"),
                         "gearbox-assembly.txt"}};
    DorvakWindow dorvak_;
};

class LongTablesBack : public TablesBack {};

} // namespace

TEST_F(TablesBack, RoundTripOfOneRow) {
    RoundTrip(1);
}

TEST_F(TablesBack, RoundTripOfTwentyFiveRows) {
    RoundTrip(25);
}

TEST_F(LongTablesBack, RoundTripOfFiveHundredRows) {
    RoundTrip(500);
}

TEST_F(TablesBack, ARenameOfARowThatGoesMeanwhileChangesNoOther) {
    const std::vector<Part> parts = MakeParts(250);
    const CatiaSession catia({WriteDrawing(parts)});
    const DorvakWindow dorvak;
    const auto reading = [&] { return dorvak.Status().starts_with("Nacteni radky:"); };
    catia.Do(R"(select "List" "Main View" 1)");
    dorvak.OpenPage(kImportPage);
    dorvak.Press(ID_Command9);
    WaitUntil("the reading under way", reading);
    // A row of the person's own in the list, which is empty until all is read.
    dorvak.OpenPage(kEditPage);
    const HWND list = dorvak[ID_ListView1];
    Click(list, {40, 100}, MouseButton::kRight);
    WaitForPopupMenu();
    for (int entry = 0; entry < 4; ++entry) {
        PressKey(VK_DOWN); // to "Přidat"
    }
    PressKey(VK_RETURN);
    WaitUntil("the new row", [&] { return RowCount(list) == 1 || !reading(); });
    SelectRow(list, 0);
    PressKey(VK_F2);
    WaitUntil("the edit field", [&] { return Send(list, LVM_GETEDITCONTROL) != 0; });
    TypeText("Jiný");
    if (!reading()) {
        GTEST_SKIP() << "The table was read before the row could be renamed.";
    }
    dorvak.WaitForStatus("Nacteni tabulky Ok", kLong);
    PressKey(VK_RETURN);
    Sleep(300);
    ExpectList(dorvak, parts);
}

TEST_F(TablesBack, ReadingTakesExactlyTheCallsItNeeds) {
    constexpr int kRows = 25;
    const CatiaSession catia({WriteDrawing(MakeParts(kRows))});
    const DorvakWindow dorvak;
    catia.Do(R"(select "List" "Main View" 1)");
    catia.Do("log clear");
    ReadTable(dorvak);
    // Each cell of a part; of the header the position and the sheet, and its first cell before.
    constexpr int kCells = kColumns * kRows + 2 + 1;
    const std::map<std::string, int> expected{{"Application.ActiveDocument", 1},
                                              {"DrawingDocument.Name", 1},
                                              {"DrawingDocument.Selection", 1},
                                              {"DrawingDocument.Sheets", 1},
                                              {"DrawingSheets.ActiveSheet", 1},
                                              {"DrawingSheet.Views", 1},
                                              {"DrawingViews.ActiveView", 1},
                                              {"Selection.Count2", 1},
                                              {"Selection.VisProperties", 1},
                                              {"VisPropertySet.GetRealWidth", 1},
                                              {"Selection.Item2", 1},
                                              {"SelectedElement.Type", 1},
                                              {"SelectedElement.Value", 1},
                                              {"DrawingTable.GetCellObject", kCells},
                                              {"DrawingText.Text", kCells},
                                              {"DrawingText.GetFontName", 1},
                                              {"DrawingText.GetFontSize", 1},
                                              {"DrawingTable.NumberOfColumns", 1},
                                              {"DrawingTable.NumberOfRows", 1},
                                              {"DrawingTable.GetColumnSize", kColumns},
                                              {"DrawingTable.GetRowSize", 2},
                                              {"DrawingTable.GetCellString", kColumns},
                                              {"DrawingTable.X", 1},
                                              {"DrawingTable.Y", 1},
                                              {"DrawingTable.AnchorPoint", 1}};
    EXPECT_EQ(CallCounts(catia.Log()), expected);
}

TEST_F(Tables, ParametryShowsTheSelectedTablesLayout) {
    const std::string expected = "/tlouska_cary =3\r\n"
                                 "/fontname;Arial\r\n"
                                 "/fontsize;2.5\r\n"
                                 "/text;Pozice\r\n"
                                 "/sloupcu;7\r\n"
                                 "/radek;5\r\n"
                                 "/sirka;14;44;16;38;35;32;15\r\n"
                                 "/vyska1;5\r\n"
                                 "/vyska2;7\r\n"
                                 "/hlavicka;Pozice;nazev;Kusu;Ciste rozmery;Material;Poznamka;List"
                                 "\r\n"
                                 "/pozice;30;150\r\n"
                                 "/AnchorPoint;0\r\n";
    dorvak_.OpenPage(kImportPage);
    for (int press = 0; press < 2; ++press) { // the second one gives the same text
        dorvak_.Press(ID_Command10);
        dorvak_.WaitForStatus("Nacteni parametru Ok");
        WaitForText("the parameters", expected, [&] { return Text(dorvak_[ID_Text3]); });
    }
}

TEST_F(Tables, ParametryOfADimensionShowsTheLineWidthAlone) {
    catia_.Do("activate Rozmer.CATDrawing");
    dorvak_.OpenPage(kImportPage);
    dorvak_.Press(ID_Command10);
    dorvak_.WaitForStatus("Nacteni parametru Ok");
    WaitForText("the parameters", "/tlouska_cary =1\r\n", [&] { return Text(dorvak_[ID_Text3]); });
}

TEST_F(Tables, AHandMadeTableFillsTheList) {
    ReadTable(dorvak_);
    ExpectList(dorvak_, kSampleParts);
}

TEST_F(Tables, ATableOfTwelveColumnsEmptiesTheList) {
    FillFromTable(0);
    catia_.Do(R"(select "Díry" "Main View" 1)");
    dorvak_.OpenPage(kImportPage);
    dorvak_.Press(ID_Command9);
    WaitUntil("an empty list", [&] { return RowCount(dorvak_[ID_ListView1]) == 0; });
    EXPECT_NE(Text(dorvak_[ID_Text3]).find("/sloupcu;12\r\n"), std::string::npos);
}

TEST_F(Tables, WithoutASelectedTableTheListStays) {
    FillFromTable(0);
    dorvak_.OpenPage(kImportPage);
    const std::string parameters = Text(dorvak_[ID_Text3]);
    const auto expect_refusal = [&](const std::string& message) {
        dorvak_.Press(ID_Command9);
        dorvak_.WaitForStatus(message);
        ExpectList(dorvak_, kSampleParts);
    };
    catia_.Do("activate Gearbox.CATProduct");
    expect_refusal("Neni aktivni CATDrawing");
    catia_.Do("open " + SamplePath("sheets\\three-sheets.txt"));
    expect_refusal("Nejsou vybrany zadny objekty");
    EXPECT_EQ(Text(dorvak_[ID_Text3]), parameters);
    catia_.Do("activate Rozmer.CATDrawing");
    expect_refusal("Spatny vyber");
    EXPECT_EQ(Text(dorvak_[ID_Text3]), "/tlouska_cary =1\r\n");
}

TEST_F(Tables, TheCurrentRowGoesIntoASmallTable) {
    FillFromTable(1);
    catia_.Do(R"(select "Příruba" "Popis" 1)");
    PressExport(ID_Command16, "Vlozeni dat Ok");
    // The size's "D" gives way to the character that the code page has at 248.
    const Rows cells{"2", "Příruba", "1", com::FromSystemCodePage("\xF8") + "80x20", "11 373", ""};
    EXPECT_TRUE(DrawingHas(CellsLine(cells))) << catia_.Drawing();
}

TEST_F(Tables, ASmallTableOfAnotherSizeIsRefused) {
    FillFromTable(1);
    PressExport(ID_Command16, "spatna velikost tabulky");
    catia_.Do("activate Rozmer.CATDrawing");
    PressExport(ID_Command16, "Spatny vyber");
}

TEST_F(Tables, TheWholeListGoesIntoATableWithTheRestEmptied) {
    FillFromTable(0);
    PressExport(ID_Command30, "Vlozeni dat Ok");
    const std::string drawing = catia_.Drawing();
    const std::size_t header = drawing.find(kHeader);
    const std::size_t free = drawing.find(CellsLine(Rows(kColumns, "")));
    const std::size_t third = drawing.find(CellsLine(kSampleParts[2].Cells()));
    auto second_cells = kSampleParts[1].Cells();
    second_cells[3] = com::FromSystemCodePage("\xF8") + "80x20";
    const std::size_t second = drawing.find(CellsLine(second_cells));
    const std::size_t first = drawing.find(CellsLine(kSampleParts[0].Cells()));
    EXPECT_TRUE(header < free && free < third && third < second && second < first &&
                first != std::string::npos)
        << drawing;
}

TEST_F(Tables, TheCurrentRowBecomesATableOfItsOwn) {
    FillFromTable(1);
    PressExport(ID_Command7, "Tabulka vytvorena Ok ");
    const Rows cells{"2", "Příruba", "1", "D80x20", "11 373", "", ""};
    EXPECT_TRUE(DrawingHas("columns 13.88 43.67 15.76 37.51 34.61 44.6 14.68"));
    EXPECT_TRUE(DrawingHas(CellsLine(cells))) << catia_.Drawing();
}

TEST_F(Tables, TheMenuOfTheListSendsTheRowAsTexts) {
    FillFromTable(0);
    const HWND list = dorvak_[ID_ListView1];
    catia_.Do("log clear");
    PressKey(VK_F10, {VK_SHIFT});
    WaitForPopupMenu();
    for (int step = 0; step < 3; ++step) { // the third entry, "Poslat jako text"
        PressKey(VK_DOWN);
    }
    PressKey(VK_RETURN);
    WaitUntil("six texts",
              [&] { return CallCounts(catia_.Log())["DrawingText.SetFontSize"] == 6; });
    for (const std::string text : {"1", "Hřídel", "2", "Ø30-210", "12 050", "kalit @@ popouštět"}) {
        EXPECT_TRUE(DrawingHas("text " + QuotedCells({text}) + " at 100 100")) << catia_.Drawing();
    }
    EXPECT_EQ(RowCount(list), 3);
}
