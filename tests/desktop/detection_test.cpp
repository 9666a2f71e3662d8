// "procesy": whether a CATIA V5 session is found among the windows of the desktop.
#include <algorithm>

#include "com/utf.hpp"
#include "fixture.hpp"
#include "version.h"

using namespace driver;

namespace {

// A window of the test's own, with a title and nothing else.
class TitledWindow {
  public:
    explicit TitledWindow(const std::string& title)
        : window_(CreateWindowExW(0, L"STATIC", com::Widen(title).c_str(), WS_POPUP, 0, 0, 10, 10,
                                  nullptr, nullptr, nullptr, nullptr)) {}
    ~TitledWindow() { DestroyWindow(window_); }
    TitledWindow(const TitledWindow&) = delete;
    TitledWindow& operator=(const TitledWindow&) = delete;

  private:
    HWND window_;
};

class Detection : public DesktopTest {
  protected:
    // Presses "procesy" and expects its result.
    void ExpectFound(bool found) {
        dorvak_.Press(ID_Command26);
        dorvak_.WaitForStatus(std::string("Spusteni Catie = ") + (found ? "True" : "False"));
    }

    std::size_t TimesListed(const std::string& title) {
        const std::vector<std::string> titles = ListBoxItems(dorvak_[ID_List1]);
        return static_cast<std::size_t>(std::count(titles.begin(), titles.end(), title));
    }

  private:
    DorvakWindow dorvak_;
};

} // namespace

TEST_F(Detection, NoCatiaWindowGivesFalseAndListsTheTitles) {
    ExpectFound(false);
    EXPECT_EQ(TimesListed("Dorvak pro Catii " DORVAK_VERSION_TEXT), 1U);
    EXPECT_EQ(TimesListed(""), 0U);
}

TEST_F(Detection, ACatiaSessionGivesTrue) {
    const CatiaSession catia({"gearbox-assembly.txt"});
    ExpectFound(true);
    EXPECT_EQ(TimesListed("CATIA V5 - [Gearbox.CATProduct] - simulace"), 1U);
}

TEST_F(Detection, TheWordsFurtherInTheTitleDoNotCount) {
    const TitledWindow folder("Složka CATIA V5");
    const TitledWindow other("Okno CATIASessionWnd");
    ExpectFound(false);
    EXPECT_EQ(TimesListed("Složka CATIA V5"), 1U);
}

TEST_F(Detection, LettersOfAnyCaseCount) {
    const TitledWindow window("cAtIa v5R20");
    ExpectFound(true);
}

TEST_F(Detection, TheSessionWindowsClassNameAsATitleCounts) {
    const TitledWindow window("CATIASessionWnd 1");
    ExpectFound(true);
}

TEST_F(Detection, TwoSessionsAreBothListed) {
    const TitledWindow first("CATIA V5 - [A.CATPart]");
    const TitledWindow second("CATIA V5 - [B.CATPart]");
    ExpectFound(true);
    EXPECT_EQ(TimesListed("CATIA V5 - [A.CATPart]"), 1U);
    EXPECT_EQ(TimesListed("CATIA V5 - [B.CATPart]"), 1U);
}

TEST_F(Detection, IsMadeAfreshEveryTime) {
    {
        const TitledWindow window("CATIA V5");
        ExpectFound(true);
    }
    ExpectFound(false);
    EXPECT_EQ(TimesListed("CATIA V5"), 0U);
}
