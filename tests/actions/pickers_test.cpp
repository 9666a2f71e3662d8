// The four pickers and the values that they remember.

#include <gtest/gtest.h>

#include "app/recovery.hpp"
#include "partslist/partslist.hpp"
#include "tests/support/headless_form.hpp"

namespace {

using testing_support::Column;
using testing_support::HeadlessForm;
using Texts = std::vector<std::string>;

constexpr const char* kMaterialFile = "C:\\Dorvak\\Material.txt";

struct Pickers : testing::Test, HeadlessForm {
    controls::ListView& list = form.ListView1;

    void Fill(std::size_t rows, const std::vector<std::size_t>& selected) {
        for (std::size_t row = 1; row <= rows; ++row) {
            list.Add("part " + std::to_string(row));
        }
        for (const std::size_t row : selected) {
            list.SetSelected(row, true);
        }
    }
    static void TypeAndEnter(controls::ComboBox& picker, const std::string& text) {
        picker.UserChange(text);
        picker.KeyPress(controls::kEnterKey);
    }
};

TEST_F(Pickers, EnterGivesTheTextToTheSelectedRowsAndRemembersItOnce) {
    Fill(5, {2, 4});
    TypeAndEnter(form.Combo1, "S235");
    EXPECT_EQ(Column(list, partslist::kMaterial), (Texts{"", "S235", "", "S235", ""}));
    EXPECT_EQ(form.Combo1.Items(), Texts{"S235"});
    form.Combo1.KeyPress(controls::kEnterKey);
    EXPECT_EQ(form.Combo1.Items(), Texts{"S235"});
}

TEST_F(Pickers, ALineEndInAPastedTextIsALineFeedInTheRow) {
    Fill(1, {1});
    TypeAndEnter(form.Combo3, "kalit\r\npopustit");
    EXPECT_EQ(list.SubItem(1, partslist::kNote), "kalit\npopustit");
    EXPECT_EQ(form.Combo3.Items(), Texts{"kalit\npopustit"});
}

TEST_F(Pickers, EachWritesItsOwnField) {
    Fill(1, {1});
    TypeAndEnter(form.Combo1, "ocel");
    TypeAndEnter(form.Combo2, "20x40");
    TypeAndEnter(form.Combo3, "kalit");
    TypeAndEnter(form.Combo4, "7");
    EXPECT_EQ(testing_support::RowTexts(list, 1),
              (Texts{"part 1", "", "7", "", "ocel", "20x40", "kalit"}));
}

TEST_F(Pickers, TheQuantityPickerWritesIntoTheQuantityColumn) {
    Fill(1, {1});
    TypeAndEnter(form.Combo4, "3");
    EXPECT_EQ(form.Combo4.Label(), "Kusu");
    EXPECT_EQ(list.Columns()[partslist::kQuantity], "kusů");
    EXPECT_EQ(list.SubItem(1, partslist::kQuantity), "3");
}

TEST_F(Pickers, TheButtonsDoExactlyWhatEnterDoes) {
    Fill(2, {2});
    list.SetCurrentRow(2);
    list.UserClick();
    form.Combo1.UserChange("a");
    form.Combo2.UserChange("b");
    form.Combo3.UserChange("c");
    form.Combo4.UserChange("d");
    form.Command12.Click();
    form.Command13.Click();
    form.Command14.Click();
    form.Command15.Click();
    EXPECT_EQ(testing_support::RowTexts(list, 2), (Texts{"part 2", "", "d", "", "a", "b", "c"}));
    EXPECT_EQ(form.Combo2.Items(), Texts{"b"});
}

TEST_F(Pickers, OtherKeysAreLeftToTheField) {
    Fill(1, {1});
    form.Combo1.UserChange("S235");
    form.Combo1.KeyPress('S');
    EXPECT_EQ(list.SubItem(1, partslist::kMaterial), "");
    EXPECT_TRUE(form.Combo1.Items().empty());
}

TEST_F(Pickers, PickersAndTheirButtonsWaitForTheFirstClickOnARow) {
    EXPECT_FALSE(form.Combo1.Enabled());
    EXPECT_FALSE(form.Command12.Enabled());
    Fill(1, {1});
    list.SetCurrentRow(1);
    list.UserClick();
    EXPECT_TRUE(form.Combo1.Enabled());
    EXPECT_TRUE(form.Command12.Enabled() && form.Command13.Enabled() && form.Command14.Enabled() &&
                form.Command15.Enabled());
}

TEST_F(Pickers, EnterOnAnEmptyPickerRemembersAnEmptyValueThatIsNotWritten) {
    TypeAndEnter(form.Combo1, "");
    EXPECT_EQ(form.Combo1.Items(), Texts{""});
    TypeAndEnter(form.Combo1, "S235");
    partslist::Ulozit_List(form, form.Combo1);
    EXPECT_EQ(files.stored[kMaterialFile], "S235\r\n");
}

TEST_F(Pickers, ValuesAreComparedExactly) {
    TypeAndEnter(form.Combo1, "ocel");
    TypeAndEnter(form.Combo1, "Ocel");
    TypeAndEnter(form.Combo1, "ocel ");
    EXPECT_EQ(form.Combo1.Items(), (Texts{"ocel", "Ocel", "ocel "}));
}

TEST_F(Pickers, AFileWithBlankLinesLoadsItsOneValueBlanksIncluded) {
    files.stored[kMaterialFile] = "\r\n   \r\n  oak \r\n\r\n";
    partslist::Nacist_List(form, form.Combo1);
    EXPECT_EQ(form.Combo1.Items(), Texts{"  oak "});
    EXPECT_EQ(Status(), std::string("Nacteni ok ") + kMaterialFile);
}

TEST_F(Pickers, LoadingKeepsWhatIsThereAndDropsNoDuplicates) {
    form.Combo1.AddItem("S235");
    files.stored[kMaterialFile] = "S235\r\nC45\r\nC45";
    partslist::Nacist_List(form, form.Combo1);
    EXPECT_EQ(form.Combo1.Items(), (Texts{"S235", "S235", "C45", "C45"}));
}

TEST_F(Pickers, AMissingFileOnlyShowsTheMessageInTheWordsOfSaving) {
    partslist::Nacist_List(form, form.Combo1);
    EXPECT_EQ(Status(), "Ulozeni Error 53 File not found");
    EXPECT_TRUE(form.Combo1.Items().empty());
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(Pickers, AFileThatCannotBeReadIsReported) {
    files.failing.emplace(kMaterialFile, automation::RunTimeError(70, "Permission denied"));
    partslist::Nacist_List(form, form.Combo1);
    EXPECT_EQ(Status(), "Ulozeni Error 70 Permission denied");
}

TEST_F(Pickers, AFileThatCannotBeWrittenIsReported) {
    files.stored[kMaterialFile] = "old\r\n";
    files.failing.emplace(kMaterialFile, automation::RunTimeError(61, "Disk full"));
    TypeAndEnter(form.Combo1, "S235");
    partslist::Ulozit_List(form, form.Combo1);
    EXPECT_EQ(Status(), "Ulozeni Error 61 Disk full");
    EXPECT_EQ(files.stored[kMaterialFile], "old\r\n");
}

TEST_F(Pickers, SavingWithoutValuesLeavesTheOldFile) {
    files.stored[kMaterialFile] = "old\r\n";
    partslist::Ulozit_List(form, form.Combo1);
    EXPECT_EQ(files.stored[kMaterialFile], "old\r\n");
    EXPECT_EQ(Status(), "");
}

TEST_F(Pickers, SavingSaysWhere) {
    TypeAndEnter(form.Combo3, "kalit");
    partslist::Ulozit_List(form, form.Combo3);
    EXPECT_EQ(Status(), "Ulozeni ok C:\\Dorvak\\Poznamka.txt");
}

TEST_F(Pickers, StartUpLoadsAndClosingSavesAllFourInOrder) {
    for (const char* tag : {"Material", "Velikost", "Poznamka", "Kusu"}) {
        files.stored[std::string("C:\\Dorvak\\") + tag + ".txt"] = std::string(tag) + "1\r\n";
    }
    app::Form_Load(form);
    EXPECT_EQ(form.Combo1.Items(), Texts{"Material1"});
    EXPECT_EQ(form.Combo4.Items(), Texts{"Kusu1"});
    EXPECT_EQ(messages,
              (Texts{"Nacteni ok C:\\Dorvak\\Material.txt", "Nacteni ok C:\\Dorvak\\Velikost.txt",
                     "Nacteni ok C:\\Dorvak\\Poznamka.txt", "Nacteni ok C:\\Dorvak\\Kusu.txt",
                     "Nacteni Error 53 File not found"}));
    messages.clear();
    TypeAndEnter(form.Combo2, "20x40");
    app::RequestClose(form);
    EXPECT_EQ(messages,
              (Texts{"Ulozeni ok C:\\Dorvak\\Material.txt", "Ulozeni ok C:\\Dorvak\\Velikost.txt",
                     "Ulozeni ok C:\\Dorvak\\Poznamka.txt", "Ulozeni ok C:\\Dorvak\\Kusu.txt"}));
    EXPECT_EQ(files.stored["C:\\Dorvak\\Velikost.txt"], "Velikost1\r\n20x40\r\n");
}

constexpr const char* kInitialMaterials = R"(C:\Program\Hodnoty\Material.txt)";

TEST_F(Pickers, TheFirstStartTakesTheValuesThatTheProgramBrings) {
    files.stored[kInitialMaterials] = "S235JR\r\nC45\r\n";
    app::Form_Load(form);
    EXPECT_EQ(form.Combo1.Items(), (Texts{"S235JR", "C45"}));
    EXPECT_EQ(messages.front(), std::string("Nacteni ok ") + kInitialMaterials);
    EXPECT_TRUE(form.Combo2.Items().empty()) << "it brings none of these";
    EXPECT_EQ(files.stored[kMaterialFile], "S235JR\r\nC45\r\n")
        << "they are the person's at once, whatever happens before the end";
}

TEST_F(Pickers, ThePersonsValuesStandBeforeThoseThatTheProgramBrings) {
    files.stored[kInitialMaterials] = "S235JR\r\n";
    files.stored[kMaterialFile] = "dub\r\n";
    app::Form_Load(form);
    EXPECT_EQ(form.Combo1.Items(), Texts{"dub"});
    EXPECT_EQ(files.stored[kMaterialFile], "dub\r\n");
}

TEST_F(Pickers, ValuesOfAnEarlierRunElsewhereStandBeforeThoseThatTheProgramBrings) {
    files.stored[kInitialMaterials] = "S235JR\r\n";
    files.other_folder = "C:\\Other";
    files.stored["C:\\Other\\Material.txt"] = "dub\r\n";
    app::Form_Load(form);
    EXPECT_EQ(form.Combo1.Items(), Texts{"dub"});
}

TEST_F(Pickers, InitialValuesThatWereForgottenDoNotComeBack) {
    files.stored[kInitialMaterials] = "S235JR\r\n";
    app::Form_Load(form);
    ASSERT_EQ(form.Combo1.Items(), Texts{"S235JR"});
    form.Combo1.Forget(0);
    app::RequestClose(form);
    HeadlessForm next;
    next.files.stored = files.stored;
    app::Form_Load(next.form);
    EXPECT_TRUE(next.form.Combo1.Items().empty());
}

TEST_F(Pickers, InitialValuesAreOfferedAlsoWhereTheyCannotBeKept) {
    files.stored[kInitialMaterials] = "S235JR\r\n";
    files.failing.emplace(kMaterialFile, automation::RunTimeError(61, "Disk full"));
    app::Form_Load(form);
    EXPECT_EQ(form.Combo1.Items(), Texts{"S235JR"});
    EXPECT_EQ(messages.front(), "Ulozeni Error 61 Disk full");
}

TEST_F(Pickers, AForgottenValueIsNotInTheFileAtTheEnd) {
    files.stored[kMaterialFile] = "C45\r\nS235\r\nC45\r\n";
    app::Form_Load(form);
    form.Combo1.UserChange("S235");
    form.Combo1.Forget(1);
    EXPECT_EQ(form.Combo1.Items(), (Texts{"C45", "C45"}));
    EXPECT_EQ(form.Combo1.Text(), "S235") << "what is typed stays";
    form.Combo1.Forget(2);
    EXPECT_EQ(form.Combo1.Items(), (Texts{"C45", "C45"})) << "there is none of that number";
    EXPECT_EQ(files.stored[kMaterialFile], "C45\r\nS235\r\nC45\r\n");
    app::RequestClose(form);
    EXPECT_EQ(files.stored[kMaterialFile], "C45\r\nC45\r\n");
}

TEST_F(Pickers, TheLastValueIsForgottenAtOnce) {
    files.stored[kMaterialFile] = "C45\r\n";
    app::Form_Load(form);
    form.Combo1.Forget(0);
    app::RequestClose(form);
    EXPECT_EQ(files.stored[kMaterialFile], "");
    HeadlessForm next;
    next.files.stored = files.stored;
    app::Form_Load(next.form);
    EXPECT_TRUE(next.form.Combo1.Items().empty());
}

TEST_F(Pickers, AFileThatCannotBeWrittenKeepsTheForgottenValueAndSaysSo) {
    files.stored[kMaterialFile] = "C45\r\n";
    app::Form_Load(form);
    files.failing.emplace(kMaterialFile, automation::RunTimeError(70, "Permission denied"));
    form.Combo1.Forget(0);
    EXPECT_TRUE(form.Combo1.Items().empty());
    EXPECT_EQ(Status(), "Ulozeni Error 70 Permission denied");
}

TEST_F(Pickers, AValueTakenInTheOthersPlaceIsAChangeForRecovery) {
    app::Form_Load(form);
    app::OfferRecovery(form);
    TypeAndEnter(form.Combo1, "C45");
    app::KeepRecoveryNow(form);
    TypeAndEnter(form.Combo1, "S235");
    form.Combo1.Forget(0);
    app::KeepRecoveryNow(form);
    const std::string kept = files.stored["C:\\Dorvak\\obnova.txt"];
    EXPECT_EQ(kept.find("C45"), std::string::npos) << kept;
    EXPECT_NE(kept.find("S235"), std::string::npos) << kept;
}

} // namespace
