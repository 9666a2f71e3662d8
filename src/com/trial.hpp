// On trial: the program and CATIA's stand-in joined by a name of their own, under which nothing
// else looks for CATIA, so that neither a CATIA nor another program's macros meet the stand-in.
// Both are started with the switch.
#pragma once

#include <string_view>

#include <windows.h>

namespace com {

inline constexpr std::string_view kTrialSwitch = "--zkouska";

enum class Purpose { kWork, kTrial };
// Of a program that was started by this command line.
Purpose PurposeOf(std::wstring_view command_line);

// The class that the stand-in's application object runs under. It is entered nowhere in the
// registry: the Running Object Table needs no more than its name.
inline constexpr CLSID kTrialClass = {
    0x8d2c41f6, 0x3b7e, 0x4d95, {0x91, 0x0a, 0x6f, 0xe2, 0x58, 0xb4, 0x1d, 0x07}};

// The classes of the programs' windows.
inline constexpr const wchar_t* kDorvakWindow = L"DorvakForm1";
inline constexpr const wchar_t* kStandInWindow = L"CatiaSimWindow";
inline constexpr const wchar_t* kTrialStandInWindow = L"CatiaSimZkouska";

// Whether the window is the stand-in's on trial.
bool IsTrialStandIn(HWND window);

} // namespace com
