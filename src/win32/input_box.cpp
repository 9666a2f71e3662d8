#include "win32/input_box.hpp"

#include "win32/layout.hpp"
#include "win32/resource.h"
#include "win32/views.hpp"

namespace win32 {

namespace {

struct InputBox {
    std::string_view prompt;
    std::string_view title;
    std::string_view proposal;
    std::string answer;
    com::Owned<HFONT> font;
};

// The resource's places follow the DPI alone; the font follows the text size, too.
void FollowTextSize(HWND dialog) {
    const auto enlarged = [dpi = static_cast<int>(GetDpiForWindow(dialog))](LONG length) {
        return platform::Proportion(length, static_cast<int>(LayoutDpi()), dpi);
    };
    RECT outer;
    RECT client;
    GetWindowRect(dialog, &outer);
    GetClientRect(dialog, &client);
    SetWindowPos(dialog, nullptr, 0, 0,
                 outer.right - outer.left + enlarged(client.right) - client.right,
                 outer.bottom - outer.top + enlarged(client.bottom) - client.bottom,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        RECT place;
        GetWindowRect(child, &place);
        MapWindowPoints(HWND_DESKTOP, dialog, reinterpret_cast<POINT*>(&place), 2);
        SetWindowPos(child, nullptr, enlarged(place.left), enlarged(place.top),
                     enlarged(place.right - place.left), enlarged(place.bottom - place.top),
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void Fill(HWND dialog, InputBox& box) {
    FollowTextSize(dialog);
    box.font = MessageFont(GetDpiForWindow(dialog));
    for (const int id : {ID_InputBox_Prompt, ID_InputBox_Text, IDOK, IDCANCEL}) {
        SendDlgItemMessageW(dialog, id, WM_SETFONT, reinterpret_cast<WPARAM>(box.font.get()),
                            FALSE);
    }
    ShowText(dialog, box.title);
    ShowText(GetDlgItem(dialog, ID_InputBox_Prompt), box.prompt);
    ShowText(GetDlgItem(dialog, ID_InputBox_Text), box.proposal);
    SendMessageW(dialog, DM_REPOSITION, 0, 0); // onto the screen, wherever the owner stands
}

INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM w, LPARAM l) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, l);
        Fill(dialog, *reinterpret_cast<InputBox*>(l));
        return TRUE; // the field is the first control that takes the focus, with its text selected
    }
    if (message == WM_COMMAND && (LOWORD(w) == IDOK || LOWORD(w) == IDCANCEL)) {
        if (LOWORD(w) == IDOK) {
            auto& box = *reinterpret_cast<InputBox*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
            box.answer = ReadText(GetDlgItem(dialog, ID_InputBox_Text));
        }
        EndDialog(dialog, LOWORD(w));
        return TRUE;
    }
    return FALSE;
}

} // namespace

std::string ShowInputBox(HWND owner, std::string_view prompt, std::string_view title,
                         std::string_view proposal) {
    InputBox box{prompt, title, proposal, {}, {}};
    DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_INPUT_BOX), owner,
                    DialogProcedure, reinterpret_cast<LPARAM>(&box));
    return box.answer;
}

} // namespace win32
