// What a failing, busy or missing CATIA leaves behind, over COM.
#include <array>
#include <fstream>
#include <memory>

#include "fixture.hpp"

using namespace driver;

namespace {

constexpr const char* kCreated = "Tabulka vytvorena Ok ";

std::unique_ptr<CatiaSession> Gearbox() {
    return std::make_unique<CatiaSession>(std::vector<std::string>{kProduct, kDrawing});
}

class Failure : public DesktopTest {
  protected:
    void Walk() const {
        dorvak_.OpenPage(kStructurePage);
        dorvak_.Press(ID_Command3);
    }
    void StartTable() const {
        dorvak_.OpenPage(kExportPage);
        dorvak_.Press(ID_Command11);
    }
    // A short list and the drawing as the active document.
    void PrepareTable() const {
        FillList(dorvak_, "\r\n0\tTop\r\n1\tA\tTop\r\n1\tB\tTop\r\n1\tB\tTop", 2);
        catia_->Do("activate Gearbox.CATDrawing");
    }

    // Waits until the session has been called `calls` times since its log was cleared, and sees
    // that it stays so.
    void WaitForLastCall(int calls) const {
        const auto made = [this] { return CallsMade(catia_->Log()); };
        WaitUntil("call " + std::to_string(calls), [&] { return made() >= calls; });
        Sleep(300);
        EXPECT_EQ(made(), calls);
    }

    // The pointer that shows over the window's strip, which is no text field.
    [[nodiscard]] HCURSOR Pointer() const {
        const HWND strip = dorvak_[ID_Command18];
        MoveMouse(strip, {4, 4});
        Sleep(100);
        MoveMouse(strip, {5, 5});
        Sleep(100);
        return ShownPointer();
    }

    std::unique_ptr<CatiaSession> catia_ = Gearbox();
    DorvakWindow dorvak_;
};

class NoSession : public DesktopTest {
  protected:
    DorvakWindow dorvak_;
};

class LongWalk : public NoSession {};

// A refused call of the table's creation, and the announcement at which the run then stops.
struct Stop {
    int call;
    const char* status;
};
// With two rows in the list the table has eight: calls 1 to 8 reach the view's tables, 9 adds the
// table, 10 sizes the first row, 11 to 17 the columns, 18 to 129 are the fonts, 130 to 136 the
// header, 137 to 150 the two rows.
const auto kStops = std::to_array<Stop>({{1, "Cekam na Catii"},
                                         {9, "Catie vytvari tabulku"},
                                         {10, "Catie upravuje velikost 1 radku"},
                                         {13, "Catie upravuje sirku slopcu"},
                                         {18, "Catie upravuje font"},
                                         {32 + 2 * 14, "Catie upravuje font 3/8"},
                                         {130, "Catie doplnuje hlavicku"},
                                         {137, "Catie doplnuje radku 8/8"},
                                         {144, "Catie doplnuje radku 7/8"},
                                         {155, "Catie meni tlousku cary"}});

} // namespace

TEST_F(NoSession, TheWalkEndsAfterTheDetection) {
    dorvak_.Press(ID_Command3);
    dorvak_.WaitForStatus("Zjistuju spusteni Catie");
    Sleep(300);
    EXPECT_EQ(dorvak_.Status(), "Zjistuju spusteni Catie");
}

TEST_F(NoSession, TheTableEndsAfterTheDetection) {
    FillList(dorvak_, "\r\n0\tTop\r\n1\tA\tTop", 1);
    dorvak_.OpenPage(kExportPage);
    dorvak_.Press(ID_Command11);
    dorvak_.WaitForStatus("Zjistuju spusteni Catie");
    Sleep(300);
    EXPECT_EQ(dorvak_.Status(), "Zjistuju spusteni Catie");
}

TEST_F(NoSession, AnEmptyListStartsNothing) {
    const std::string before = dorvak_.Status();
    dorvak_.OpenPage(kExportPage);
    dorvak_.Press(ID_Command11);
    Sleep(300);
    EXPECT_EQ(dorvak_.Status(), before);
}

TEST_F(Failure, ARefusedCallOfTheWalkIsNamedAndTheNextWalkWorks) {
    const HCURSOR normal = Pointer();
    for (const int call : {1, 2, 7, 100}) {
        SCOPED_TRACE(call);
        catia_->Do("log clear");
        catia_->Do("fail " + std::to_string(call) + " refused");
        Walk();
        WaitUntil("the error on the status line",
                  [&] { return dorvak_.Status().starts_with("-2147467259 The method "); });
        WaitForLastCall(call);
        EXPECT_EQ(Pointer(), normal);
        Walk();
        dorvak_.WaitForStatus(kWalked, kLong);
        EXPECT_EQ(Send(dorvak_[ID_TreeView1], TVM_GETCOUNT), 59);
    }
}

TEST_F(Failure, ARefusedWalkKeepsItsLinesAndTheOldTree) {
    BuildTree(dorvak_, "\r\n0\tTop\r\n1\tA\tTop");
    catia_->Do("fail 12 refused"); // the second child's second call
    Walk();
    WaitUntil("the error on the status line",
              [&] { return dorvak_.Status().starts_with("-2147467259 The method "); });
    EXPECT_EQ(Text(dorvak_[ID_Text1]), "\r\n0\tPřevodovka\r\n1\tSkříň spodní\tPřevodovka");
    EXPECT_EQ(TreeItems(dorvak_[ID_TreeView1]).size(), 2U);
}

TEST_F(Failure, ASessionThatVanishesInTheWalkIsNamedAndTheNextOneWorks) {
    const HCURSOR normal = Pointer();
    catia_->Do("fail 50 vanish");
    Walk();
    catia_->Process().WaitForEnd();
    WaitUntil("the error on the status line",
              [&] { return dorvak_.Status().starts_with("-2147"); });
    EXPECT_EQ(Pointer(), normal);
    catia_.reset();
    catia_ = Gearbox();
    Walk();
    dorvak_.WaitForStatus(kWalked, kLong);
}

TEST_F(Failure, ARefusedCallOfTheTableKeepsTheStepAndTheBusyPointerAndTheNextTableWorks) {
    PrepareTable();
    const HCURSOR normal = Pointer();
    for (const Stop& stop : kStops) {
        SCOPED_TRACE(stop.call);
        catia_->Do("log clear");
        catia_->Do("fail " + std::to_string(stop.call) + " refused");
        StartTable();
        dorvak_.WaitForStatus(stop.status);
        WaitForLastCall(stop.call);
        EXPECT_EQ(dorvak_.Status(), stop.status);
        EXPECT_NE(Pointer(), normal);
        EXPECT_EQ(RowCount(dorvak_[ID_ListView1]), 2);
        StartTable();
        dorvak_.WaitForStatus(kCreated, kLong);
        EXPECT_EQ(Pointer(), normal);
    }
}

TEST_F(Failure, ASessionThatVanishesInTheTableKeepsTheStepAndTheNextOneWorks) {
    PrepareTable();
    catia_->Do("fail 137 vanish");
    StartTable();
    catia_->Process().WaitForEnd();
    dorvak_.WaitForStatus("Catie doplnuje radku 8/8");
    catia_.reset();
    catia_ = Gearbox();
    catia_->Do("activate Gearbox.CATDrawing");
    StartTable();
    dorvak_.WaitForStatus(kCreated, kLong);
}

TEST_F(Failure, ABusySessionIsWaitedFor) {
    catia_->Do("fail 20 busy 4"); // four refusals, a quarter of a second apart
    const auto start = GetTickCount64();
    Walk();
    dorvak_.WaitForStatus(kWalked, kLong);
    EXPECT_GE(GetTickCount64() - start, 900U);
}

TEST_F(Failure, AWrongConfigurationEndsTheTableBeforeAnyCall) {
    PrepareTable();
    dorvak_.OpenPage(kExportPage);
    PasteText(dorvak_[ID_Text2], "/pozice;100");
    catia_->Do("log clear");
    dorvak_.Press(ID_Command11);
    dorvak_.WaitForStatus("Zjistuju spusteni Catie");
    Sleep(300);
    EXPECT_EQ(dorvak_.Status(), "Zjistuju spusteni Catie");
    EXPECT_TRUE(catia_->Log().empty());
}

// A product that takes long to walk.
TEST_F(LongWalk, ClosingTheWindowEndsItAndStoresTheConfiguration) {
    const std::string path = TemporaryPath("long.CATProduct.txt");
    std::ofstream(path) << "ProductDocument Long.CATProduct\n"
                           "product \"Long\"\n  child \"Sub\" times 3000\n"
                           "product \"Sub\"\n  child \"Part\" times 5\n";
    const CatiaSession catia({path});
    dorvak_.Press(ID_Command3);
    WaitUntil("the walk under way",
              [&] { return dorvak_.Status().starts_with("Product: Long Part: Sub"); });
    EXPECT_FALSE(SettingKeeper::Read());
    dorvak_.Close();
    EXPECT_EQ(dorvak_.Process().WaitForEnd(), 0U);
    EXPECT_TRUE(SettingKeeper::Read());
    EXPECT_TRUE(catia.Process().Running());
}
