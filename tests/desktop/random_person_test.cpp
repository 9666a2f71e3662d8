// A person who does anything at any time, in the real window against the real session: random
// buttons, rows, keys, menus and texts from fixed seeds. Whatever they did, the window answers all
// the while, and afterwards the main road gives the right list and the right table.
#include <algorithm>
#include <random>
#include <stdexcept>

#include "fixture.hpp"
#include "tests/support/drawing_text.hpp"

using namespace driver;

namespace {

constexpr int kSteps = 100;
constexpr int kParts = 22; // of the gearbox, counted by hand

// Every button, by the page that it stands on.
const std::vector<std::vector<int>> kButtons{
    {ID_Command3, ID_Command5, ID_Command4, ID_Command1, ID_Command2, ID_Command26},
    {ID_Command12, ID_Command13, ID_Command14, ID_Command15, ID_Command17, ID_Command27,
     ID_Command39},
    {ID_Command19, ID_Command11, ID_Command16, ID_Command30, ID_Command7, ID_Command6, ID_Check3,
     ID_Command8, ID_Command37, ID_Command40, ID_Command41},
    {ID_Command10, ID_Command9, ID_Command38},
    {ID_Command21, ID_Command28, ID_Command20, ID_Command22, ID_Command23, ID_Command24,
     ID_Command25, ID_Command34, ID_Command33, ID_Command32, ID_Command29, ID_Command31,
     ID_Command35, ID_Check1}};
const std::vector<std::vector<int>> kTexts{
    {ID_Text1}, {ID_Combo1, ID_Combo4}, {ID_Text2}, {ID_Text3}, {ID_Text5, ID_Text6, ID_Text7}};
const std::vector<int> kLists{ID_ListView2, ID_ListView1, 0, 0, ID_ListView3};

class RandomPerson : public DesktopTest, public testing::WithParamInterface<unsigned> {
  protected:
    RandomPerson() : random_(GetParam()) {}

    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }
    template <typename Things>
    const auto& OneOf(const Things& things) {
        return things[Below(things.size())];
    }

    // Whatever waits for an answer gets one: boxes, file dialogs, menus.
    void AnswerBoxes() {
        for (int box = 0; box < 5; ++box) {
            if (PopupMenuOpen()) {
                PressKey(VK_ESCAPE);
            } else if (const HWND dialog = dorvak_.Process().FindVisible("#32770")) {
                BringToFront(dialog);
                PressKey(Below(2) == 0 ? VK_RETURN : VK_ESCAPE);
            } else {
                return;
            }
            Sleep(100);
        }
    }

    void Do() {
        const std::size_t page = Below(kButtons.size());
        ClickTab(dorvak_[ID_SSTab1], static_cast<int>(page));
        switch (Below(8)) {
        case 0:
        case 1:
        case 2:
            PressAButton(OneOf(kButtons[page]));
            break;
        case 3:
            TypeSomewhere(dorvak_[OneOf(kTexts[page])]);
            break;
        case 4:
        case 5:
            if (kLists[page] != 0) {
                PlayWithRows(dorvak_[kLists[page]]);
            }
            break;
        case 6:
            PressKey(OneOf(std::vector<WORD>{VK_TAB, VK_SPACE, VK_F2, VK_ESCAPE, VK_RETURN, VK_DOWN,
                                             VK_END, VK_F10, VK_APPS, VK_DELETE}));
            break;
        default:
            catia_.Do(OneOf(std::vector<std::string>{
                "activate Gearbox.CATProduct", "activate Gearbox.CATDrawing", "fail 3 refused",
                "fail 20 refused", "fail 5 busy 2", "disarm"}));
            break;
        }
    }

    void PressAButton(int id) {
        const HWND button = dorvak_[id];
        if (IsWindowEnabled(button) == FALSE || IsWindowVisible(button) == FALSE) {
            return;
        }
        const auto how = Below(6);
        if (how == 1) {
            DoubleClick(button);
        } else {
            Click(button, how == 0 ? MouseButton::kRight : MouseButton::kLeft);
        }
    }

    void TypeSomewhere(HWND field) {
        if (IsWindowEnabled(field) == FALSE || IsWindowVisible(field) == FALSE) {
            return;
        }
        Click(field);
        TypeText(OneOf(std::vector<std::string>{"5", "ocel", "Řez", "1-3", "@@", ";"}));
        if (Below(2) == 0) {
            PressKey(VK_RETURN);
        }
    }

    void PlayWithRows(HWND list) {
        const int rows = RowCount(list);
        const auto any_row = [&] {
            return static_cast<int>(Below(static_cast<std::size_t>(std::min(rows, 6))));
        };
        const auto choice = Below(5);
        if (rows == 0 || choice == 0) {
            Click(list, {30, 60}, MouseButton::kRight);
            PressKey(VK_UP);
            PressKey(VK_RETURN);
            return;
        }
        Send(list, LVM_ENSUREVISIBLE, 0, FALSE);
        if (choice == 1 && list != dorvak_[ID_ListView2]) {
            Click(list, RowCheckPoint(list, any_row()));
        } else if (choice == 2) {
            Drag(list, RowPoint(list, any_row()), RowPoint(list, any_row()));
        } else {
            Click(list, RowPoint(list, any_row()));
            PressKey(choice == 3 ? VK_DOWN : 'A',
                     choice == 3 ? std::vector<WORD>{VK_SHIFT} : std::vector<WORD>{VK_CONTROL});
        }
    }

    // Until nothing has changed on the status line for a while and no box stands open.
    void WaitUntilQuiet() {
        std::string before = "?";
        for (int quiet = 0; quiet < 10;) {
            AnswerBoxes();
            const std::string status = dorvak_.Status();
            quiet = status == before ? quiet + 1 : 0;
            before = status;
            Sleep(150);
        }
    }

    std::mt19937 random_;
    CatiaSession catia_{{"gearbox-assembly.txt", "gearbox-drawing.txt"}};
    std::shared_ptr<const ProgramFolder> folder_ = std::make_shared<ProgramFolder>();
    DorvakWindow dorvak_{folder_};
};

} // namespace

TEST_P(RandomPerson, LeavesAWindowThatStillGivesTheRightListAndTheRightTable) {
    for (int step = 0; step < kSteps; ++step) {
        SCOPED_TRACE(testing::Message() << "step " << step);
        AnswerBoxes();
        ASSERT_TRUE(dorvak_.Process().Running());
        try {
            Do();
        } catch (const std::runtime_error&) {
            // A box came in between: it is answered before the next step.
        }
    }
    WaitUntilQuiet();
    ASSERT_TRUE(dorvak_.Process().Running());

    catia_.Do("disarm");
    catia_.Do("activate Gearbox.CATProduct");
    PressKey(VK_ESCAPE);
    dorvak_.OpenPage(kStructurePage);
    dorvak_.Press(ID_Command3);
    dorvak_.WaitForStatus(kWalked, Milliseconds{30000});
    dorvak_.Press(ID_Command4);
    const HWND list = dorvak_[ID_ListView1];
    WaitUntil("the parts list", [&] { return RowCount(list) == kParts; });
    EXPECT_EQ(dorvak_.Positions(), "Pozic: 22");
    EXPECT_EQ(Row(list, 3, 3), (std::vector<std::string>{"Ložisko 6204", "0004", "4"}));
    EXPECT_EQ(Row(list, 21, 3), (std::vector<std::string>{"Olejoznak", "0022", "1"}));

    catia_.Do("activate Gearbox.CATDrawing");
    dorvak_.OpenPage(kExportPage);
    dorvak_.Press(ID_Command19);
    const auto before = testing_support::TableRows(catia_.Drawing()).size();
    dorvak_.Press(ID_Command11);
    dorvak_.WaitForStatus("Tabulka vytvorena Ok ", Milliseconds{30000});
    std::vector<std::string> expected;
    for (int row = kParts - 1; row >= 0; --row) { // the list's first row stands at the bottom
        expected.push_back(QuotedCells(
            {std::to_string(row + 1), Cell(list, row, 0), Cell(list, row, 2), "", "", "", ""}));
    }
    // The drawing's tables stand sheet by sheet: the new one is where the header and its free rows
    // are followed by exactly these rows.
    const auto rows = testing_support::TableRows(catia_.Drawing());
    EXPECT_EQ(rows.size(), before + 1 + 5 + kParts);
    EXPECT_NE(std::search(rows.begin(), rows.end(), expected.begin(), expected.end()), rows.end());

    dorvak_.Close();
    const DorvakWindow again(folder_);
    EXPECT_EQ(RowCount(again[ID_ListView1]), kParts) << again.Status();
    EXPECT_EQ(Row(again[ID_ListView1], 3, 3),
              (std::vector<std::string>{"Ložisko 6204", "0004", "4"}));
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomPerson, testing::Values(1U, 2U));
