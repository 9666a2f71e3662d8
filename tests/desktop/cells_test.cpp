// The cells of the parts list: edited in place, filled from a spreadsheet, looked through.
#include <cstring>
#include <string_view>

#include "fixture.hpp"

using namespace driver;

namespace {

using Rows = std::vector<std::string>;

constexpr int kSize = 5;

// The text under a name of its own beside what stands on the clipboard, without a zero at its end.
void AddToClipboard(const wchar_t* format, std::wstring_view text) {
    const std::size_t size = text.size() * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    std::memcpy(GlobalLock(memory), text.data(), size);
    GlobalUnlock(memory);
    WaitUntil("the clipboard", [] { return OpenClipboard(nullptr) != FALSE; });
    SetClipboardData(RegisterClipboardFormatW(format), memory);
    CloseClipboard();
}

class Cells : public DesktopTest {
  protected:
    Cells() {
        FillList(dorvak_,
                 "\r\n0\tTop"
                 "\r\n1\t101\tTop"
                 "\r\n1\tB\tTop"
                 "\r\n1\tC\tTop",
                 3);
    }

    [[nodiscard]] HWND List() const { return dorvak_[ID_ListView1]; }
    [[nodiscard]] HWND Field() const {
        return reinterpret_cast<HWND>(Send(List(), LVM_GETEDITCONTROL));
    }
    // The text in the field that is open; a word where none is.
    [[nodiscard]] std::string FieldText() const {
        return Field() == nullptr ? "no field" : Text(Field());
    }
    void WaitForField(const std::string& expected) const {
        WaitForText("the field", expected, [&] { return FieldText(); });
    }

    DorvakWindow dorvak_;
};

} // namespace

TEST_F(Cells, AreEditedPastedAndFoundByKeyboard) {
    SelectRow(List(), 0);
    for (int step = 0; step < 4; ++step) {
        PressKey(VK_RIGHT);
    }
    KeepPicture("cells-cursor.png");
    PressKey(VK_F2);
    WaitForField("");
    TypeText("S235\r");
    WaitForField("");
    TypeText("C45");
    PressKey(VK_TAB); // to the size of the second row
    WaitForText("the material", "C45", [&] { return Cell(List(), 1, kMaterial); });
    TypeText("D30-60");
    KeepPicture("cells-field.png");
    PressKey(VK_TAB, {VK_SHIFT});
    WaitForField("C45");
    const auto beginning = static_cast<DWORD>(Send(Field(), EM_POSFROMCHAR, 0));
    EXPECT_GE(static_cast<short>(LOWORD(beginning)), 0) << "scrolled out of sight";
    TypeText("nothing");
    PressKey(VK_ESCAPE);
    WaitForField("no field");
    EXPECT_EQ(Column(List(), kMaterial), (Rows{"S235", "C45", ""}));
    EXPECT_EQ(Column(List(), kSize), (Rows{"", "D30-60", ""}));

    PressKey('A', {VK_CONTROL});
    PressKey(VK_F2);
    WaitForField("C45");
    TypeText("11 373");
    PressKey(VK_RETURN, {VK_CONTROL});
    WaitForColumn(List(), kMaterial, {"11 373", "11 373", "11 373"});
    PressKey('Z', {VK_CONTROL});
    WaitForColumn(List(), kMaterial, {"S235", "C45", ""});

    SelectRow(List(), 1);
    PutTextOnClipboard("Jmeno\tPoz.\tkusů\n"
                       "0012\t9\t4\n"
                       "\"1-2\nb\"\t8\t=A1\n"
                       "Čep\n");
    PressKey('V', {VK_CONTROL});
    WaitForColumn(List(), 0, {"101", "0012", "1-2\nb", "Čep"});
    EXPECT_EQ(Column(List(), 1), (Rows{"0001", "0002", "0003", "0004"}));
    EXPECT_EQ(Column(List(), kQuantity), (Rows{"1", "4", "=A1", "1"}));
    dorvak_.WaitForStatus("Vlozeno bunek: 5, radku: +1");
    KeepPicture("cells-pasted.png");

    PressKey('F', {VK_CONTROL});
    WaitForDialog(dorvak_, "Hledat");
    TypeText("ČEP\r");
    WaitUntil("the row that was looked for", [&] { return FocusedRow(List()) == 3; });
    dorvak_.WaitForStatus("Nalezeno");
    PressKey(VK_F2); // the list has the keyboard
    WaitForField("Čep");
    PressKey(VK_F3);
    WaitForField("no field");

    // One cell with a line break in it, as LibreOffice Calc gives it.
    SelectRow(List(), 3);
    PutTextOnClipboard("Čep\nM8");
    AddToClipboard(L"application/x-libreoffice-tsvc", L"\"Čep\nM8\"");
    PressKey('V', {VK_CONTROL});
    WaitForColumn(List(), 0, {"101", "0012", "1-2\nb", "Čep\nM8"});
}

TEST_F(Cells, AreEditedByADoubleClickWhichDragsNothing) {
    const POINT size = CellPoint(List(), 0, kSize);
    DoubleClick(List(), size);
    WaitForField("");
    TypeText("20x40");
    Click(List(), RowPoint(List(), 2)); // anything else takes the text
    WaitForText("the size", "20x40", [&] { return Cell(List(), 0, kSize); });
    EXPECT_EQ(Column(List(), 0), (Rows{"101", "B", "C"}));

    DoubleClick(List(), RowCheckPoint(List(), 0));
    Sleep(300); // a field would open now
    EXPECT_EQ(FieldText(), "no field");
    EXPECT_FALSE(RowChecked(List(), 0)) << "ticked and unticked";

    // A click on another cell of a selected row edits nothing.
    Click(List(), CellPoint(List(), 2, kSize));
    Sleep(GetDoubleClickTime());
    Click(List(), CellPoint(List(), 2, kSize));
    Sleep(GetDoubleClickTime() + 500); // a field would open now
    EXPECT_EQ(FieldText(), "no field");

    // A slow second click renames, and only that.
    Click(List(), RowPoint(List(), 2));
    Click(List(), RowPoint(List(), 2));
    WaitForField("C");
    TypeText("Kolo\r");
    WaitForText("the name", "Kolo", [&] { return Cell(List(), 2, 0); });
    EXPECT_EQ(FieldText(), "no field");

    const RECT place = Place(dorvak_.Window());
    DoubleClick(List(), CellPoint(List(), 1, kSize));
    WaitForField("");
    TypeText("D8");
    WaitForField("D8");
    TellDpi(dorvak_.Window(), 144, place);
    WaitForText("the size", "D8", [&] { return Cell(List(), 1, kSize); });
    PressKey(VK_F2);
    WaitForField("D8");
    KeepPicture("cells-field-144.png");
    PressKey(VK_ESCAPE);
    PressKey(VK_LEFT);
    KeepPicture("cells-cursor-144.png");
}

TEST_F(Cells, StayOpenWhileThePersonLooksIntoAnotherProgram) {
    SelectRow(List(), 0);
    for (int step = 0; step < 4; ++step) {
        PressKey(VK_RIGHT);
    }
    PressKey(VK_F2);
    WaitForField("");
    TypeText("S235");
    WaitForField("S235");
    const HWND other =
        CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"another program", WS_POPUP | WS_VISIBLE, 0, 0,
                        60, 60, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    BringToFront(other);
    Sleep(300); // the field would close now
    EXPECT_EQ(FieldText(), "S235");
    DestroyWindow(other);
    BringToFront(dorvak_.Window());
    WaitUntil("the focus in the field",
              [&] { return FocusedControl(dorvak_.Window()) == Field(); });
    TypeText("JR\r");
    WaitForText("the material", "S235JR", [&] { return Cell(List(), 0, kMaterial); });
}
