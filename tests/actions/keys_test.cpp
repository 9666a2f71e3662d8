// The keys of the window, and what the keyboard does with rows, fields and buttons beside it.

#include "app/keys.hpp"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/action_test.hpp"
#include "tests/support/list_state.hpp"
#include "tests/support/sample_products.hpp"

namespace {

using app::Focus;
using app::Key;
using testing_support::AddRow;
using testing_support::Column;
using testing_support::Drag;
using testing_support::HeadlessForm;
using testing_support::ListState;
using testing_support::StateOf;
using Texts = std::vector<std::string>;

struct Keys : testing_support::ActionTest {
    // Whether the window takes the key; does then what it stands for.
    bool Press(const Key& key, Focus focus = Focus::kElsewhere) {
        const auto action = app::ActionOfKey(form, key, focus);
        if (action) {
            action();
        }
        return static_cast<bool>(action);
    }
    static Key Control(int code) { return {.code = code, .control = true}; }
};

TEST_F(Keys, ControlAndTabGoRoundThePages) {
    const Key next = Control(app::key_codes::kTab);
    const Key before{.code = app::key_codes::kTab, .control = true, .shift = true};
    for (const std::size_t page : {1U, 2U, 3U, 4U, 0U}) {
        EXPECT_TRUE(Press(next));
        EXPECT_EQ(form.SSTab1.Tab(), page);
    }
    for (const std::size_t page : {4U, 3U, 2U, 1U, 0U}) {
        EXPECT_TRUE(Press(before, Focus::kField));
        EXPECT_EQ(form.SSTab1.Tab(), page);
    }
}

TEST_F(Keys, ControlAndADigitShowAPage) {
    for (const int digit : {0x33, 0x35, 0x31, 0x32, 0x34}) {
        EXPECT_TRUE(Press(Control(digit), Focus::kField));
        EXPECT_EQ(form.SSTab1.Tab(), static_cast<std::size_t>(digit - '1'));
    }
    EXPECT_FALSE(Press(Control('6')));
    EXPECT_FALSE(Press(Control('0')));
    EXPECT_FALSE(Press({.code = '2'}));
    EXPECT_EQ(form.SSTab1.Tab(), 3U);
}

TEST_F(Keys, AnotherPageIsShownAsByAClickOnItsTab) {
    form.Command18.Click();
    ASSERT_EQ(form.Command18.Caption(), "max");
    Press(Control('1')); // which stands there already
    EXPECT_EQ(form.Command18.Caption(), "max");
    Press(Control('2'));
    EXPECT_EQ(form.Command18.Caption(), "min") << "no page shows on a collapsed window";
}

// On a Czech keyboard, Alt on the right is Ctrl and Alt, and writes "@", "{", "$" and others.
TEST_F(Keys, TogetherWithAltNothingIsTaken) {
    AddRow(form.ListView1, {"5", "0001"});
    form.ListView1.SetCurrentRow(1);
    for (int code = 1; code < 256; ++code) {
        for (const bool control : {false, true}) {
            for (const Focus focus :
                 {Focus::kPartsList, Focus::kSheetList, Focus::kField, Focus::kElsewhere}) {
                EXPECT_FALSE(Press({.code = code, .control = control, .alt = true}, focus)) << code;
            }
        }
    }
}

// Every key that the window takes, and no other.
TEST_F(Keys, AreTheseAndNoOthers) {
    struct Taken {
        int code;
        bool control;
        bool shift;
        bool in_field;
    };
    std::vector<Taken> taken{{0x09, true, false, true},  {0x09, true, true, true},
                             {'S', true, false, true},   {'O', true, false, true},
                             {'Z', true, false, false},  {'Y', true, false, false},
                             {0x70, false, false, true}, {0x74, false, false, true}};
    for (const int digit : {0x31, 0x32, 0x33, 0x34, 0x35}) {
        taken.push_back({digit, true, false, true});
        taken.push_back({digit, true, true, true});
    }
    for (int code = 1; code < 256; ++code) {
        for (const bool control : {false, true}) {
            for (const bool shift : {false, true}) {
                const auto found = std::ranges::find_if(taken, [&](const Taken& key) {
                    return key.code == code && key.control == control && key.shift == shift;
                });
                const Key key{.code = code, .control = control, .shift = shift};
                const bool is_taken = found != taken.end();
                EXPECT_EQ(static_cast<bool>(app::ActionOfKey(form, key, Focus::kElsewhere)),
                          is_taken)
                    << code;
                EXPECT_EQ(static_cast<bool>(app::ActionOfKey(form, key, Focus::kField)),
                          is_taken && found->in_field)
                    << code;
                const bool of_row = !control && !shift && (code == 0x2D || code == 0x2E);
                const bool of_parts = control && !shift && code == 0x2E;
                for (const Focus list : {Focus::kPartsList, Focus::kSheetList}) {
                    const bool pastes =
                        list == Focus::kPartsList && control && !shift && code == 'V';
                    EXPECT_EQ(static_cast<bool>(app::ActionOfKey(form, key, list)),
                              is_taken || of_row || pastes ||
                                  (of_parts && list == Focus::kPartsList))
                        << code;
                }
            }
        }
    }
}

TEST_F(Keys, FindOnThePageOfThePartsListAlone) {
    AddRow(form.ListView1, {"Hřídel", "0001"});
    AddRow(form.ListView1, {"Kolo", "0002"});
    AddRow(form.ListView1, {"Kolík", "0003"});
    message_boxes.text_answer = "kol";
    const Key next{.code = app::key_codes::kF3};
    const Key before{.code = app::key_codes::kF3, .shift = true};
    for (const std::size_t page : {0U, 2U, 3U, 4U}) {
        form.SSTab1.UserClick(page);
        for (const Key& key : {Control('F'), next, before}) {
            EXPECT_FALSE(Press(key)) << page;
        }
    }
    form.SSTab1.UserClick(1);
    EXPECT_TRUE(Press(Control('F'), Focus::kField));
    EXPECT_EQ(form.ListView1.CurrentRow(), 2U);
    EXPECT_TRUE(Press(next, Focus::kPartsList));
    EXPECT_EQ(form.ListView1.CurrentRow(), 3U);
    EXPECT_TRUE(Press(before));
    EXPECT_EQ(form.ListView1.CurrentRow(), 2U);
    EXPECT_TRUE(Press({.code = app::key_codes::kF3, .repeated = true}));
    EXPECT_EQ(form.ListView1.CurrentRow(), 2U);
}

TEST_F(Keys, PasteInThePartsList) {
    clipboard = "Kolo\r\n";
    EXPECT_TRUE(Press(Control('V'), Focus::kPartsList));
    EXPECT_EQ(Column(form.ListView1, 0), (Texts{"Kolo"}));
    for (const Focus focus : {Focus::kField, Focus::kSheetList, Focus::kElsewhere}) {
        EXPECT_FALSE(Press(Control('V'), focus));
    }
}

TEST_F(Keys, F5ReadsTheStructureAndShowsItsPage) {
    Open(testing_support::kSampleProduct);
    form.SSTab1.UserClick(2);
    EXPECT_TRUE(Press({.code = app::key_codes::kF5}, Focus::kField));
    EXPECT_EQ(Status(), "Sestav: 5 Partu: 24");
    EXPECT_EQ(form.TreeView1.Count(), 29U);
    EXPECT_EQ(form.SSTab1.Tab(), 0U);
}

TEST_F(Keys, F1OpensTheGuideAtThePageOfTheTabThatIsShown) {
    const Key help{.code = app::key_codes::kF1};
    Texts expected;
    for (const std::size_t page : {0U, 1U, 2U, 3U, 4U}) {
        form.SSTab1.UserClick(page);
        EXPECT_TRUE(Press(help, page == 1 ? Focus::kPartsList : Focus::kField));
        expected.push_back(
            (Texts{"strom", "editace-tabulky", "export-tabulky", "import-tabulky", "sheet"})[page]);
    }
    EXPECT_EQ(guide.pages, expected);
    EXPECT_EQ(Status(), "");
    EXPECT_TRUE(message_boxes.shown.empty());
    EXPECT_TRUE(Press({.code = app::key_codes::kF1, .repeated = true}));
    EXPECT_EQ(guide.pages, expected) << "held, it opens nothing more";
}

TEST_F(Keys, InThePreviewAreThoseOfAFieldAndF1ShowsThePageOfTheExport) {
    for (int code = 1; code < 256; ++code) {
        for (const bool control : {false, true}) {
            for (const bool shift : {false, true}) {
                const Key key{.code = code, .control = control, .shift = shift};
                EXPECT_EQ(static_cast<bool>(app::ActionOfKey(form, key, Focus::kPreview)),
                          static_cast<bool>(app::ActionOfKey(form, key, Focus::kField)))
                    << code;
            }
        }
    }
    form.SSTab1.UserClick(4);
    Press({.code = app::key_codes::kF1}, Focus::kPreview);
    EXPECT_EQ(guide.pages, Texts{"export-tabulky"});
}

TEST_F(Keys, F1SaysWhereTheGuideIsNotThere) {
    guide.error = automation::FileNotFound();
    Press({.code = app::key_codes::kF1});
    EXPECT_EQ(Status(), "Prirucka neni vedle programu");
    EXPECT_EQ(form.StatusBar1.ShownExplanation().text,
              "Vedle programu chybí složka prirucka s příručkou. Nainstalujte Dorvak znovu, nebo "
              "rozbalte celý soubor ZIP.");
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kNone);
    guide.error = automation::RunTimeError(70, "Permission denied");
    Press({.code = app::key_codes::kF1});
    EXPECT_EQ(Status(), "70 Permission denied");
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kFailed);
    EXPECT_TRUE(message_boxes.shown.empty());
}

// What runs goes on: the guide is read meanwhile.
TEST_F(Keys, F1DuringAnActionDisturbsNothing) {
    Open(testing_support::kSampleProduct);
    events.at_yield[2] = [this] { Press({.code = app::key_codes::kF1}); };
    Press({.code = app::key_codes::kF5});
    EXPECT_EQ(guide.pages, Texts{"strom"});
    EXPECT_EQ(Status(), "Sestav: 5 Partu: 24");
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kDone);
}

TEST_F(Keys, AKeyThatIsHeldPressesOnceAndIsTakenAllTheSame) {
    Open(testing_support::kSampleProduct);
    EXPECT_TRUE(Press({.code = app::key_codes::kF5, .repeated = true}));
    EXPECT_EQ(form.TreeView1.Count(), 0U);
    EXPECT_TRUE(Press({.code = app::key_codes::kInsert, .repeated = true}, Focus::kPartsList));
    EXPECT_EQ(form.ListView1.Count(), 0U);
    form.Command1.Click();
    form.m_Pridat.Click();
    EXPECT_TRUE(Press({.code = 'Z', .control = true, .repeated = true}));
    EXPECT_EQ(form.ListView1.Count(), 10U) << "undoing goes on";
}

// A walk that is asked for again while it runs, as by a second press.
TEST_F(Keys, FollowTheGuardsOfThePress) {
    Open(testing_support::kSampleProduct);
    events.at_yield[1] = [this] { Press({.code = app::key_codes::kF5}); };
    Press({.code = app::key_codes::kF5});
    EXPECT_EQ(Status(), "Sestav: 5 Partu: 24");
    EXPECT_EQ(form.TreeView1.Count(), 29U);
    form.Command3.SetEnabled(false);
    form.Text1.SetText("");
    Press({.code = app::key_codes::kF5});
    EXPECT_EQ(form.Text1.Text(), "") << "a greyed button";
}

TEST_F(Keys, SaveAndOpenAskForAFile) {
    form.Command1.Click();
    chosen_file = "C:\\Lists\\a.tab";
    EXPECT_TRUE(Press(Control('S')));
    EXPECT_EQ(Status(), "Ulozeni ok C:\\Lists\\a.tab");
    form.m_Smazat.Click();
    form.ListView1.Clear();
    EXPECT_TRUE(Press(Control('O')));
    EXPECT_EQ(Status(), "Nacteni ok 10");
    ASSERT_EQ(dialogs.size(), 2U);
    EXPECT_EQ(dialogs[0].title, "Uložení tabulky");
    EXPECT_EQ(dialogs[1].title, "Nacteni tabulky");
}

TEST_F(Keys, UndoIsOfTheListOfThePage) {
    form.m_Pridat.Click();
    form.m_Sheet_pridej.Click();
    Press(Control('Z'));
    EXPECT_EQ(form.ListView1.Count(), 0U);
    EXPECT_EQ(form.ListView3.Count(), 1U);
    Press(Control('5'));
    Press(Control('Z'));
    EXPECT_EQ(form.ListView3.Count(), 0U);
    Press(Control('Y'));
    EXPECT_EQ(form.ListView3.Count(), 1U);
}

TEST_F(Keys, InsertAndDeleteAreTheEntriesOfTheMenu) {
    const Key insert{.code = app::key_codes::kInsert};
    const Key remove{.code = app::key_codes::kDelete};
    Press(insert, Focus::kPartsList);
    Press(insert, Focus::kPartsList);
    HeadlessForm by_menu;
    by_menu.form.m_Pridat.Click();
    by_menu.form.m_Pridat.Click();
    EXPECT_EQ(testing_support::RowTexts(form.ListView1, 2),
              testing_support::RowTexts(by_menu.form.ListView1, 2));
    EXPECT_EQ(RowCount(), "Pozic: 2");
    EXPECT_EQ(form.parts_history.UndoName(), "Přidat");
    Press(remove, Focus::kPartsList);
    EXPECT_EQ(form.ListView1.Count(), 2U) << "there is no current row";
    form.ListView1.SetCurrentRow(1);
    Press(remove, Focus::kPartsList);
    EXPECT_EQ(Column(form.ListView1, controls::kPosition), (Texts{"0001"}));
    EXPECT_EQ(RowCount(), "Pozic: 1");
    EXPECT_EQ(form.parts_history.UndoName(), "Smazat");

    Press(insert, Focus::kSheetList);
    EXPECT_EQ(Column(form.ListView3, 0), (Texts{"Nový"}));
    EXPECT_TRUE(form.ListView3.Row(1).checked);
    form.ListView3.SetCurrentRow(1);
    Press(remove, Focus::kSheetList);
    EXPECT_EQ(form.ListView3.Count(), 0U);
    EXPECT_EQ(form.ListView1.Count(), 1U);
}

TEST_F(Keys, ControlAndDeleteRemoveTheSelectedParts) {
    form.Command1.Click();
    form.ListView1.SetSelected(2, true);
    form.ListView1.SetSelected(3, true);
    Press(Control(app::key_codes::kDelete), Focus::kPartsList);
    EXPECT_EQ(form.ListView1.Count(), 8U);
    EXPECT_EQ(form.m_Zpet.caption, "Zpět: Smazat vybrané");
    Press({.code = app::key_codes::kDelete, .control = true, .repeated = true}, Focus::kPartsList);
    EXPECT_EQ(form.ListView1.Count(), 8U);
}

TEST_F(Keys, RemovingIsGreyWhereThereIsNoRow) {
    struct List {
        controls::ListView& list;
        const controls::MenuItem& remove;
    };
    for (const auto& [list, remove] :
         {List{form.ListView1, form.m_Smazat}, List{form.ListView3, form.m_Sheet_smaz}}) {
        list.UserMenuKey();
        EXPECT_FALSE(remove.Enabled());
        list.Add("a");
        list.UserMouseDown(controls::kRightButton, 0, 5, 9);
        EXPECT_FALSE(remove.Enabled()) << "none is the current one";
        list.SetCurrentRow(1);
        list.UserMouseDown(controls::kRightButton, 0, 5, 1);
        EXPECT_TRUE(remove.Enabled());
        list.Remove(1);
        list.UserMenuKey();
        EXPECT_FALSE(remove.Enabled());
    }
}

TEST_F(Keys, EnterInTheFieldsOfTheSheetFramesPressesTheirButtons) {
    form.Text7.UserChange("3");
    form.Text7.KeyPress('3');
    EXPECT_EQ(form.ListView3.Count(), 0U);
    form.Text7.KeyPress(controls::kEnterKey);
    EXPECT_EQ(Column(form.ListView3, 0), (Texts{"Nový", "Nový", "Nový"}));
    EXPECT_EQ(form.sheets_history.UndoName(), "Udělej");
    form.Text6.UserChange("7");
    form.Text6.KeyPress('7');
    form.Text6.KeyPress(controls::kEnterKey);
    EXPECT_EQ(Column(form.ListView3, controls::kNewName), (Texts{"7", "8", "9"}));
    EXPECT_EQ(Status(), "Ocislovano: 9");
}

TEST_F(Keys, TheMenuKeyOnTheFileButtonsOffersWhatTheirRightClickDoes) {
    form.Command17.MenuKey();
    EXPECT_FALSE(form.m_Ulozit_pracovni.Enabled()) << "the list is empty";
    form.Command1.Click();
    form.Command17.MenuKey();
    EXPECT_TRUE(form.m_Ulozit_pracovni.Enabled());
    form.m_Ulozit_pracovni.Click();
    EXPECT_EQ(Status(), "Ulozeni listu ok C:\\Dorvak\\list.txt");
    HeadlessForm by_mouse;
    by_mouse.form.Command1.Click();
    by_mouse.form.Command17.MouseDown(controls::kRightButton, 0, 1, 1);
    EXPECT_EQ(files.stored, by_mouse.files.stored);

    form.ListView1.Clear();
    form.Command27.MenuKey();
    form.m_Otevrit_pracovni.Click();
    EXPECT_EQ(Status(), "Nacteni listu ok 10");
    ASSERT_EQ(popups.size(), 3U);
    EXPECT_EQ(popups[0], (std::pair<std::string, controls::PopupPlace>(
                             "Uložení", controls::PopupPlace::kCurrentRow)));
    EXPECT_EQ(popups[2].first, "Otevření");
    EXPECT_TRUE(dialogs.empty());
}

// ---- rows moved by keyboard against rows that are dragged

std::vector<std::uint64_t> Ids(const ListState& state) {
    std::vector<std::uint64_t> ids;
    std::ranges::transform(state.rows, std::back_inserter(ids), &testing_support::RowState::id);
    return ids;
}

struct MovesByKey : testing::TestWithParam<unsigned> {
    std::mt19937 random{GetParam()};

    std::size_t Below(std::size_t limit) { return random() % limit; }
};

// Rows whose names are numbers, no two alike, can be dragged: a key does exactly that. What the
// names are makes no difference to a key.
TEST_P(MovesByKey, ARowOfThePartsListGoesWhereADropOnItsNeighbourPutsIt) {
    const Texts odd_names{"Hřídel", "", "Hřídel", "0", "12a", "5", "5", "@@"};
    const Texts odd_positions{"", "7", "0012", "12a", "0007", "10", "x"};
    const std::size_t rows = 1 + Below(8);
    const bool odd = Below(2) == 0;
    HeadlessForm dragged;
    HeadlessForm keyed;
    HeadlessForm named;
    for (std::size_t row = 1; row <= rows; ++row) {
        const std::string position =
            odd ? odd_positions[Below(odd_positions.size())] : text::FourDigits(row);
        const bool checked = Below(2) == 0;
        const std::string number = std::to_string(100 + row);
        AddRow(dragged.form.ListView1, {number, position, "1", "", "S235"}, checked);
        AddRow(keyed.form.ListView1, {number, position, "1", "", "S235"}, checked);
        AddRow(named.form.ListView1,
               {odd_names[Below(odd_names.size())], position, "1", "", "S235"}, checked);
    }
    for (int move = 0; move < 5; ++move) {
        const std::size_t row = 1 + Below(rows);
        const int step = Below(2) == 0 ? 1 : -1;
        const auto neighbour = static_cast<std::ptrdiff_t>(row) + step;
        for (HeadlessForm* headless : {&keyed, &named}) {
            headless->form.ListView1.SetCurrentRow(row);
            headless->form.ListView1.UserMoveKey(step);
        }
        if (neighbour >= 1 && neighbour <= static_cast<std::ptrdiff_t>(rows)) {
            Drag(dragged.form.ListView1, static_cast<int>(row), static_cast<int>(neighbour));
        }
        const ListState expected = StateOf(dragged.form.ListView1);
        const ListState result = StateOf(keyed.form.ListView1);
        const ListState of_names = StateOf(named.form.ListView1);
        EXPECT_EQ(Ids(result), Ids(expected));
        EXPECT_EQ(Ids(of_names), Ids(expected));
        for (std::size_t i = 0; i < rows; ++i) {
            EXPECT_EQ(result.rows[i].texts, expected.rows[i].texts);
            EXPECT_EQ(Texts(of_names.rows[i].texts.begin() + 1, of_names.rows[i].texts.end()),
                      Texts(expected.rows[i].texts.begin() + 1, expected.rows[i].texts.end()));
        }
        EXPECT_FALSE(keyed.form.ListView1.Sorted());
    }
}

TEST_P(MovesByKey, ASheetGoesWhereADropOnItsNeighbourPutsItAndDetailsToo) {
    const Texts odd_names{"Sheet.1", "", "Sheet.1", "0", "Nový"};
    const std::size_t rows = 1 + Below(8);
    HeadlessForm dragged;
    HeadlessForm keyed;
    HeadlessForm named;
    std::size_t details = 0;
    for (std::size_t row = 1; row <= rows; ++row) {
        const std::string mark = Below(3) == 0 ? "A" + text::FourDigits(++details) : "";
        const std::string number = std::to_string(100 + row);
        for (HeadlessForm* headless : {&dragged, &keyed, &named}) {
            const std::string name =
                headless == &named ? odd_names[Below(odd_names.size())] : number;
            AddRow(headless->form.ListView3, {name, "new " + number}, mark.empty());
            headless->form.ListView3.SetTag(row, mark);
        }
    }
    for (int move = 0; move < 5; ++move) {
        const std::size_t row = 1 + Below(rows);
        const int step = Below(2) == 0 ? 1 : -1;
        const auto neighbour = static_cast<std::ptrdiff_t>(row) + step;
        for (HeadlessForm* headless : {&keyed, &named}) {
            headless->form.ListView3.SetCurrentRow(row);
            headless->form.ListView3.UserMoveKey(step);
        }
        if (neighbour >= 1 && neighbour <= static_cast<std::ptrdiff_t>(rows)) {
            Drag(dragged.form.ListView3, static_cast<int>(row), static_cast<int>(neighbour));
        }
        const ListState expected = StateOf(dragged.form.ListView3);
        EXPECT_EQ(Ids(StateOf(keyed.form.ListView3)), Ids(expected));
        EXPECT_EQ(Ids(StateOf(named.form.ListView3)), Ids(expected));
        EXPECT_EQ(Column(keyed.form.ListView3, controls::kNewName),
                  Column(dragged.form.ListView3, controls::kNewName));
    }
}

INSTANTIATE_TEST_SUITE_P(Lists, MovesByKey, testing::Range(1U, 201U));

} // namespace
