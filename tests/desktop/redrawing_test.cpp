// Tables that are made without redrawing, and what the simulated session has for it: a display that
// is computed or not, time that this takes, slow calls, and a dialog that rejects everything.
#include <fstream>
#include <iostream>
#include <stdexcept>

#include <ole2.h>

#include "com/client.hpp"
#include "fixture.hpp"

using namespace driver;

namespace {

constexpr const char* kTableMade = "Tabulka vytvorena Ok ";

bool Overlap(const RECT& left, const RECT& right) {
    RECT common;
    return IntersectRect(&common, &left, &right) != FALSE;
}

// Structure text of that many parts.
std::string PartsText(int count) {
    std::string text = "\r\n0\tTop";
    for (int part = 1; part <= count; ++part) {
        text += "\r\n1\tPart " + std::to_string(part) + "\tTop";
    }
    return text;
}

// COM on this thread.
struct Apartment {
    Apartment() { OleInitialize(nullptr); }
    ~Apartment() { OleUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

class Redrawing : public DesktopTest {
  protected:
    // Makes a table of the list, with the box as it is to be ticked, and gives the milliseconds
    // that it took.
    static long long MakeTable(const DorvakWindow& dorvak, bool ticked) {
        dorvak.OpenPage(kExportPage);
        if (Ticked(dorvak[ID_Check3]) != ticked) {
            dorvak.Press(ID_Check3);
            WaitUntil("the box", [&] { return Ticked(dorvak[ID_Check3]) == ticked; });
        }
        const Clock::time_point start = Clock::now();
        dorvak.Press(ID_Command11);
        dorvak.WaitForStatus(kTableMade, kLong);
        return MillisecondsSince(start);
    }
};

class SessionSwitches : public DesktopTest {};

} // namespace

TEST_F(Redrawing, TheBoxStandsInFreeRoomOfItsPage) {
    const DorvakWindow dorvak;
    dorvak.OpenPage(kExportPage);
    KeepPicture("export-page.png");
    const HWND box = dorvak[ID_Check3];
    EXPECT_TRUE(IsWindowVisible(box));
    EXPECT_FALSE(Ticked(box));
    const RECT place = Place(box);
    const RECT page = Place(GetParent(box));
    EXPECT_TRUE(place.left >= page.left && place.right <= page.right && place.top >= page.top &&
                place.bottom <= page.bottom);
    int others = 0;
    for (HWND other = GetWindow(box, GW_HWNDFIRST); other != nullptr;
         other = GetWindow(other, GW_HWNDNEXT)) {
        if (other != box && IsWindowVisible(other) != FALSE) {
            ++others;
            EXPECT_FALSE(Overlap(Place(other), place)) << Text(other);
        }
    }
    EXPECT_GE(others, 8);
}

TEST_F(Redrawing, TheBoxIsRememberedEvenByAProgramThatIsKilled) {
    {
        const DorvakWindow dorvak;
        dorvak.OpenPage(kExportPage);
        dorvak.Press(ID_Check3);
        WaitUntil("the stored tick", [] { return SettingKeeper::Read(kRedrawing) == "1"; });
    } // ended without closing its window
    {
        const DorvakWindow dorvak;
        dorvak.OpenPage(kExportPage);
        EXPECT_TRUE(Ticked(dorvak[ID_Check3]));
        dorvak.Press(ID_Check3);
        WaitUntil("the stored tick", [] { return SettingKeeper::Read(kRedrawing) == "0"; });
        dorvak.Close();
    }
    const DorvakWindow dorvak;
    EXPECT_FALSE(Ticked(dorvak[ID_Check3]));
}

TEST_F(Redrawing, ATableMadeWithoutItIsTheSameAndShown) {
    const DorvakWindow dorvak;
    FillList(dorvak, PartsText(12), 12);
    std::string drawn;
    {
        const CatiaSession catia({kDrawing});
        MakeTable(dorvak, false);
        drawn = catia.Drawing();
        EXPECT_EQ(catia.Display(), drawn);
        EXPECT_EQ(CallCounts(catia.Log()).count("DrawingTable.ComputeMode"), 0U);
    }
    const CatiaSession catia({kDrawing});
    // Before its last cell is written, the new table shows none.
    const int cells = 7 * (1 + 12);
    catia.Do("fail " + std::to_string(8 + 1 + 1 + 8 + 2 * 7 * 18 + cells) + " slow 1500");
    dorvak.OpenPage(kExportPage);
    dorvak.Press(ID_Check3);
    dorvak.Press(ID_Command11);
    WaitUntil("the last row", [&] { return dorvak.Status() == "Catie doplnuje radku 7/18"; });
    Sleep(300);
    KeepPicture("without-redrawing.png");
    dorvak.WaitForStatus(kTableMade, kLong);
    EXPECT_EQ(catia.Drawing(), drawn);
    EXPECT_EQ(catia.Display(), drawn);
    EXPECT_EQ(CallCounts(catia.Log())["DrawingTable.ComputeMode"], 2);
}

TEST_F(Redrawing, ARefusedCallLeavesATableThatShowsWhatItHolds) {
    const DorvakWindow dorvak;
    FillList(dorvak, PartsText(2), 2);
    const CatiaSession catia({kDrawing});
    dorvak.OpenPage(kExportPage);
    dorvak.Press(ID_Check3);
    catia.Do("fail 140 refused");
    dorvak.Press(ID_Command11);
    dorvak.WaitForStatus("Catie doplnuje radku 8/8");
    WaitUntil("the last call",
              [&] { return CallCounts(catia.Log())["DrawingTable.ComputeMode"] == 2; });
    EXPECT_NE(catia.Drawing().find("Pozice"), std::string::npos);
    EXPECT_EQ(catia.Display(), catia.Drawing());
}

// What it is for: a session that computes the display for 2 ms after each change.
TEST_F(Redrawing, SparesTheTimeOfComputingTheDisplay) {
    constexpr int kParts = 100;
    constexpr int kRows = 1 + 5 + kParts;
    constexpr long long kChanges = 1 + 7 + 7 * kRows + 7 * (1 + kParts);
    const DorvakWindow dorvak;
    FillList(dorvak, PartsText(kParts), kParts);
    const CatiaSession catia({kDrawing});
    const long long at_once = MakeTable(dorvak, false);
    catia.Do("recompute 2000");
    const long long redrawn = MakeTable(dorvak, false);
    const long long spared = MakeTable(dorvak, true);
    std::cout << kParts << " rows into a new table: " << at_once
              << " ms; with a display that takes "
              << "2 ms after each change " << redrawn << " ms, without redrawing " << spared
              << " ms\n";
    EXPECT_GE(redrawn, 2 * kChanges);
    EXPECT_LT(spared, redrawn - kChanges);
    EXPECT_EQ(catia.Display(), catia.Drawing());
}

TEST_F(SessionSwitches, ADisplayThatIsNotComputedStaysOnTheScreenAsItWas) {
    const std::string path = TemporaryPath("large-cell.txt");
    std::ofstream(path) << "DrawingDocument Cell.CATDrawing\nsheet S\n  view V at 0 0\n"
                           "    table at 10 287 columns 400\n"
                           "      row 277 font 60 Arial cells \"\"\n";
    const CatiaSession catia({path});
    const Apartment apartment;
    automation::ObjectPtr object = com::GetActiveObject("CATIA.Application");
    for (const char* name :
         {"ActiveDocument", "Sheets", "ActiveSheet", "Views", "ActiveView", "Tables"}) {
        object = object->get({name, name}).AsObject();
    }
    const automation::ObjectPtr table = object->call({"Tables", "Item"}, {1}).AsObject();
    const auto shows_text = [&] {
        RECT area;
        GetClientRect(catia.Window(), &area);
        InflateRect(&area, -area.right / 3, -area.bottom / 3);
        return ShowsColour(catia.Window(), area, RGB(0x1a, 0x1a, 0x1a));
    };
    WaitUntil("the empty cell", [&] { return !shows_text(); });
    table->put({"Table", "ComputeMode"}, 0);
    table->call({"Table", "SetCellString"}, {1, 1, "MMMMMMMMMMMM"});
    Sleep(500);
    EXPECT_FALSE(shows_text());
    KeepPicture("display-off.png");
    table->put({"Table", "ComputeMode"}, 1);
    WaitUntil("the text", shows_text);
    KeepPicture("display-on.png");
}

TEST_F(SessionSwitches, ASlowCallTakesItsTimeAndIsCarriedOut) {
    const CatiaSession catia({kProduct});
    const DorvakWindow dorvak;
    catia.Do("fail 5 slow 2000");
    const Clock::time_point start = Clock::now();
    dorvak.Press(ID_Command3);
    dorvak.WaitForStatus(kWalked, kLong);
    EXPECT_GE(MillisecondsSince(start), 2000);
}

TEST_F(SessionSwitches, ADialogRejectsEverythingUntilItIsClosed) {
    const CatiaSession catia({kProduct});
    const DorvakWindow dorvak;
    const auto dialog = [&] { return catia.Process().FindVisible("#32770"); };
    for (const bool by_person : {true, false}) {
        SCOPED_TRACE(by_person);
        catia.Do("dialog open");
        ASSERT_NE(dialog(), nullptr);
        EXPECT_EQ(GetWindow(dialog(), GW_OWNER), catia.Window());
        EXPECT_FALSE(IsWindowEnabled(catia.Window()));
        dorvak.Press(ID_Command3);
        dorvak.WaitForStatus("Cekam na Catii");
        Sleep(1000);
        EXPECT_EQ(dorvak.Status(), "Cekam na Catii");
        KeepPicture("dialog.png");
        if (by_person) {
            Send(Control(dialog(), IDOK), BM_CLICK);
        } else {
            catia.Do("dialog close");
        }
        EXPECT_EQ(dialog(), nullptr);
        EXPECT_TRUE(IsWindowEnabled(catia.Window()));
        dorvak.WaitForStatus(kWalked, kLong);
    }
}

TEST_F(SessionSwitches, WrongCommandsAreRefused) {
    const CatiaSession catia({kDrawing});
    for (const char* command :
         {"fail 1 slow", "fail 1 slow 0", "recompute -1", "recompute", "dialog", "dialog shut"}) {
        EXPECT_THROW(catia.Do(command), std::runtime_error) << command;
    }
    catia.Do("recompute 0");
}
