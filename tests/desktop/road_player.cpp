// PlayRoad FOLDER: plays the typical road in the real windows, from the product to the table in the
// drawing, and leaves in the folder a picture of each step, one of the finished sheet, and the
// table as text.
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "com/utf.hpp"
#include "programs.hpp"
#include "text/text.hpp"
#include "win32/resource.h"

namespace {

using namespace driver;

constexpr Milliseconds kLong{120000};

class Album {
  public:
    explicit Album(std::string folder) : folder_(std::move(folder)) {}

    // Takes a picture of the screen once it has settled.
    void Take(const std::string& step) {
        Sleep(400);
        const std::string number = std::to_string(++pictures_);
        const std::string name = (number.size() < 2 ? "0" : "") + number + "-" + step + ".png";
        SaveScreenshot(Path(name));
        std::cout << name << std::endl;
    }
    [[nodiscard]] std::string Path(const std::string& name) const { return folder_ + "\\" + name; }

  private:
    std::string folder_;
    int pictures_ = 0;
};

// The lines of the drawing's text that describe its last written table: the first line of the table
// and those indented below it.
std::string TableText(const std::string& drawing) {
    std::string table;
    std::size_t indent = 0;
    for (const std::string_view line : text::Split(drawing, "\n")) {
        const std::size_t start = line.find_first_not_of(' ');
        if (table.empty()) {
            if (start != std::string_view::npos && line.substr(start).starts_with("table ")) {
                indent = start;
                table = std::string(line) + "\n";
            }
        } else if (start == std::string_view::npos || start <= indent) {
            break;
        } else {
            table += std::string(line) + "\n";
        }
    }
    return table;
}

void MoveWindowTo(HWND window, int x, int y) {
    SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Play(Album& album) {
    const CatiaSession catia({"gearbox-assembly.txt", "gearbox-drawing.txt"});
    SetWindowPos(catia.Window(), nullptr, 0, 0, GetSystemMetrics(SM_CXSCREEN),
                 GetSystemMetrics(SM_CYSCREEN), SWP_NOZORDER | SWP_NOACTIVATE);
    {
        const DorvakWindow dorvak;
        const RECT place = Place(dorvak.Window());
        constexpr int kMargin = 8;
        const int right = GetSystemMetrics(SM_CXSCREEN) - (place.right - place.left) - kMargin;
        const int bottom = GetSystemMetrics(SM_CYSCREEN) - (place.bottom - place.top) - 4 * kMargin;
        MoveWindowTo(dorvak.Window(), right, bottom); // beside the product's tree
        album.Take("start");

        dorvak.Press(ID_Command3);
        WaitUntil(
            "the walk's end", [&] { return dorvak.Status().starts_with("Sestav: "); }, kLong);
        album.Take("strom");

        dorvak.Press(ID_Command4);
        WaitUntil("the parts list", [&] { return RowCount(dorvak[ID_ListView1]) > 0; });
        album.Take("kusovnik");

        dorvak.OpenPage(kEditPage);
        const HWND list = dorvak[ID_ListView1];
        for (const int row : {0, 1, 2, 5}) {
            Click(list, RowCheckPoint(list, row));
        }
        WaitUntil("the sheets", [&] { return Cell(list, 5, 3) == "5"; });
        album.Take("listy");

        catia.Do("activate Gearbox.CATDrawing");
        MoveWindowTo(dorvak.Window(), kMargin, bottom); // beside the table to come
        dorvak.OpenPage(kExportPage);
        album.Take("vykres");

        // CATIA turns busy for a moment in the middle, which holds the picture still: the table has
        // 28 rows, and 9 of them stand when call 480 comes.
        catia.Do("fail 480 busy 8");
        dorvak.Press(ID_Command11);
        dorvak.WaitForStatus("Catie doplnuje radku 19/28", kLong);
        album.Take("vytvari");
        dorvak.WaitForStatus("Tabulka vytvorena Ok ", kLong);
        album.Take("hotovo");
        dorvak.Close();
    }
    Sleep(400);
    SaveScreenshot(album.Path("sheet.png"), Place(catia.Window()));
    std::ofstream(std::filesystem::path(com::Widen(album.Path("table.txt"))), std::ios::binary)
        << TableText(catia.Drawing());
}

} // namespace

int main(int argc, char** argv) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    int result = 1;
    if (argc == 2) {
        Album album(argv[1]);
        try {
            Play(album);
            result = 0;
        } catch (const std::exception& failure) {
            std::cout << "PlayRoad: " << failure.what() << std::endl;
        }
    } else {
        std::cout << "usage: PlayRoad FOLDER" << std::endl;
    }
    LeaveResult(result);
    return result;
}
