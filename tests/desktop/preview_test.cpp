// The preview beside the main window: it follows what is typed, and its hints lead to their places.
#include "fixture.hpp"

using namespace driver;

namespace {

constexpr const char* kPreviewClass = "DorvakNahled";

class Preview : public DesktopTest {};

// Beside the main window.
HWND OpenPreview(const DorvakWindow& dorvak) {
    SetWindowPos(dorvak.Window(), nullptr, 0, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    dorvak.OpenPage(kExportPage);
    dorvak.Press(ID_Command36);
    return dorvak.Process().WaitForWindow(kPreviewClass);
}

std::vector<std::string> Hints(HWND preview) {
    return ListBoxItems(Control(preview, ID_Preview_Hints));
}

void WaitForSummary(HWND preview, const std::string& expected) {
    WaitForText("the line under the table", expected,
                [&] { return Text(Control(preview, ID_Preview_Summary)); });
}

// What is selected in an edit control.
std::string SelectedText(HWND edit) {
    const auto selection = static_cast<DWORD>(Send(edit, EM_GETSEL));
    return Text(edit).substr(LOWORD(selection), HIWORD(selection) - LOWORD(selection));
}

bool HasVerticalBar(HWND window) {
    return (GetWindowLongPtrW(window, GWL_STYLE) & WS_VSCROLL) != 0;
}

void KeepPaintedPicture(const std::string& file_name) {
    if (std::getenv("PICTURES") != nullptr) {
        Sleep(700);
        KeepPicture(file_name);
    }
}

constexpr const char* kOnPosition = "\nKotva vlevo nahoře na 100; 100";

} // namespace

TEST_F(Preview, StandsOnTheLeftWhereThereIsNoRoomOnTheRight) {
    const DorvakWindow dorvak;
    const RECT main = Place(dorvak.Window());
    SetWindowPos(dorvak.Window(), nullptr, GetSystemMetrics(SM_CXSCREEN) - (main.right - main.left),
                 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    dorvak.OpenPage(kExportPage);
    dorvak.Press(ID_Command36);
    const HWND preview = dorvak.Process().WaitForWindow(kPreviewClass);
    EXPECT_LE(Place(preview).right, Place(dorvak.Window()).left);
    EXPECT_EQ(Place(preview).top, 40);
}

TEST_F(Preview, FollowsWhatIsTypedAndItsHintsLeadToTheirPlaces) {
    const DorvakWindow dorvak;
    dorvak.Press(ID_Command1);
    const HWND preview = OpenPreview(dorvak);
    const std::string usual = "191.64 × 106.9 mm, 16 řádků, 7 sloupců, bez materiálu 10 řádků";
    WaitForSummary(preview, usual + kOnPosition);
    EXPECT_TRUE(Hints(preview).empty());
    EXPECT_TRUE(Topmost(preview));
    EXPECT_NE(GetForegroundWindow(), preview);

    // Without pressing anything.
    const HWND configuration = dorvak[ID_Text2];
    Click(configuration);
    PressKey(VK_END, {VK_CONTROL});
    TypeText("/volny;1");
    const std::string fewer = "191.64 × 79.7 mm, 12 řádků, 7 sloupců, bez materiálu 10 řádků";
    WaitForSummary(preview, fewer + kOnPosition);

    TypeText("\r/vyska1;4,9");
    const std::vector<std::string> comma{"Řádek 14: Desetinná čárka v „4,9“: má to být tečka."};
    WaitUntil("the hint", [&] { return Hints(preview) == comma; });
    KeepPaintedPicture("preview-hint.png");

    // A click goes to the place, from another page too.
    dorvak.OpenPage(kSheetPage);
    BringToFront(preview);
    Click(Control(preview, ID_Preview_Hints), {20, 8});
    KeepPaintedPicture("preview-place.png");
    WaitUntil("the place of the hint selected", [&] {
        return FocusedControl(dorvak.Window()) == configuration &&
               SelectedText(configuration) == "4,9";
    });
    EXPECT_TRUE(IsWindowVisible(configuration));

    // So does the enter key, which writes nothing there while it is held.
    BringToFront(preview);
    Send(configuration, EM_SETSEL, 0, 0);
    HoldKey(VK_RETURN, 4);
    WaitUntil("the place again", [&] { return SelectedText(configuration) == "4,9"; });
    Sleep(200);
    EXPECT_TRUE(Text(configuration).ends_with("\n/vyska1;4,9"));

    Click(Control(preview, ID_Preview_PutRight));
    WaitUntil("no hint any more", [&] { return Hints(preview).empty(); });
    WaitForSummary(preview, fewer + kOnPosition);
    EXPECT_TRUE(Text(configuration).ends_with("/vyska1;4.9"));
    EXPECT_FALSE(IsWindowEnabled(Control(preview, ID_Preview_PutRight)));

    // A number that is none while it is typed takes neither the zoom nor the place.
    const HWND canvas = Control(preview, ID_Preview_Canvas);
    EXPECT_FALSE(HasVerticalBar(canvas));
    Send(canvas, WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, 20 * WHEEL_DELTA));
    EXPECT_TRUE(HasVerticalBar(canvas));
    Click(configuration);
    PressKey(VK_END, {VK_CONTROL});
    TypeText("\r/vyska2;6.8x");
    WaitUntil("no table", [&] { return !HasVerticalBar(canvas); });
    PressKey(VK_BACK);
    WaitForSummary(preview, fewer + kOnPosition);
    EXPECT_TRUE(HasVerticalBar(canvas));
    Send(canvas, WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, static_cast<WORD>(-20 * WHEEL_DELTA)));
    EXPECT_FALSE(HasVerticalBar(canvas));

    // The keys that are wanted everywhere are taken here too.
    BringToFront(preview);
    PressKey('2', {VK_CONTROL});
    WaitUntil("the page of the list",
              [&] { return IsWindowVisible(dorvak[ID_ListView1]) != FALSE; });

    // The current row alone.
    SelectRow(dorvak[ID_ListView1], 2);
    BringToFront(preview);
    Click(Control(preview, ID_Preview_CurrentRow), {10, 10});
    WaitForSummary(preview, std::string("204.71 × 11.7 mm, 2 řádky, 7 sloupců, "
                                        "bez materiálu 1 řádek") +
                                kOnPosition);
    KeepPaintedPicture("preview-current-row.png");
}

TEST_F(Preview, StandsAgainWhereItStoodAndGoesWithItsButton) {
    const auto folder = std::make_shared<ProgramFolder>();
    const RECT place{40, 60, 540, 700};
    {
        const DorvakWindow dorvak(folder);
        dorvak.Press(ID_Command1);
        const HWND preview = OpenPreview(dorvak);
        SetWindowPos(preview, nullptr, place.left, place.top, place.right - place.left,
                     place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
        dorvak.Close();
    }
    const DorvakWindow dorvak(folder, kExportPage);
    const HWND preview = dorvak.Process().WaitForWindow(kPreviewClass);
    const RECT stands = Place(preview);
    EXPECT_TRUE(EqualRect(&stands, &place));
    KeepPaintedPicture("preview-96.png");
    TellDpi(preview, 144, {20, 20, 820, 880});
    WaitUntil("the preview at its new scale", [&] { return Place(preview).right == 820; });
    KeepPaintedPicture("preview-144.png");

    dorvak.Press(ID_Check2);
    WaitUntil("the preview no longer topmost", [&] { return !Topmost(preview); });
    dorvak.Press(ID_Command36);
    WaitUntil("the preview closed", [&] { return IsWindowVisible(preview) == FALSE; });
    EXPECT_EQ(SettingKeeper::Read(kPreviewOpen), "0");
}

// The tests' copy of the program has no guide beside it.
TEST_F(Preview, AsksForTheGuideByF1AsTheWindowDoes) {
    const DorvakWindow dorvak;
    const HWND preview = OpenPreview(dorvak);
    BringToFront(preview);
    PressKey(VK_F1);
    dorvak.WaitForStatus("Prirucka neni vedle programu");
    dorvak.OpenPage(kStructurePage);
    dorvak.Press(ID_Command26);
    dorvak.WaitForStatus("Spusteni Catie = False");
    Click(dorvak[ID_Text1]);
    PressKey(VK_F1);
    dorvak.WaitForStatus("Prirucka neni vedle programu");
}
