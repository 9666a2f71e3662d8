#include "win32/file_dialogs.hpp"

#include <cderr.h>
#include <commdlg.h>

#include <algorithm>
#include <string>

#include "automation/run_time_error.hpp"
#include "com/utf.hpp"

namespace win32 {

namespace {

constexpr std::size_t kLongestName = 32768; // in UTF-16 units, the end mark included

// Captions and patterns, each ended by NUL as the system wants them, from "caption|pattern".
std::wstring SystemFilter(const std::string& filter) {
    std::wstring ended = com::Widen(filter) + L'|';
    std::ranges::replace(ended, L'|', L'\0');
    return ended;
}

// What is appended to a name typed without an extension: that of the filter's pattern.
std::wstring DefaultExtension(const std::string& filter) {
    const std::size_t point = filter.find_last_of('.');
    return point == std::string::npos ? std::wstring() : com::Widen(filter.substr(point + 1));
}

bool Show(BOOL(WINAPI* show)(OPENFILENAMEW*), HWND owner, controls::FileDialog& dialog) {
    const std::wstring title = com::Widen(dialog.title);
    const std::wstring filter = SystemFilter(dialog.filter);
    const std::wstring extension = DefaultExtension(dialog.filter);
    const std::wstring folder = com::Widen(dialog.initial_folder);
    std::wstring name = com::Widen(dialog.file_name);
    name.resize(kLongestName);
    name.back() = L'\0';

    OPENFILENAMEW description{};
    description.lStructSize = sizeof description;
    description.hwndOwner = owner;
    description.lpstrFilter = filter.c_str();
    description.lpstrFile = name.data();
    description.nMaxFile = static_cast<DWORD>(name.size());
    description.lpstrInitialDir = folder.c_str();
    description.lpstrTitle = title.c_str();
    description.lpstrDefExt = extension.c_str();
    description.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY |
                        (dialog.path_must_exist ? OFN_PATHMUSTEXIST : 0U) |
                        (dialog.file_must_exist ? OFN_FILEMUSTEXIST : 0U);

    BOOL chosen = show(&description);
    DWORD error = chosen != FALSE ? 0 : CommDlgExtendedError();
    if (error == FNERR_INVALIDFILENAME && name.front() != L'\0') {
        // The proposed name is none to the system: the person can still choose another.
        name.assign(kLongestName, L'\0');
        description.lpstrFile = name.data();
        chosen = show(&description);
        error = chosen != FALSE ? 0 : CommDlgExtendedError();
    }
    if (error != 0) {
        throw automation::InvalidProcedureCall();
    }
    if (chosen == FALSE) {
        return false;
    }
    dialog.file_name = com::Narrow(name.c_str());
    return true;
}

} // namespace

bool ShowSaveDialog(HWND owner, controls::FileDialog& dialog) {
    return Show(GetSaveFileNameW, owner, dialog);
}

bool ShowOpenDialog(HWND owner, controls::FileDialog& dialog) {
    return Show(GetOpenFileNameW, owner, dialog);
}

} // namespace win32
