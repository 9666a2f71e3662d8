// The window at every scale: the DPI of its monitor, changes of it, the person's "text size", and
// the edges of the screen. Pictures are kept of every page.
#include <algorithm>
#include <array>
#include <cstdlib>

#include "fixture.hpp"

using namespace driver;

namespace {

constexpr int kFullHeight = 7155; // twips
constexpr int kCollapsedHeight = 660;
constexpr std::array<UINT, 4> kScales{96, 120, 144, 192};
constexpr std::array kControls{ID_Check2,    ID_Command18, ID_SSTab1,    ID_StatusBar1,
                               ID_Text1,     ID_TreeView1, ID_ListView2, ID_List1,
                               ID_ListView1, ID_Combo4,    ID_Command15, ID_Text2,
                               ID_Command11, ID_Text3,     ID_ListView3, ID_Text5,
                               ID_Command28, ID_Frame3,    ID_Command32};

bool UnderWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

// A number in the registry of the person who runs the tests, put back at the end.
class KeptNumber {
  public:
    KeptNumber(const wchar_t* key, const wchar_t* name) : key_(key), name_(name) {
        DWORD size = sizeof before_;
        existed_ = RegGetValueW(HKEY_CURRENT_USER, key_, name_, RRF_RT_REG_DWORD, nullptr, &before_,
                                &size) == ERROR_SUCCESS;
    }
    ~KeptNumber() {
        if (existed_) {
            Set(before_);
        } else {
            RegDeleteKeyValueW(HKEY_CURRENT_USER, key_, name_);
        }
    }
    KeptNumber(const KeptNumber&) = delete;
    KeptNumber& operator=(const KeptNumber&) = delete;

    void Set(DWORD number) const {
        RegSetKeyValueW(HKEY_CURRENT_USER, key_, name_, REG_DWORD, &number, sizeof number);
    }

  private:
    const wchar_t* key_;
    const wchar_t* name_;
    DWORD before_ = 0;
    bool existed_ = false;
};

// The person's font for messages, put back at the end.
class KeptMessageFont {
  public:
    KeptMessageFont() {
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof before_, &before_, 0);
    }
    ~KeptMessageFont() { Set(before_); }
    KeptMessageFont(const KeptMessageFont&) = delete;
    KeptMessageFont& operator=(const KeptMessageFont&) = delete;

    // Nine points, enlarged as Windows does with the text size.
    void Enlarge(int per_cent) const {
        NONCLIENTMETRICSW metrics = before_;
        metrics.lfMessageFont.lfHeight = -MulDiv(12, per_cent, 100);
        Set(metrics);
    }

  private:
    static NONCLIENTMETRICSW Empty() {
        NONCLIENTMETRICSW metrics{};
        metrics.cbSize = sizeof metrics;
        return metrics;
    }
    static void Set(NONCLIENTMETRICSW metrics) {
        SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics,
                              SPIF_UPDATEINIFILE | SPIF_SENDCHANGE);
    }

    NONCLIENTMETRICSW before_ = Empty();
};

int Height(HWND window) {
    const RECT place = Place(window);
    return place.bottom - place.top;
}

int Width(HWND window) {
    const RECT place = Place(window);
    return place.right - place.left;
}

void WaitForHeight(const DorvakWindow& dorvak, int twips, UINT dpi) {
    const int pixels = MulDiv(twips, static_cast<int>(dpi), 1440);
    WaitForText("the window's height", std::to_string(pixels),
                [&] { return std::to_string(Height(dorvak.Window())); });
}

// Where a control stands in the window.
std::string Spot(const DorvakWindow& dorvak, int id) {
    RECT place = Place(dorvak[id]);
    const RECT window = Place(dorvak.Window());
    OffsetRect(&place, -window.left, -window.top);
    return std::to_string(place.left) + ' ' + std::to_string(place.top) + ' ' +
           std::to_string(place.right) + ' ' + std::to_string(place.bottom);
}

std::vector<std::string> Spots(const DorvakWindow& dorvak) {
    std::vector<std::string> spots;
    spots.reserve(kControls.size());
    for (const int part : kControls) {
        spots.push_back(Spot(dorvak, part));
    }
    return spots;
}

std::string Name(UINT dpi, int text_size) {
    return std::to_string(dpi) + (text_size == 100 ? "" : "-text-" + std::to_string(text_size));
}

class Scales : public DesktopTest {
  protected:
    // Starts the program on a monitor of that DPI and looks at its pages.
    void Check(UINT dpi, int text_size) {
        SCOPED_TRACE(Name(dpi, text_size));
        log_pixels_.Set(dpi);
        text_size_.Set(static_cast<DWORD>(text_size));
        const DorvakWindow dorvak;
        const UINT layout = dpi * static_cast<UINT>(std::min(text_size, 150)) / 100;
        EXPECT_EQ(Height(dorvak.Window()), MulDiv(kFullHeight, static_cast<int>(layout), 1440));
        const RECT place = Place(dorvak.Window());
        EXPECT_GE(place.top, 0);
        EXPECT_GE(place.left, 0);
        for (int id = ID_Command1; id <= ID_Command41; ++id) {
            ExpectCaptionFits(dorvak[id]);
        }
        for (const int id : {ID_Check1, ID_Check2, ID_Check3}) {
            ExpectCaptionFits(dorvak[id]);
        }
        for (const auto& [picker, button] :
             {std::pair{ID_Combo1, ID_Command12}, std::pair{ID_Combo4, ID_Command15}}) {
            EXPECT_EQ(Place(dorvak[picker]).top, Place(dorvak[button]).top);
            EXPECT_EQ(Place(dorvak[picker]).bottom, Place(dorvak[button]).bottom);
        }
        ExpectColumnsFill(dorvak[ID_ListView1], 7);
        ExpectColumnsFill(dorvak[ID_ListView2], 2);
        ExpectColumnsFill(dorvak[ID_ListView3], 3);
        if (std::getenv("PICTURES") != nullptr) {
            for (int page = kStructurePage; page <= kSheetPage; ++page) {
                Send(dorvak[ID_SSTab1], TCM_SETCURFOCUS, static_cast<WPARAM>(page));
                Sleep(700); // until it is painted
                KeepPicture("scale-" + Name(dpi, text_size) + "-" + std::to_string(page) + ".png");
            }
        }
    }

    static void ExpectCaptionFits(HWND button) {
        // A picture button's name is not drawn.
        if ((GetWindowLongPtrW(button, GWL_STYLE) & BS_ICON) == 0) {
            EXPECT_LE(IdealSize(button).cx, Width(button)) << Text(button);
        }
    }

    static void ExpectColumnsFill(HWND list, int columns) {
        int width = 0;
        for (int column = 0; column < columns; ++column) {
            width += ColumnWidth(list, column);
        }
        RECT client{};
        GetClientRect(list, &client);
        EXPECT_EQ(width, client.right);
    }

    void SetUp() override {
        if (!UnderWine()) {
            GTEST_SKIP() << "the scale of a real desktop is the person's";
        }
    }

    KeptNumber log_pixels_{L"Control Panel\\Desktop", L"LogPixels"};
    KeptNumber text_size_{L"Software\\Microsoft\\Accessibility", L"TextScaleFactor"};
};

class Edges : public DesktopTest {};

} // namespace

TEST_F(Scales, NoCaptionIsCutOffAndNothingIsOutOfLine) {
    for (const UINT dpi : kScales) {
        Check(dpi, 100);
    }
}

TEST_F(Scales, NorWithLargerTexts) {
    const KeptMessageFont font;
    for (const int text_size : {125, 150, 225}) {
        font.Enlarge(text_size);
        Check(96, text_size);
    }
}

TEST_F(Scales, ChangeWhileTheWindowIsOpenCollapsedAndMinimised) {
    const DorvakWindow dorvak;
    const HWND window = dorvak.Window();
    const std::vector<std::string> at_first = Spots(dorvak);
    const int tree_width = Width(dorvak[ID_TreeView1]);

    TellDpi(window, 144, {30, 40, 900, 800});
    WaitForHeight(dorvak, kFullHeight, 144);
    EXPECT_EQ(Place(window).left, 30);
    EXPECT_EQ(Place(window).top, 40);
    EXPECT_NEAR(Width(dorvak[ID_TreeView1]), tree_width * 1.5, 3);

    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, kCollapsedHeight, 144);
    TellDpi(window, 120, {60, 70, 900, 800});
    WaitForHeight(dorvak, kCollapsedHeight, 120);
    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, kFullHeight, 120);
    EXPECT_NEAR(Width(dorvak[ID_TreeView1]), tree_width * 1.25, 3);

    PostMessageW(window, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    WaitUntil("the window minimised", [&] { return IsIconic(window) != FALSE; });
    TellDpi(window, 96, {0, 0, 160, 30});
    PostMessageW(window, WM_SYSCOMMAND, SC_RESTORE, 0);
    WaitForHeight(dorvak, kFullHeight, 96);
    WaitUntil("every control in its place again", [&] { return Spots(dorvak) == at_first; });
}

TEST_F(Scales, TextSizeIsFollowedWhileTheProgramRuns) {
    const DorvakWindow dorvak;
    const std::vector<std::string> at_first = Spots(dorvak);
    for (const auto& [text_size, dpi] : {std::pair{150U, 144U}, {225U, 144U}, {110U, 106U}}) {
        text_size_.Set(text_size);
        Send(dorvak.Window(), WM_SETTINGCHANGE);
        WaitForHeight(dorvak, kFullHeight, dpi);
    }
    text_size_.Set(100);
    Send(dorvak.Window(), WM_SETTINGCHANGE);
    WaitForHeight(dorvak, kFullHeight, 96);
    EXPECT_EQ(Spots(dorvak), at_first);
}

TEST_F(Edges, ThePartsListEndsWithAWholeRow) {
    const DorvakWindow dorvak;
    FillList(dorvak, "\r\n0\tTop\r\n1\tPart 1\tTop\r\n1\tPart 2\tTop", 2);
    const HWND list = dorvak[ID_ListView1];
    RECT header{};
    RECT client{};
    GetClientRect(reinterpret_cast<HWND>(Send(list, LVM_GETHEADER)), &header);
    GetClientRect(list, &client);
    const int row = RowPoint(list, 1).y - RowPoint(list, 0).y;
    ASSERT_GT(row, 0);
    EXPECT_EQ((client.bottom - header.bottom) % row, 0);
    EXPECT_GE(client.bottom - header.bottom, 8 * row);
}

TEST_F(Edges, FullHeightNearTheLowerEdgeOpensUpwardAndGoesBack) {
    const DorvakWindow dorvak;
    const HWND window = dorvak.Window();
    RECT work_area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work_area, 0);
    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, kCollapsedHeight, GetDpiForWindow(window));
    const int low = work_area.bottom - 2 * Height(window);
    SetWindowPos(window, nullptr, 200, low, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);

    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, kFullHeight, GetDpiForWindow(window));
    EXPECT_EQ(Place(window).bottom, work_area.bottom);
    EXPECT_EQ(Place(window).left, 200);

    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, kCollapsedHeight, GetDpiForWindow(window));
    EXPECT_EQ(Place(window).top, low);

    // The person has moved it meanwhile: it stays there.
    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, kFullHeight, GetDpiForWindow(window));
    SetWindowPos(window, nullptr, 100, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, kCollapsedHeight, GetDpiForWindow(window));
    EXPECT_EQ(Place(window).top, 50);
}

TEST_F(Edges, AWindowOutsideTheMonitorsComesBackWhenTheyChange) {
    const DorvakWindow dorvak;
    const HWND window = dorvak.Window();
    RECT work_area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work_area, 0);
    SetWindowPos(window, nullptr, 5000, -3000, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    Send(window, WM_DISPLAYCHANGE, 32, MAKELPARAM(work_area.right, work_area.bottom));
    WaitUntil("the window on the screen", [&] { return Place(window).right == work_area.right; });
    EXPECT_EQ(Place(window).top, work_area.top);
}
