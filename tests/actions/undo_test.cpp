// Taking back what was done to the parts list and to the sheet list, through the form.

#include <gtest/gtest.h>

#include "tests/support/drawing_samples.hpp"
#include "tests/support/headless_form.hpp"
#include "tests/support/list_state.hpp"

namespace {

using testing_support::AddRow;
using testing_support::Column;
using testing_support::Drag;
using testing_support::HeadlessForm;
using testing_support::kWorkingFile;
using Texts = std::vector<std::string>;

struct Undo : testing::Test, HeadlessForm {
    Undo() {
        files.stored[kWorkingFile] = "5@@True@@0001@@1@@2@@S235@@@@\r\n"
                                     "6@@False@@0002@@3@@@@@@D20@@\r\n"
                                     "Hřídel@@False@@0003@@1@@@@@@@@kalit\r\n";
        app::Form_Load(form);
        loaded = State();
    }

    std::vector<Texts> State() {
        std::vector<Texts> rows;
        for (std::size_t row = 1; row <= list.Count(); ++row) {
            rows.push_back(testing_support::RowTexts(list, row));
            rows.back().push_back(list.Row(row).checked ? "x" : "");
        }
        return rows;
    }

    // Takes the last step back and makes it again.
    void BackAndForth(const std::string& step) {
        const auto changed = State();
        ASSERT_NE(changed, loaded) << step;
        EXPECT_EQ(form.m_Zpet.caption, "Zpět: " + step);
        EXPECT_TRUE(form.m_Zpet.Enabled());
        form.m_Zpet.Click();
        EXPECT_EQ(State(), loaded) << step;
        EXPECT_EQ(RowCount(), "Pozic: 3");
        EXPECT_EQ(form.m_Znovu.caption, "Znovu: " + step);
        form.m_Znovu.Click();
        EXPECT_EQ(State(), changed) << step;
        EXPECT_EQ(RowCount(), "Pozic: " + std::to_string(changed.size()));
        form.m_Zpet.Click();
    }

    controls::ListView& list = form.ListView1;
    controls::ListView& sheets = form.ListView3;
    std::vector<Texts> loaded;
};

TEST_F(Undo, WhatTheProgramLoadedIsNothingToTakeBack) {
    EXPECT_EQ(form.m_Zpet.caption, "Zpět");
    EXPECT_FALSE(form.m_Zpet.Enabled());
    EXPECT_FALSE(form.m_Znovu.Enabled());
    form.m_Zpet.Click();
    form.m_Znovu.Click();
    EXPECT_EQ(State(), loaded);
}

TEST_F(Undo, TheCountedListAndTheTestData) {
    form.Command5.Click();
    form.Command4.Click();
    BackAndForth("Naplň list");
    form.Command2.Click();
    if (State() != loaded) {
        BackAndForth("test rovnani");
    }
}

TEST_F(Undo, AddingDeletingAndRenaming) {
    form.m_Pridat.Click();
    BackAndForth("Přidat");
    list.SetCurrentRow(1);
    form.m_Smazat.Click();
    BackAndForth("Smazat");
    list.UserRename(list.Row(2).id, "Kolo");
    BackAndForth("Přejmenování");
}

TEST_F(Undo, APasteAndATextTypedIntoCellsAreOneStepEach) {
    list.SetCurrentRow(2);
    clipboard = "a\t\t4\r\nb\t\t5\r\nc\t\t6\r\nd\r\n";
    form.m_Vlozit.Click();
    BackAndForth("Vložit");
    list.SelectAll();
    list.UserEdit({list.Row(1).id, controls::kMaterial, "C45", true});
    BackAndForth("Úprava");
}

TEST_F(Undo, ACheckOfSelectedRowsIsOneStep) {
    list.SetSelected(2, true);
    list.SetSelected(3, true);
    list.UserCheck(2, true);
    BackAndForth("Zaškrtnutí");
}

TEST_F(Undo, BringsBackWhatWasSelectedJustBefore) {
    list.SelectAll(); // by its key, which is no event of the list
    list.SetCurrentRow(3);
    list.UserCheck(3, true);
    list.SetSelected(1, false);
    list.SetCurrentRow(2);
    form.m_Smazat.Click();
    form.m_Zpet.Click();
    EXPECT_FALSE(list.Row(1).selected);
    EXPECT_TRUE(list.Row(2).selected);
    EXPECT_TRUE(list.Row(3).selected);
    EXPECT_EQ(list.CurrentRow(), 2U);
    form.m_Zpet.Click();
    EXPECT_TRUE(list.Row(1).selected);
    EXPECT_EQ(list.CurrentRow(), 3U);
}

TEST_F(Undo, APickersEnterIsOneStepOfItsName) {
    list.SelectAll();
    list.SetCurrentRow(1);
    list.UserClick();
    form.Combo1.SetText("14 220");
    form.Combo1.KeyPress(controls::kEnterKey);
    BackAndForth("Material");
    list.SelectAll();
    form.Combo3.SetText("leštit");
    form.Command14.Click();
    BackAndForth("Poznamka");
}

TEST_F(Undo, ADragIsOneStep) {
    Drag(list, 2, 1);
    BackAndForth("Přesun");
    list.SetCurrentRow(1);
    list.UserMoveKey(1);
    BackAndForth("Přesun");
}

TEST_F(Undo, AnOpenedFileAlsoAFailingOne) {
    chosen_file = "C:\\a.tab";
    files.stored["C:\\a.tab"] = "a@@True@@1\r\nb@@False@@2\r\n";
    form.Command27.Click();
    BackAndForth("Otevreni tabulky");
    files.stored["C:\\a.tab"] = "a@@True@@1\r\nbroken\r\n";
    form.Command27.Click();
    BackAndForth("Otevreni tabulky");
    files.stored[kWorkingFile] = "";
    form.Command27.MouseDown(controls::kRightButton, 0, 1, 1);
    BackAndForth("Otevreni tabulky");
}

TEST_F(Undo, AHandlerInsideAnActionIsAStepOfItsOwn) {
    list.SetCurrentRow(1);
    events.at_yield[1] = [this] { form.m_Pridat.Click(); };
    Drag(list, 2, 1);
    EXPECT_EQ(form.m_Zpet.caption, "Zpět: Přesun"); // what came after the added row
    while (form.m_Zpet.Enabled()) {
        form.m_Zpet.Click();
    }
    EXPECT_EQ(State(), loaded);
}

TEST_F(Undo, TheSheetListHasAHistoryOfItsOwn) {
    form.Command35.Click();
    const Texts generated = Column(sheets, 0);
    EXPECT_EQ(form.m_Sheet_zpet.caption, "Zpět: Sheet generovat");
    EXPECT_FALSE(form.m_Zpet.Enabled());
    sheets.SetCurrentRow(2);
    form.Text5.UserChange("Kolo");
    form.Text5.KeyPress(controls::kEnterKey);
    EXPECT_EQ(form.m_Sheet_zpet.caption, "Zpět: Přejmenování");
    form.m_Sheet_zpet.Click();
    EXPECT_EQ(sheets.SubItem(2, controls::kNewName), "");
    form.m_Sheet_zpet.Click();
    EXPECT_EQ(sheets.Count(), 0U);
    form.m_Sheet_znovu.Click();
    EXPECT_EQ(Column(sheets, 0), generated);
}

// Planned names

struct PlannedNames : Undo {
    PlannedNames() { Open("sheet Sestava\nsheet Hřídel\nsheet Kolo\n"); }

    void Open(const std::string& drawing) {
        session.emplace();
        session->LoadDocument("document", "DrawingDocument D.CATDrawing\n" + drawing);
        Connect(*session);
    }
    void Plan(std::size_t row, const std::string& name) {
        sheets.SetSubItem(row, controls::kNewName, name);
    }
    Texts Names() { return Column(sheets, controls::kNewName); }

    std::optional<simulator::Session> session;
};

TEST_F(PlannedNames, ComeBackByTheOldNameAfterAReload) {
    EXPECT_FALSE(form.m_Sheet_vratit_jmena.Enabled());
    form.Command21.Click();
    ASSERT_EQ(sheets.Count(), 3U);
    Plan(1, "1");
    Plan(3, "3");
    Open("sheet 1\nsheet Hřídel\nsheet Kolo\nsheet Nový\n"); // the first has its new name already
    form.Command21.Click();
    EXPECT_EQ(Names(), (Texts{"", "", "", ""}));
    EXPECT_TRUE(form.m_Sheet_vratit_jmena.Enabled());
    const std::size_t calls = session->Log().size();
    form.m_Sheet_vratit_jmena.Click();
    EXPECT_EQ(Names(), (Texts{"", "", "3", ""}));
    EXPECT_EQ(session->Log().size(), calls);
    EXPECT_EQ(form.m_Sheet_zpet.caption, "Zpět: Vrátit plánovaná jména");
}

TEST_F(PlannedNames, ASecondReloadLosesNone) {
    form.Command21.Click();
    Plan(2, "2");
    form.Command21.Click();
    form.Command21.Click();
    form.m_Sheet_vratit_jmena.Click();
    EXPECT_EQ(Names(), (Texts{"", "2", ""}));
}

TEST_F(PlannedNames, SurviveARenameThatStopsHalfWay) {
    form.Command21.Click();
    for (std::size_t row = 1; row <= 3; ++row) {
        Plan(row, "List " + std::to_string(row));
    }
    session->ClearLog();
    session->Arm({.call = 9, .kind = simulator::FaultKind::kRefused});
    form.Command23.Click();
    form.Command21.Click();
    const Texts drawn = Column(sheets, 0);
    form.m_Sheet_vratit_jmena.Click();
    int renamed = 0;
    for (std::size_t row = 1; row <= 3; ++row) {
        const std::string planned = "List " + std::to_string(row);
        const bool is_renamed = drawn.at(row - 1) == planned;
        renamed += is_renamed ? 1 : 0;
        EXPECT_EQ(sheets.SubItem(row, controls::kNewName), is_renamed ? "" : planned);
    }
    EXPECT_GT(renamed, 0);
    EXPECT_LT(renamed, 3);
    form.Command23.Click();
    form.Command21.Click();
    EXPECT_EQ(Column(sheets, 0), (Texts{"List 1", "List 2", "List 3"}));
}

} // namespace
