// GuidePictures FOLDER: goes the road of the guide in the real windows, and leaves its pictures in
// the folder.
#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "com/trial.hpp"
#include "com/utf.hpp"
#include "programs.hpp"
#include "win32/resource.h"

namespace {

using namespace driver;

constexpr Milliseconds kLong{120000};
constexpr int kLeft = 572; // of Dorvak's window, which ends at the right edge of the screen
constexpr int kTop = 60;
constexpr int kSheetColumn = 3;
constexpr int kMaterialColumn = 4;
constexpr int kSizeColumn = 5;
constexpr const char* kPreviewClass = "DorvakNahled";
constexpr const char* kTipClass = "tooltips_class32";
constexpr const char* kDialogClass = "#32770";

void MoveWindowTo(HWND window, int x, int y) {
    SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT Joined(const RECT& one, const RECT& other) {
    RECT both;
    UnionRect(&both, &one, &other);
    return both;
}

// The row of that name, counted from 0.
int RowNamed(HWND list, const std::string& name) {
    for (int row = 0; row < RowCount(list); ++row) {
        if (Cell(list, row, 0) == name) {
            return row;
        }
    }
    throw std::runtime_error("no row " + name);
}

class Album {
  public:
    explicit Album(std::string folder) : folder_(std::move(folder)) {}

    // Takes a picture of a part of the screen once it has settled.
    void Take(const std::string& name, const RECT& part) const {
        SetCursorPos(0, 0); // no tip
        Sleep(700);
        SaveScreenshot(folder_ + "\\" + name + ".png", part);
        std::cout << name << std::endl;
    }
    void Take(const std::string& name, HWND window) const { Take(name, Place(window)); }

  private:
    std::string folder_;
};

// Dorvak beside the session, which fills the screen.
class Road {
  public:
    explicit Road(const Album& album) : album_(album) {
        SetWindowPos(catia_.Window(), nullptr, 0, 0, GetSystemMetrics(SM_CXSCREEN),
                     GetSystemMetrics(SM_CYSCREEN), SWP_NOZORDER | SWP_NOACTIVATE);
        MoveWindowTo(dorvak_.Window(), kLeft, kTop);
    }

    void Play() {
        Tree();
        List();
        Update();
        Export();
        Import();
        Sheets();
        Trouble();
        dorvak_.Close();
    }

  private:
    void Tree() {
        dorvak_.Press(ID_Command3);
        WaitUntil(
            "the walk's end", [&] { return dorvak_.Status().starts_with("Sestav: "); }, kLong);
        album_.Take("okno", dorvak_.Window());
        const HWND tree = dorvak_[ID_TreeView1];
        for (const TreeItem& item : TreeItems(tree)) {
            if (item.text == "Olejoznak") {
                Click(tree, TreeCheckPoint(tree, item.item));
                WaitUntil("the part left out", [&] {
                    return std::ranges::any_of(TreeItems(tree), [](const TreeItem& now) {
                        return now.text == "Olejoznak" && !now.checked;
                    });
                });
            }
        }
        album_.Take("strom", dorvak_.Window());
    }

    void List() {
        dorvak_.Press(ID_Command4);
        WaitUntil("the parts list", [&] { return dorvak_.Positions() == "Pozic: 21"; });
        dorvak_.OpenPage(kEditPage);
        album_.Take("seznam", dorvak_.Window());

        const HWND list = dorvak_[ID_ListView1];
        constexpr std::array kShafts{"Hřídel vstupní", "Hřídel", "Hřídel výstupní"};
        int sheet = 1;
        for (const char* shaft : kShafts) {
            const int row = RowNamed(list, shaft);
            Send(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row));
            Click(list, RowCheckPoint(list, row));
            ++sheet;
            WaitForText("the sheet", std::to_string(sheet),
                        [&] { return Cell(list, row, kSheetColumn); });
        }
        int current = RowNamed(list, kShafts[0]);
        Click(list, RowPoint(list, current));
        for (const char* shaft : {kShafts[1], kShafts[2]}) {
            for (const int row = RowNamed(list, shaft); current < row; ++current) {
                PressKey(VK_DOWN, {VK_CONTROL});
            }
            PressKey(VK_SPACE, {VK_CONTROL});
            WaitUntil("the row selected", [&] { return RowSelected(list, current); });
        }
        Type(ID_Combo1, "C45");
        WaitForText("the material", "C45",
                    [&] { return Cell(list, RowNamed(list, "Hřídel výstupní"), kMaterialColumn); });

        const int shaft = RowNamed(list, "Hřídel");
        Click(list, CellPoint(list, shaft, kSizeColumn));
        PressKey(VK_F2);
        TypeText("D40-220\r");
        WaitForText("the size", "D40-220", [&] { return Cell(list, shaft, kSizeColumn); });
        PressKey(VK_ESCAPE); // the field of the row below
        album_.Take("vyplneny-seznam", dorvak_.Window());
        Click(list, CellPoint(list, shaft, kSizeColumn));
        PressKey(VK_F2);
        album_.Take("bunka", dorvak_.Window());
        PressKey(VK_ESCAPE);

        RightClick(list, RowPoint(list, shaft));
        const HWND menu = WaitForPopupMenu();
        album_.Take("nabidka", Joined(Place(dorvak_.Window()), Place(menu)));
        PressKey(VK_ESCAPE);
    }

    void Export() {
        catia_.Do("activate Gearbox.CATDrawing");
        dorvak_.OpenPage(kExportPage);
        album_.Take("export", dorvak_.Window());
        dorvak_.Press(ID_Command36);
        const HWND preview = dorvak_.Process().WaitForWindow(kPreviewClass);
        SetWindowPos(preview, nullptr, 10, kTop, 720, 800, SWP_NOZORDER | SWP_NOACTIVATE);
        album_.Take("nahled", preview);

        const HWND configuration = dorvak_[ID_Text2];
        Click(configuration);
        PressKey(VK_END, {VK_CONTROL});
        TypeText("/vyska1;4,9");
        WaitUntil("the hint",
                  [&] { return ListBoxItems(Control(preview, ID_Preview_Hints)).size() == 1; });
        SetWindowPos(preview, nullptr, 10, kTop, kLeft - 14, 477, SWP_NOZORDER | SWP_NOACTIVATE);
        album_.Take("nahled-rada", Joined(Place(preview), Place(dorvak_.Window())));
        dorvak_.Press(ID_Command19); // the default again
        dorvak_.Press(ID_Command36);

        dorvak_.Press(ID_Command11);
        dorvak_.WaitForStatus("Tabulka vytvorena Ok ", kLong);
        ShowWindow(dorvak_.Window(), SW_HIDE);
        album_.Take("hotova-tabulka", catia_.Window());
        ShowWindow(dorvak_.Window(), SW_SHOWNA);
    }

    void Import() {
        dorvak_.OpenPage(kImportPage);
        dorvak_.Press(ID_Command10);
        dorvak_.WaitForStatus("Nacteni parametru Ok");
        dorvak_.Press(ID_Command9);
        dorvak_.WaitForStatus("Nacteni tabulky Ok", kLong);
        album_.Take("import", dorvak_.Window());
    }

    // The assembly has changed: a part is there once less, two have gone, one has come.
    void Update() {
        const HWND list = dorvak_[ID_ListView1];
        dorvak_.OpenPage(kStructurePage);
        std::string structure = Text(dorvak_[ID_Text1]);
        for (const char* gone : {"Ložisko 6206", "Gufero 30x52x7", "Olejoznak"}) {
            const std::size_t name = FindPart(structure, gone);
            const std::size_t line = structure.rfind('\n', name) + 1;
            structure.erase(line, structure.find('\n', name) + 1 - line);
        }
        const std::string plug = "Zátka vypouštěcí";
        structure.replace(FindPart(structure, plug), plug.size(), "Zátka magnetická");
        PasteText(dorvak_[ID_Text1], structure);
        dorvak_.Press(ID_Command5);
        dorvak_.OpenPage(kEditPage);
        dorvak_.Press(ID_Command39);
        dorvak_.WaitForStatus("Aktualizovano: zmeneno 1, novych 1, chybi 2");
        WaitUntil("the balloon", [&] { return !BalloonText(dorvak_.Process()).empty(); });
        Send(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(RowCount(list) - 1));
        TakeWithBalloon("aktualizace");
        Click(list, RowPoint(list, RowCount(list) - 1));
        PressKey('Z', {VK_CONTROL});
        WaitUntil("the list before", [&] { return dorvak_.Positions() == "Pozic: 21"; });
    }

    void Sheets() {
        dorvak_.OpenPage(kEditPage);
        const HWND list = dorvak_[ID_ListView1];
        for (const char* shaft : {"Hřídel výstupní", "Hřídel", "Hřídel vstupní"}) {
            const int row = RowNamed(list, shaft);
            Send(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row));
            Click(list, RowPoint(list, row));
            for (int above = row; above > 0; --above) {
                PressKey(VK_UP, {VK_MENU});
                WaitUntil("the row moved", [&] { return RowNamed(list, shaft) == above - 1; });
            }
            if (!RowChecked(list, 0)) {
                Click(list, RowCheckPoint(list, 0));
            }
            WaitUntil("the sheet", [&] { return Cell(list, 0, kSheetColumn) == "2"; });
        }
        dorvak_.OpenPage(kSheetPage);
        dorvak_.Press(ID_Command21);
        const HWND sheets = dorvak_[ID_ListView3];
        WaitUntil("the sheets", [&] { return RowCount(sheets) == 3; });
        const int detail = RowNamed(sheets, "Detail drážky");
        if (RowChecked(sheets, detail)) {
            Click(sheets, RowCheckPoint(sheets, detail));
        }
        if (!Ticked(dorvak_[ID_Check1])) {
            dorvak_.Press(ID_Check1);
        }
        dorvak_.Press(ID_Command22);
        WaitUntil("the names", [&] { return !Cell(sheets, 0, 1).empty(); });
        album_.Take("sheet", dorvak_.Window());
    }

    void Trouble() {
        dorvak_.OpenPage(kExportPage);
        Click(dorvak_[ID_Text2]);
        PressKey(VK_END, {VK_CONTROL});
        TypeText("/pozice;100");
        dorvak_.Press(ID_Command11);
        WaitUntil("the balloon", [&] { return !BalloonText(dorvak_.Process()).empty(); });
        TakeWithBalloon("chyba");
        dorvak_.Press(ID_Command19);
        WaitUntil("no balloon", [&] { return BalloonText(dorvak_.Process()).empty(); });
        Sleep(500);

        const HWND status = dorvak_[ID_StatusBar1];
        RightClick(status, {60, 8});
        const HWND menu = WaitForPopupMenu();
        album_.Take("stavova-nabidka", Joined(Place(dorvak_.Window()), Place(menu)));
        PressKey(VK_ESCAPE);
    }

    // Where the part's name first stands in a line of the structure's text.
    static std::size_t FindPart(const std::string& structure, const std::string& part) {
        const std::size_t tab = structure.find("\t" + part + "\t");
        if (tab == std::string::npos) {
            throw std::runtime_error("not in the structure: " + part);
        }
        return tab + 1;
    }

    // In a window that has come forward for good: one that does so later covers the menu.
    void RightClick(HWND control, POINT point) const {
        BringToFront(dorvak_.Window());
        Sleep(500);
        Click(control, point, MouseButton::kRight);
    }

    void TakeWithBalloon(const std::string& name) const {
        RECT part = Place(dorvak_.Window());
        for (const HWND tip : dorvak_.Process().AllVisible(kTipClass)) {
            part = Joined(part, Place(tip));
        }
        album_.Take(name, part);
    }

    void Type(int picker, const std::string& text) const {
        Click(FindWindowExW(dorvak_[picker], nullptr, L"Edit", nullptr));
        TypeText(text + "\r");
    }

    const Album& album_;
    CatiaSession catia_{{"gearbox-assembly.txt", "gearbox-drawing.txt"}};
    DorvakWindow dorvak_;
};

// What the start menu's entry opens.
void PlayTrial(const Album& album) {
    const InstalledFolder folder;
    const Program session(folder.Session(), {"--zkouska"});
    const HWND window = session.WaitForWindow(com::Narrow(com::kTrialStandInWindow));
    HWND dorvak = nullptr;
    WaitUntil("Dorvak", [&] { return (dorvak = FindDorvak()) != nullptr; });
    WaitUntil("the places", [&] { return Place(dorvak).right == GetSystemMetrics(SM_CXSCREEN); });
    album.Take("zkouska", Joined(Place(window), Place(dorvak)));
    for (const HWND ended : {dorvak, window}) {
        PostMessageW(ended, WM_CLOSE, 0, 0);
    }
    session.WaitForEnd();
    WaitUntil("Dorvak's end", [] { return FindDorvak() == nullptr; });
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Lumsek\\Zkouska");
}

// What stands there at a start after a crash.
void PlayRecovery(const Album& album) {
    const CatiaSession catia({"gearbox-assembly.txt"});
    const auto folder = std::make_shared<const ProgramFolder>();
    {
        const DorvakWindow dorvak(folder, kStructurePage, {"--recovery-pace", "200"});
        dorvak.Press(ID_Command3);
        WaitUntil(
            "the walk's end", [&] { return dorvak.Status().starts_with("Sestav: "); }, kLong);
        dorvak.Press(ID_Command4);
        WaitUntil("the recovery file",
                  [&] { return std::filesystem::exists(com::Widen(folder->Path("obnova.txt"))); });
        Sleep(1000);
    } // killed
    const DorvakWindow dorvak(folder);
    const HWND box = dorvak.Process().WaitForWindow(kDialogClass);
    BringToFront(box); // the window has been brought forward meanwhile
    album.Take("obnova", box);
    Click(Control(box, IDYES));
    dorvak.Close();
}

} // namespace

int main(int argc, char** argv) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    int result = 1;
    if (argc == 2) {
        const SettingKeeper settings;
        const Album album(argv[1]);
        try {
            PlayTrial(album);
            Road(album).Play();
            PlayRecovery(album);
            result = 0;
        } catch (const std::exception& failure) {
            std::cout << "GuidePictures: " << failure.what() << std::endl;
        }
    } else {
        std::cout << "usage: GuidePictures FOLDER" << std::endl;
    }
    LeaveResult(result);
    return result;
}
