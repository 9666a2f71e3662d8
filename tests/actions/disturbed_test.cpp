// What the person does at the wrong moment: twice, meanwhile, in another order, by other rows.

#include <gtest/gtest.h>

#include "app/recovery.hpp"
#include "partslist/partslist.hpp"
#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"

namespace {

using testing_support::AddRow;
using testing_support::Column;
using testing_support::Drag;
using testing_support::DrawingWithTable;
using Texts = std::vector<std::string>;

struct Disturbed : testing_support::ActionTest {
    controls::ListView& list = form.ListView1;

    [[nodiscard]] Texts Names() const { return Column(form.ListView1, 0); }
    [[nodiscard]] Texts Positions() const { return Column(form.ListView1, partslist::kPosition); }
};

struct ReadingBack : Disturbed {};
struct Dragging : Disturbed {};
struct Deleting : Disturbed {};

// A table of four rows with one multi-line cell.
constexpr const char* kFourRows = R"(DrawingDocument D.CATDrawing
sheet S active
  view V
    table at 0 0 anchor 0 weight 1 selected columns 10 10 10 10 10 10 10
      row 5 font 3 Arial cells "4" d "1" s m n ""
      row 5 font 3 Arial cells "3" c "1" s m n ""
      row 5 font 3 Arial cells "2" b "1" s m n ""
      row 5 font 3 Arial cells "1" a "1" s m n ""
)";

TEST_F(ReadingBack, PressedAgainWhileItRunsItGoesOnAlone) {
    Open(kFourRows);
    events.at_yield[1] = [&] { form.Command9.Click(); };
    events.at_yield[3] = [&] { form.Command9.Click(); };
    form.Command9.Click();
    EXPECT_EQ(Names(), (Texts{"a", "b", "c", "d"}));
    EXPECT_EQ(Status(), "Nacteni tabulky Ok");
    EXPECT_EQ(RowCount(), "Pozic: 4");
}

TEST_F(ReadingBack, PressedAgainWhileItRunsItReadsTheTableOnce) {
    Open(kFourRows);
    form.Command9.Click();
    const Texts alone = session.Log();
    session.ClearLog();
    events.at_yield[events.yields + 2] = [&] { form.Command9.Click(); };
    form.Command9.Click();
    EXPECT_EQ(session.Log(), alone);
}

TEST_F(ReadingBack, RowsAddedMeanwhileAreNotMixedIn) {
    Open(kFourRows);
    events.at_yield[2] = [&] { form.m_Pridat.Click(); };
    form.Command9.Click();
    EXPECT_EQ(Names(), (Texts{"a", "b", "c", "d"}));
}

TEST_F(ReadingBack, ATableWrittenMeanwhileIsNotReadAsIfNothingHadHappened) {
    Open(kFourRows);
    AddRow(list, {"other", "0001", "9"});
    events.at_yield[2] = [&] {
        AddRow(list, {"other", "0001", "9"});
        form.Command30.Click();
    };
    form.Command9.Click();
    EXPECT_NE(Status(), "Nacteni tabulky Ok");
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kFailed);
    EXPECT_EQ(form.StatusBar1.ShownExplanation().text,
              "Během načítání zapsal do tabulky jiný příkaz. Načtěte ji znovu.");
}

TEST_F(ReadingBack, ATableThatIsBeingWrittenIsNotRead) {
    Open(kFourRows);
    AddRow(list, {"first", "0001", "9"});
    AddRow(list, {"second", "0002", "9"});
    bool refused = false;
    events.at_yield[1] = [&] { // the upper row still is the old one
        form.Command9.Click();
        refused = form.StatusBar1.State() == controls::ActionState::kFailed;
    };
    form.Command30.Click();
    EXPECT_TRUE(refused);
    EXPECT_EQ(Names(), (Texts{"first", "second"})) << "and the list stays";
    EXPECT_EQ(Status(), "Vlozeni dat Ok");
    form.Command9.Click();
    EXPECT_EQ(Status(), "Nacteni tabulky Ok");
}

TEST_F(ReadingBack, ATableThatIsBeingMadeIsNotRead) {
    Open(testing_support::kEmptyDrawing);
    AddRow(list, {"first", "0001", "1"});
    AddRow(list, {"second", "0002", "2"});
    bool refused = false;
    events.at_yield[4] = [&] { // the last row is to come
        session.SelectTable("Sheet.1", "Main View", 1);
        form.Command9.Click();
        refused = form.StatusBar1.State() == controls::ActionState::kFailed;
    };
    form.Command11.Click();
    EXPECT_TRUE(refused);
    EXPECT_EQ(Names(), (Texts{"first", "second"})) << "and the list stays";
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
}

TEST_F(ReadingBack, AfterACreationThatFailedTablesAreReadAgain) {
    Open(kFourRows);
    AddRow(list, {"first", "0001", "1"});
    form.Text2.SetText("/vyska1;tall\r\n");
    form.Command11.Click();
    ASSERT_EQ(form.StatusBar1.State(), controls::ActionState::kFailed);
    form.Command9.Click();
    EXPECT_EQ(Status(), "Nacteni tabulky Ok");
}

TEST_F(ReadingBack, TheListIsEmptyUntilAllRowsAreRead) {
    Open(kFourRows);
    AddRow(list, {"before"});
    std::vector<std::size_t> counts;
    events.at_every_yield = [&] { counts.push_back(list.Count()); };
    form.Command9.Click();
    EXPECT_EQ(counts, (std::vector<std::size_t>{0, 0, 0, 0}));
    EXPECT_EQ(list.Count(), 4U);
}

TEST_F(ReadingBack, ATableOfOtherColumnsLeavesTheListEmptyForTheClosingToo) {
    Open(DrawingWithTable(2, 2));
    files.stored["C:\\Dorvak\\list.txt"] = "kept@@False@@0001@@@@@@@@@@\r\n";
    AddRow(list, {"before"});
    form.Command9.Click();
    EXPECT_EQ(list.Count(), 0U);
    app::RequestClose(form);
    EXPECT_EQ(list.Count(), 0U);
}

TEST_F(ReadingBack, AListBegunMeanwhileIsTheOneThatClosingSaves) {
    Open(kFourRows);
    AddRow(list, {"before"});
    events.at_yield[2] = [&] {
        form.m_Pridat.Click();
        app::RequestClose(form);
    };
    form.Command9.Click();
    EXPECT_EQ(Names(), (Texts{"Novy"}));
}

TEST_F(ReadingBack, ClosingMeanwhileSavesTheListThatStoodThere) {
    Open(kFourRows);
    files.stored["C:\\Dorvak\\list.txt"] = "kept@@False@@0001@@@@@@@@@@\r\n";
    AddRow(list, {"kept", "0001", "edited"});
    events.at_yield[2] = [&] { app::RequestClose(form); };
    form.Command9.Click();
    EXPECT_TRUE(form.unloaded);
    EXPECT_EQ(files.stored["C:\\Dorvak\\list.txt"], "kept@@False@@0001@@edited@@@@@@@@\r\n");
}

TEST_F(ReadingBack, WindowsEndingTheSessionMeanwhileSavesTheListThatStoodThere) {
    Open(kFourRows);
    AddRow(list, {"kept", "0001", "edited"});
    events.at_yield[2] = [&] { app::EndSession(form); };
    form.Command9.Click();
    EXPECT_EQ(files.stored["C:\\Dorvak\\list.txt"], "kept@@False@@0001@@edited@@@@@@@@\r\n");
}

TEST_F(ReadingBack, ACrashMeanwhileDoesNotTakeTheListThatStoodThere) {
    Open(kFourRows);
    app::OfferRecovery(form);
    form.m_Pridat.Click();
    long long now = 0;
    events.at_every_yield = [&] { app::KeepRecovery(form, now += 10'000); };
    std::string kept;
    events.at_yield[3] = [&] { kept = files.stored["C:\\Dorvak\\obnova.txt"]; };
    form.Command9.Click();
    EXPECT_NE(kept.find("radek\t0\tNovy\t0001\t1"), std::string::npos) << kept;
}

TEST_F(ReadingBack, ClosingInACallThatFailsLeavesTheWorkingFileAsItWas) {
    // Another program may close the window while a call waits for its answer.
    Open(kFourRows);
    files.stored["C:\\Dorvak\\list.txt"] = "kept@@False\r\n";
    session.before_call = [&](const std::string& call) {
        if (call == "DrawingTable.GetCellObject(2, 1)") {
            app::RequestClose(form);
            session.Arm({.call = 1});
        }
    };
    form.Command9.Click();
    EXPECT_TRUE(form.unloaded);
    EXPECT_EQ(files.stored["C:\\Dorvak\\list.txt"], "kept@@False\r\n");
}

TEST_F(ReadingBack, TheCountIsRightAlsoAfterAFailure) {
    Open(kFourRows);
    AddRow(list, {"before"});
    form.Command9.Click();
    const std::size_t calls = session.Log().size();
    Open(kFourRows);
    session.ClearLog();
    session.Arm({.call = calls - 12});
    form.Command9.Click();
    EXPECT_EQ(RowCount(), "Pozic: " + std::to_string(list.Count()));
    EXPECT_EQ(list.Count(), 3U) << "what was read stays, the row that failed with what it had";
    EXPECT_EQ(list.Row(3).text, "c");
}

TEST_F(ReadingBack, LineBreaksOfACellAreLineFeedsInTheList) {
    Open("DrawingDocument D.CATDrawing\nsheet S active\n  view V\n"
         "    table at 0 0 anchor 0 weight 1 selected columns 10 10 10 10 10 10 10\n"
         "      row 5 font 3 Arial cells \"1\" \"two\\r\\nlines\" \"1\" s m \"one\\nmore\" \"\"\n"
         "      row 5 font 3 Arial cells Pozice n k v m p List\n");
    form.Command9.Click();
    ASSERT_EQ(list.Count(), 1U);
    EXPECT_EQ(list.Row(1).text, "two\nlines");
    EXPECT_EQ(list.SubItem(1, partslist::kNote), "one\nmore");
}

TEST_F(Dragging, PositionsReadFromADrawingSortAsNumbers) {
    for (int row = 1; row <= 12; ++row) {
        AddRow(list, {std::to_string(100 + row), std::to_string(row)});
    }
    Drag(list, 12, 1);
    EXPECT_EQ(Names(), (Texts{"112", "101", "102", "103", "104", "105", "106", "107", "108", "109",
                              "110", "111"}));
    EXPECT_EQ(Positions().back(), "0012");
}

TEST_F(Dragging, ClosingWhileTheRowsAreSortedSavesProperPositions) {
    for (int row = 1; row <= 3; ++row) {
        AddRow(list, {std::to_string(row), "000" + std::to_string(row)}, true);
    }
    events.at_yield[1] = [&] { app::RequestClose(form); };
    Drag(list, 3, 1);
    EXPECT_TRUE(form.unloaded);
    EXPECT_EQ(files.stored["C:\\Dorvak\\list.txt"],
              "3@@True@@0001@@@@2@@@@@@\r\n1@@True@@0002@@@@3@@@@@@\r\n"
              "2@@True@@0003@@@@4@@@@@@\r\n");
}

TEST_F(Dragging, WindowsEndingTheSessionWhileTheRowsAreSortedSavesProperPositions) {
    for (int row = 1; row <= 3; ++row) {
        AddRow(list, {std::to_string(row), "000" + std::to_string(row)});
    }
    events.at_yield[1] = [&] { app::EndSession(form); };
    Drag(list, 3, 1);
    EXPECT_EQ(files.stored["C:\\Dorvak\\list.txt"],
              "3@@False@@0001@@@@@@@@@@\r\n1@@False@@0002@@@@@@@@@@\r\n"
              "2@@False@@0003@@@@@@@@@@\r\n");
}

TEST_F(Dragging, ARowAddedWhileTheRowsAreSortedIsNumberedWithThem) {
    for (int row = 1; row <= 3; ++row) {
        AddRow(list, {std::to_string(row), "000" + std::to_string(row)}, true);
    }
    events.at_yield[1] = [&] { form.m_Pridat.Click(); };
    Drag(list, 3, 1);
    EXPECT_EQ(list.Count(), 4U);
    EXPECT_EQ(Positions(), (Texts{"0001", "0002", "0003", "0004"}));
    EXPECT_EQ(RowCount(), "Pozic: 4");
}

TEST_F(Dragging, AListLoadedWhileTheRowsAreSortedStaysAsItWasLoaded) {
    AddRow(list, {"1", "0001"});
    AddRow(list, {"2", "0002"});
    files.stored["C:\\Dorvak\\list.txt"] = "a@@False@@0005\r\nb@@False@@0007\r\n";
    events.at_yield[1] = [&] { form.Command27.MouseDown(controls::kRightButton, 0, 1, 1); };
    Drag(list, 2, 1);
    EXPECT_EQ(Names(), (Texts{"a", "b"}));
    EXPECT_EQ(Positions(), (Texts{"0005", "0007"}));
}

TEST_F(Dragging, ARowIsFoundAgainWhereTheListChangedBetweenPressAndRelease) {
    for (int row = 1; row <= 4; ++row) {
        AddRow(list, {std::to_string(row), "000" + std::to_string(row)});
    }
    list.UserMouseDown(controls::kLeftButton, 0, 5, 3); // on "3"
    list.Remove(1);
    list.UserMouseUp(controls::kLeftButton, 0, 5, 3); // on "4"
    EXPECT_EQ(Names(), (Texts{"2", "4", "3"}));
    list.UserMouseDown(controls::kLeftButton, 0, 5, 3); // on "3"
    list.Remove(3);
    list.UserMouseUp(controls::kLeftButton, 0, 5, 1);
    EXPECT_EQ(Names(), (Texts{"2", "4"}));
}

TEST_F(Dragging, ATargetWhoseNameOccursTwiceIsItsFirstRow) {
    for (const char* name : {"x", "5", "x"}) {
        AddRow(list, {name, text::FourDigits(list.Count() + 1)});
    }
    // Dropped onto the third row, whose name the first row above bears too: it sorts before it.
    Drag(list, 2, 3);
    EXPECT_EQ(Names(), (Texts{"x", "5", "x"}));
    list.Clear();
    for (const char* name : {"5", "x", "y", "x"}) {
        AddRow(list, {name, text::FourDigits(list.Count() + 1)});
    }
    // Dropped onto the last row, with both rows of that name below it: it goes after the last.
    Drag(list, 1, 4);
    EXPECT_EQ(Names(), (Texts{"x", "y", "x", "5"}));
}

TEST_F(Dragging, TheKeyboardMovesAnyRow) {
    for (const char* name : {"Hřídel", "Kolo", "Víko"}) {
        AddRow(list, {name, text::FourDigits(list.Count() + 1)}, true);
    }
    list.SetCurrentRow(3);
    list.UserMoveKey(-1);
    EXPECT_EQ(Names(), (Texts{"Hřídel", "Víko", "Kolo"}));
    EXPECT_EQ(list.CurrentRow(), 2U);
    EXPECT_EQ(Positions(), (Texts{"0001", "0002", "0003"}));
    EXPECT_EQ(Column(list, partslist::kSheet), (Texts{"2", "3", "4"}));
    list.UserMoveKey(1);
    list.UserMoveKey(1);
    EXPECT_EQ(Names(), (Texts{"Hřídel", "Kolo", "Víko"})) << "the last row stays";
}

TEST_F(Dragging, TheKeyboardLeavesDetailSheetsWhereTheyAre) {
    controls::ListView& sheets = form.ListView3;
    for (const char* name : {"A", "B", "Detail"}) {
        sheets.Add(name);
    }
    sheets.SetTag(3, "A0001");
    sheets.SetCurrentRow(2);
    sheets.UserMoveKey(1);
    EXPECT_EQ(Column(sheets, 0), (Texts{"A", "B", "Detail"}));
    sheets.UserMoveKey(-1);
    EXPECT_EQ(Column(sheets, 0), (Texts{"B", "A", "Detail"}));
    sheets.SetCurrentRow(3);
    sheets.UserMoveKey(-1);
    EXPECT_EQ(Column(sheets, 0), (Texts{"B", "A", "Detail"}));
}

TEST_F(Deleting, TheRowThatMovesUpIsSelectedOnlyWhereNoOtherIs) {
    for (const char* name : {"a", "b", "c", "d"}) {
        AddRow(list, {name});
    }
    list.SetSelected(1, true);
    list.SetSelected(2, true);
    list.SetCurrentRow(2);
    form.m_Smazat.Click();
    EXPECT_EQ(list.CurrentRow(), 2U);
    EXPECT_TRUE(list.Row(1).selected);
    EXPECT_FALSE(list.Row(2).selected) << "the next Enter in a picker would write to it";
    list.SetCurrentRow(1);
    form.m_Smazat.Click();
    EXPECT_TRUE(list.Row(1).selected) << "nothing else is";
}

TEST_F(Disturbed, ARenameIsOfTheRowWithThatIdWhereverItStands) {
    for (const char* name : {"a", "b", "c"}) {
        AddRow(list, {name});
    }
    const auto id = list.Row(2).id;
    list.Remove(1);
    list.UserRename(id, "B");
    EXPECT_EQ(Names(), (Texts{"B", "c"}));
    list.Clear();
    AddRow(list, {"x"});
    AddRow(list, {"y"});
    list.UserRename(id, "gone");
    EXPECT_EQ(Names(), (Texts{"x", "y"}));
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(Disturbed, AHandlerMayRunInsideItsOwnEventsOtherHandlers) {
    // Windows ends the session while the saving dialog is open: the closing save still runs.
    AddRow(list, {"a"});
    form.show_save_dialog = [&](controls::FileDialog&) {
        app::EndSession(form);
        return false;
    };
    form.Command17.Click();
    EXPECT_TRUE(form.unloaded);
    EXPECT_TRUE(files.stored.contains("C:\\Dorvak\\list.txt"));
}

TEST_F(Disturbed, ATableThatWasFilledWhileItWasMadeIsNotSaidToBeMade) {
    Open(testing_support::kEmptyDrawing);
    AddRow(list, {"first", "0001", "1"});
    AddRow(list, {"second", "0002", "2"});
    events.at_yield[4] = [&] { // the last row is to come
        session.SelectTable("Sheet.1", "Main View", 1);
        AddRow(list, {"third", "0003", "3"});
        form.Command30.Click();
    };
    form.Command11.Click();
    EXPECT_NE(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kFailed);
    EXPECT_EQ(form.StatusBar1.ShownExplanation().text,
              "Během vytváření zapsal do tabulky jiný příkaz. Smažte novou tabulku v Catii a "
              "vytvořte ji znovu.");
}

TEST_F(Disturbed, TheSingleRowIsTheOneThatWasCurrentWhenItWasPressed) {
    Open(testing_support::kEmptyDrawing);
    AddRow(list, {"first", "0001", "1"});
    AddRow(list, {"second", "0002", "2"});
    list.SetCurrentRow(2);
    events.at_yield[1] = [&] { list.SetCurrentRow(1); };
    form.Command7.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(DrawnRows().back(), R"("2" "second" "2" "" "" "" "")");
}

} // namespace
