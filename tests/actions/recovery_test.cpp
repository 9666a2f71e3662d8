// What a crash, a failed save or a moved data folder leaves: the recovery file, the closing box,
// the files kept beside the working file.

#include <gtest/gtest.h>

#include "app/recovery.hpp"
#include "tests/support/headless_form.hpp"

namespace {

using testing_support::AddRow;
using testing_support::Column;
using testing_support::HeadlessForm;
using testing_support::kWorkingFile;
using Texts = std::vector<std::string>;

constexpr const char* kBackup = "C:\\Dorvak\\list.bak";
constexpr const char* kRecovery = "C:\\Dorvak\\obnova.txt";
constexpr const char* kRefused = "C:\\Dorvak\\obnova-minula.txt";
constexpr const char* kOneRow = "a@@False@@0001@@1@@@@@@@@\r\n";

const automation::RunTimeError kDiskFull(61, "Disk full");

// A program that has started, and what the next one on the same files finds.
struct Recovery : testing::Test {
    Recovery() { Start(); }

    void Start() {
        std::map<std::string, std::string, std::less<>> files;
        std::map<std::string, int, std::less<>> written;
        std::map<std::string, std::string> settings;
        if (program) {
            files = program->files.stored;
            written = program->files.written;
            settings = program->settings.stored;
        }
        program = std::make_unique<HeadlessForm>();
        program->files.stored = files;
        program->files.written = written;
        program->settings.stored = settings;
        program->message_boxes.answer = answer;
        program->message_boxes.while_asking = [this] { controls::Raise(while_asking); };
        program->files.failing = failing;
        program->clock.seconds = 14 * 3600 + 32 * 60 + 59;
        app::Form_Load(form());
        app::OfferRecovery(form());
    }
    controls::Form1& form() { return program->form; }
    controls::ListView& list() { return form().ListView1; }
    std::map<std::string, std::string, std::less<>>& stored() { return program->files.stored; }
    Texts& questions() { return program->message_boxes.questions; }

    void AddPart(const std::string& name) {
        form().m_Pridat.Click();
        list().UserRename(list().Row(list().Count()).id, name);
    }
    // The person rests, and the program looks.
    void Rest() {
        now += 10'000;
        app::KeepRecovery(form(), now);
        now += 10'000;
        app::KeepRecovery(form(), now);
    }

    bool answer = true;
    std::function<void()> while_asking;
    std::map<std::string, automation::RunTimeError, std::less<>> failing; // when it starts
    long long now = 1000;
    std::unique_ptr<HeadlessForm> program;
};

TEST_F(Recovery, KeepsAChangeAfterTwoSecondsAtRest) {
    app::KeepRecovery(form(), 0);
    AddPart("a");
    app::KeepRecovery(form(), 100);
    app::KeepRecovery(form(), 2000);
    EXPECT_FALSE(stored().contains(kRecovery));
    app::KeepRecovery(form(), 2100);
    EXPECT_TRUE(stored().contains(kRecovery));
}

TEST_F(Recovery, KeepsChangesThatNeverRestAfterEightSeconds) {
    long long time = 0;
    for (; time < 8000; time += 500) {
        AddPart(std::to_string(time));
        app::KeepRecovery(form(), time);
        EXPECT_FALSE(stored().contains(kRecovery)) << time;
    }
    AddPart("last");
    app::KeepRecovery(form(), time);
    EXPECT_TRUE(stored().contains(kRecovery));
}

TEST_F(Recovery, KeepsTheListAtAYieldAfterEightSeconds) {
    app::Dispatch(
        form(),
        [this] {
            list().Add("a");
            app::KeepRecovery(form(), 0);
            app::KeepRecovery(form(), 7999);
            EXPECT_FALSE(stored().contains(kRecovery));
            app::KeepRecovery(form(), 8000);
            EXPECT_TRUE(stored().contains(kRecovery));
        },
        "long");
    form().m_Zpet.Click();
    EXPECT_EQ(list().Count(), 0U);
}

TEST_F(Recovery, WritesNothingWhileNothingChanges) {
    Rest();
    list().SelectAll();
    Rest();
    EXPECT_FALSE(stored().contains(kRecovery));
    AddPart("a");
    Rest();
    const int writes = program->files.written.at(kRecovery);
    Rest();
    EXPECT_EQ(program->files.written.at(kRecovery), writes);
}

TEST_F(Recovery, KeepsConfigurationAndPickersValuesToo) {
    form().Text2.UserChange("/vyska1;9\r\n\t\\n|");
    Rest();
    EXPECT_TRUE(stored().contains(kRecovery));
    form().Combo1.SetText("S235\\");
    form().Combo1.KeyPress(controls::kEnterKey);
    Rest();
    Start();
    EXPECT_EQ(form().Text2.Text(), "/vyska1;9\r\n\t\\n|");
    EXPECT_EQ(form().Combo1.Items(), Texts{"S235\\"});
}

TEST_F(Recovery, ACleanEndRemovesIt) {
    AddPart("a");
    Rest();
    app::RequestClose(form());
    EXPECT_FALSE(stored().contains(kRecovery));
    Start();
    EXPECT_EQ(questions(), Texts{});
    EXPECT_EQ(Column(list(), 0), Texts{"a"});
}

TEST_F(Recovery, OffersWhatACrashHasLeftAndTakesItAsAStep) {
    stored()[kWorkingFile] = kOneRow;
    Start();
    AddPart("b\t@@\r\n\\r");
    list().UserCheck(2, true);
    Rest();
    Start();
    EXPECT_EQ(questions(),
              Texts{"Program minule neskončil řádně. Obnovit seznam z 14:32 (2 řádky)?"});
    EXPECT_EQ(Column(list(), 0), (Texts{"a", "b\t@@\r\n\\r"}));
    EXPECT_TRUE(list().Row(2).checked);
    EXPECT_EQ(list().SubItem(2, controls::kSheet), "2");
    EXPECT_EQ(program->RowCount(), "Pozic: 2");
    EXPECT_EQ(form().m_Zpet.caption, "Zpět: Obnovení");
    form().m_Zpet.Click();
    EXPECT_EQ(Column(list(), 0), Texts{"a"});
}

TEST_F(Recovery, CountsRowsInCzech) {
    AddPart("1");
    Rest();
    Start();
    EXPECT_NE(questions().at(0).find("(1 řádek)"), std::string::npos);
    for (int row = 2; row <= 5; ++row) {
        AddPart(std::to_string(row));
    }
    Rest();
    Start();
    EXPECT_NE(questions().at(0).find("(5 řádků)"), std::string::npos);
}

TEST_F(Recovery, WhatIsNotTakenStaysUnderAnotherName) {
    AddPart("a");
    Rest();
    const std::string left = stored()[kRecovery];
    answer = false;
    Start();
    EXPECT_EQ(list().Count(), 0U);
    EXPECT_EQ(stored()[kRefused], left);
    Start(); // it is not offered again
    EXPECT_EQ(questions(), Texts{});
    AddPart("b");
    Rest();
    app::RequestClose(form());
    EXPECT_EQ(stored()[kRefused], left);
    EXPECT_FALSE(stored().contains(kRecovery));
}

TEST_F(Recovery, ASecondCrashBeforeAnythingChangesLosesNothing) {
    AddPart("a");
    Rest();
    Start();
    Start();
    EXPECT_EQ(questions().size(), 1U);
    EXPECT_EQ(Column(list(), 0), Texts{"a"});
}

TEST_F(Recovery, AsksNothingWhereTheListWasSavedAfterwards) {
    AddPart("a");
    Rest();
    AddPart("b");
    form().Command17.MouseDown(controls::kRightButton, 0, 1, 1);
    Start();
    EXPECT_EQ(questions(), Texts{});
    EXPECT_EQ(Column(list(), 0), (Texts{"a", "b"}));
    EXPECT_TRUE(stored().contains(kRefused));
}

TEST_F(Recovery, AFileThatIsNoneIsPutAside) {
    const Texts broken{"", "obnova\t14:32\r\n", "obnova\t14:32\r\nradek\t1\ta\r\nkonec\r\n",
                       "obnova\t14:32\r\nradek\t1\ta\t\t\t\t\t\t\r\n",
                       "something else\r\nkonec\r\n"};
    for (const std::string& text : broken) {
        stored()[kRecovery] = text;
        Start();
        EXPECT_EQ(questions(), Texts{}) << text;
        EXPECT_EQ(list().Count(), 0U) << text;
        EXPECT_EQ(stored()[kRefused], text);
        EXPECT_TRUE(form().recovery.on);
    }
}

TEST_F(Recovery, AFileThatCannotBePutAsideIsNotOverwritten) {
    AddPart("a");
    Rest();
    const std::string left = stored()[kRecovery];
    auto next = std::make_unique<HeadlessForm>();
    next->files.stored = stored();
    next->files.failing.emplace(kRefused, kDiskFull);
    next->message_boxes.answer = false;
    app::Form_Load(next->form);
    app::OfferRecovery(next->form);
    next->form.m_Pridat.Click();
    app::KeepRecovery(next->form, 100);
    app::KeepRecovery(next->form, 100'000);
    EXPECT_EQ(next->files.stored[kRecovery], left);
}

TEST_F(Recovery, WhatCouldNotBePutAsideIsPutAsideAsSoonAsThatCanBe) {
    AddPart("a");
    Rest();
    const std::string left = stored()[kRecovery];
    answer = false;
    failing.emplace(kRefused, kDiskFull);
    Start();
    AddPart("b");
    Rest();
    EXPECT_EQ(stored()[kRecovery], left);
    program->files.failing.clear();
    failing.clear();
    Rest();
    EXPECT_EQ(stored()[kRefused], left);
    answer = true;
    Start(); // after a crash
    EXPECT_EQ(Column(list(), 0), Texts{"b"});
}

TEST_F(Recovery, WhatCannotBePutAsideStaysAlsoAtACleanEnd) {
    AddPart("a");
    Rest();
    const std::string left = stored()[kRecovery];
    answer = false;
    failing.emplace(kRefused, kDiskFull);
    Start();
    AddPart("b");
    app::RequestClose(form());
    EXPECT_EQ(stored()[kRecovery], left);
}

TEST_F(Recovery, AQuestionThatNobodyCouldAnswerIsAskedAgain) {
    const std::vector<void (*)(controls::Form1&)> ends{app::EndSession, app::RequestClose};
    for (const bool came_back : {false, true}) {
        for (const auto end : ends) {
            program.reset();
            Start();
            stored()[kWorkingFile] = kOneRow;
            Start();
            AddPart("b");
            Rest();
            answer = came_back;
            while_asking = [&] { end(form()); };
            Start();
            ASSERT_TRUE(form().unloaded);
            EXPECT_FALSE(stored().contains(kRefused));
            while_asking = nullptr;
            answer = true;
            Start();
            EXPECT_EQ(questions().size(), 1U);
            EXPECT_EQ(Column(list(), 0), (Texts{"a", "b"}));
        }
    }
}

TEST_F(Recovery, AFileThatCouldNotBeReadIsOfferedByTheNextStart) {
    stored()[kWorkingFile] = kOneRow;
    Start();
    AddPart("b");
    Rest();
    failing.emplace(kRecovery, automation::RunTimeError(70, "Permission denied"));
    Start();
    EXPECT_EQ(questions(), Texts{});
    AddPart("c");
    failing.clear();
    program->files.failing.clear();
    app::RequestClose(form());
    Start();
    EXPECT_EQ(questions().size(), 1U);
    EXPECT_EQ(Column(list(), 0), (Texts{"a", "b"}));
    form().m_Zpet.Click();
    EXPECT_EQ(Column(list(), 0), (Texts{"a", "c"}));
}

TEST_F(Recovery, ACopyThatDoesNotOwnTheFolderLeavesTheFileOfTheOneThatDoes) {
    AddPart("a");
    Rest();
    HeadlessForm second;
    second.files.stored = stored();
    second.files.written = program->files.written;
    app::Form_Load(second.form);
    second.form.m_Pridat.Click();
    app::KeepRecovery(second.form, 100);
    app::KeepRecovery(second.form, 100'000);
    app::RequestClose(second.form);
    EXPECT_EQ(second.files.stored[kRecovery], stored()[kRecovery]);
    EXPECT_EQ(second.files.written[kRecovery], program->files.written[kRecovery]);
}

TEST_F(Recovery, AWriteThatFailsIsTriedAgain) {
    program->files.failing.emplace(kRecovery, kDiskFull);
    AddPart("a");
    Rest();
    EXPECT_FALSE(stored().contains(kRecovery));
    program->files.failing.clear();
    Rest();
    EXPECT_TRUE(stored().contains(kRecovery));
}

// Closing

struct ClosingSave : Recovery {
    ClosingSave() {
        AddPart("a");
        Rest();
        program->files.failing.emplace(kWorkingFile, kDiskFull);
    }
    std::deque<platform::AfterFailedSave>& answers() {
        return program->message_boxes.after_failed_save;
    }
    const Texts& reasons() { return program->message_boxes.failed_saves; }
};

TEST_F(ClosingSave, ThatFailsIsTriedAgain) {
    answers() = {platform::AfterFailedSave::kTryAgain, platform::AfterFailedSave::kTryAgain};
    app::RequestClose(form());
    EXPECT_EQ(reasons(), (Texts(3, "C:\\Dorvak\\list.txt\nDisk je plný. Uvolněte na něm místo.")));
    EXPECT_TRUE(form().unloaded);
    EXPECT_EQ(program->Status(), "Ulozeni Error 61 Disk full");
}

TEST_F(ClosingSave, GoesElsewhereWithADialogOfItsOwn) {
    form().CMD.file_name = "C:\\before.tab";
    answers() = {platform::AfterFailedSave::kChooseFile};
    program->chosen_file = "D:\\jinam.tab";
    app::RequestClose(form());
    EXPECT_EQ(stored()["D:\\jinam.tab"], "a@@False@@0001@@1@@@@@@@@\r\n");
    EXPECT_EQ(form().CMD.file_name, "C:\\before.tab");
    EXPECT_EQ(reasons().size(), 1U);
    EXPECT_FALSE(stored().contains(kRecovery));
}

TEST_F(ClosingSave, AsksAgainWhereElsewhereFailsOrIsCancelled) {
    answers() = {platform::AfterFailedSave::kChooseFile, platform::AfterFailedSave::kChooseFile};
    program->files.failing.emplace("D:\\jinam.tab", automation::RunTimeError(76, "Path not found"));
    program->chosen_file = "D:\\jinam.tab";
    app::RequestClose(form());
    EXPECT_EQ(reasons().size(), 3U);
    EXPECT_EQ(reasons()[1],
              "D:\\jinam.tab\nSložka neexistuje. Zkontrolujte, zda je disk připojený.");
}

TEST_F(ClosingSave, AsksAgainWhereTheDialogCannotOpen) {
    answers() = {platform::AfterFailedSave::kChooseFile, platform::AfterFailedSave::kTryAgain};
    form().show_save_dialog = [this](controls::FileDialog&) -> bool {
        program->files.failing.erase(kWorkingFile);
        throw automation::InvalidProcedureCall();
    };
    app::RequestClose(form());
    EXPECT_EQ(reasons().size(), 2U);
    EXPECT_EQ(stored()[kWorkingFile], "a@@False@@0001@@1@@@@@@@@\r\n");
    EXPECT_TRUE(program->message_boxes.shown.empty());
}

TEST_F(ClosingSave, AnExistingFileElsewhereIsReplacedOnlyWhenAskedFor) {
    stored()["D:\\jinam.tab"] = "other";
    answers() = {platform::AfterFailedSave::kChooseFile};
    program->chosen_file = "D:\\jinam.tab";
    program->message_boxes.answer = false;
    app::RequestClose(form());
    EXPECT_EQ(stored()["D:\\jinam.tab"], "other");
    EXPECT_EQ(reasons().size(), 2U);
}

TEST_F(ClosingSave, WithoutSavingLeavesNoRecovery) {
    app::RequestClose(form());
    EXPECT_FALSE(stored().contains(kRecovery));
    EXPECT_TRUE(form().unloaded);
}

TEST_F(ClosingSave, WhoseBoxCannotOpenLeavesTheRecovery) {
    program->message_boxes.cannot_ask = true;
    app::RequestClose(form());
    EXPECT_TRUE(form().unloaded);
    Start();
    EXPECT_EQ(Column(list(), 0), Texts{"a"});
}

TEST_F(ClosingSave, AtTheEndOfTheSessionAsksNothingAndLeavesTheRecovery) {
    AddPart("b"); // since the recovery was written
    program->settings.broken = true;
    app::EndSession(form());
    EXPECT_EQ(reasons(), Texts{});
    EXPECT_TRUE(program->message_boxes.shown.empty());
    EXPECT_TRUE(form().unloaded);
    Start();
    EXPECT_EQ(Column(list(), 0), (Texts{"a", "b"}));
}

TEST_F(Recovery, StaysWherePickersValuesCouldNotBeSaved) {
    form().Combo1.SetText("S235");
    form().Combo1.KeyPress(controls::kEnterKey);
    Rest();
    program->files.failing.emplace("C:\\Dorvak\\Material.txt", kDiskFull);
    app::RequestClose(form());
    Start();
    EXPECT_EQ(form().Combo1.Items(), Texts{"S235"});
}

TEST_F(Recovery, HasAlsoPickersValuesOfTheLastMomentThatCouldNotBeSaved) {
    AddPart("a");
    form().Combo1.SetText("S235");
    form().Combo1.KeyPress(controls::kEnterKey);
    program->files.failing.emplace("C:\\Dorvak\\Material.txt", kDiskFull);
    app::RequestClose(form());
    Start();
    EXPECT_EQ(form().Combo1.Items(), Texts{"S235"});
}

// Whichever file cannot be written, what is on the disk afterwards holds the person's work.
TEST_F(Recovery, WhicheverWriteFailsTheNextStartHasEverything) {
    const Texts paths{"C:\\Dorvak\\Material.txt",
                      "C:\\Dorvak\\Velikost.txt",
                      "C:\\Dorvak\\Poznamka.txt",
                      "C:\\Dorvak\\Kusu.txt",
                      kWorkingFile,
                      kBackup,
                      kRecovery};
    for (const std::string& path : paths) {
        for (const long number : {61L, 70L, 75L, 76L}) {
            SCOPED_TRACE(path + " " + std::to_string(number));
            program.reset();
            Start();
            stored()[kWorkingFile] = kOneRow;
            Start();
            AddPart("Hřídel");
            for (controls::ComboBox* picker :
                 {&form().Combo1, &form().Combo2, &form().Combo3, &form().Combo4}) {
                picker->SetText("v");
                picker->KeyPress(controls::kEnterKey);
            }
            Rest();
            program->files.failing.emplace(path, automation::RunTimeError(number, "failed"));
            AddPart("Kolo");
            Rest();
            app::EndSession(form());
            if (path == kRecovery) {
                EXPECT_TRUE(stored().contains(kWorkingFile));
            }
            Start();
            EXPECT_EQ(Column(list(), 0), (Texts{"a", "Hřídel", "Kolo"}));
            EXPECT_EQ(form().Combo1.Items(), Texts{"v"});
            EXPECT_EQ(form().Combo4.Items(), Texts{"v"});
        }
    }
}

// The working file

TEST_F(Recovery, ASaveKeepsTheFileBefore) {
    stored()[kWorkingFile] = kOneRow;
    Start();
    AddPart("b");
    form().Command17.MouseDown(controls::kRightButton, 0, 1, 1);
    EXPECT_EQ(stored()[kBackup], kOneRow);
    program->chosen_file = "C:\\x\\skříň.tab";
    stored()["C:\\x\\skříň.tab"] = "old";
    form().Command17.Click();
    EXPECT_EQ(stored()["C:\\x\\skříň.bak"], "old");
    program->chosen_file = "C:\\x.y\\file";
    stored()["C:\\x.y\\file"] = "old";
    form().Command17.Click();
    EXPECT_EQ(stored()["C:\\x.y\\file.bak"], "old");
}

TEST_F(Recovery, AWorkingFileThatWasNotReadToItsEndIsKept) {
    const std::string unread = std::string(kOneRow) + "\r\nb@@False\r\n";
    constexpr const char* kKept = "C:\\Dorvak\\list 2026-03-01 14-32-05.txt";
    stored()[kWorkingFile] = unread;
    Start();
    ASSERT_EQ(list().Count(), 1U);
    form().Command17.MouseDown(controls::kRightButton, 0, 1, 1);
    EXPECT_EQ(stored()[kKept], unread);
    EXPECT_EQ(stored()[kWorkingFile], kOneRow);

    stored().erase(kKept); // the next save finds nothing unread
    form().Command17.MouseDown(controls::kRightButton, 0, 1, 1);
    EXPECT_FALSE(stored().contains(kKept));

    stored()[kWorkingFile] = unread;
    form().Command27.MouseDown(controls::kRightButton, 0, 1, 1);
    app::RequestClose(form());
    EXPECT_EQ(stored()[kKept], unread);
}

TEST_F(Recovery, AnUnreadWorkingFileThatCannotBeKeptIsNotOverwritten) {
    const std::string unread = std::string(kOneRow) + "\r\nb@@False\r\n";
    stored()[kWorkingFile] = unread;
    Start();
    program->files.failing.emplace("C:\\Dorvak\\list 2026-03-01 14-32-05.txt", kDiskFull);
    form().Command17.MouseDown(controls::kRightButton, 0, 1, 1);
    EXPECT_EQ(program->Status(), "Ulozeni Error 61 Disk full");
    EXPECT_EQ(stored()[kWorkingFile], unread);
}

TEST_F(Recovery, PickersValuesThatCouldNotBeReadAreKept) {
    constexpr const char* kValues = "C:\\Dorvak\\Material.txt";
    constexpr const char* kKept = "C:\\Dorvak\\Material 2026-03-01 14-32-05.txt";
    stored()[kValues] = "S235\r\n14 220\r\n";
    failing.emplace(kValues, automation::RunTimeError(70, "Permission denied"));
    Start();
    form().Combo1.SetText("bronz");
    form().Combo1.KeyPress(controls::kEnterKey);
    program->files.failing.clear();
    app::RequestClose(form());
    EXPECT_EQ(stored()[kKept], "S235\r\n14 220\r\n");
    EXPECT_EQ(stored()[kValues], "bronz\r\n");

    failing.clear();
    stored().erase(kKept); // what was read to its end needs no copy
    Start();
    form().Combo1.SetText("cín");
    form().Combo1.KeyPress(controls::kEnterKey);
    app::RequestClose(form());
    EXPECT_FALSE(stored().contains(kKept));
}

TEST_F(Recovery, OfTwoFoldersTheNewerFileIsLoadedAndSaidSo) {
    constexpr const char* kOther = "D:\\Data\\list.txt";
    const auto start = [this](int own, int other) {
        program = std::make_unique<HeadlessForm>();
        program->files.other_folder = "D:\\Data";
        if (own > 0) {
            stored()[kWorkingFile] = kOneRow;
            program->files.written[kWorkingFile] = own;
        }
        if (other > 0) {
            stored()[kOther] = "other@@False\r\n";
            program->files.written[kOther] = other;
        }
        app::Form_Load(form());
        app::OfferRecovery(form());
    };
    start(1, 2);
    EXPECT_EQ(Column(list(), 0), Texts{"other"});
    EXPECT_EQ(form().StatusBar1.ShownExplanation().text,
              "Seznam je načtený ze souboru D:\\Data\\list.txt, který je novější než "
              "C:\\Dorvak\\list.txt.");
    EXPECT_EQ(program->Status(), "Nacteni listu ok 1");
    app::RequestClose(form());
    EXPECT_EQ(stored()[kWorkingFile], "other@@False@@@@@@@@@@@@\r\n");
    EXPECT_EQ(stored()[kBackup], kOneRow);

    start(2, 1);
    EXPECT_EQ(Column(list(), 0), Texts{"a"});
    EXPECT_EQ(form().StatusBar1.ShownExplanation().text, "");
    start(0, 1);
    EXPECT_EQ(Column(list(), 0), Texts{"other"});
    EXPECT_EQ(form().StatusBar1.ShownExplanation().text, "");
    start(0, 0);
    EXPECT_EQ(program->Status(), "Nacteni Error 53 File not found");
}

} // namespace
