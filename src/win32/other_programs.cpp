#include "win32/other_programs.hpp"

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include <windows.h>

#include <objbase.h>

#include "com/owned.hpp"
#include "com/utf.hpp"
#include "text/text.hpp"

namespace win32 {

namespace {

constexpr DWORD kLongestPath = 32768;

com::OwnedHandle ProcessOf(platform::WindowHandle window) {
    DWORD process = 0;
    GetWindowThreadProcessId(reinterpret_cast<HWND>(window), &process);
    return com::OwnedHandle(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
}

// How much a process may do: the higher, the more.
std::optional<DWORD> IntegrityOf(HANDLE process) {
    HANDLE opened = nullptr;
    if (OpenProcessToken(process, TOKEN_QUERY, &opened) == FALSE) {
        return std::nullopt;
    }
    const com::OwnedHandle token(opened);
    alignas(TOKEN_MANDATORY_LABEL)
        std::array<std::byte, sizeof(TOKEN_MANDATORY_LABEL) + SECURITY_MAX_SID_SIZE>
            answer{};
    DWORD size = 0;
    if (GetTokenInformation(token.get(), TokenIntegrityLevel, answer.data(),
                            static_cast<DWORD>(answer.size()), &size) == FALSE) {
        return std::nullopt;
    }
    const PSID level = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(answer.data())->Label.Sid;
    return *GetSidSubAuthority(level, *GetSidSubAuthorityCount(level) - 1U);
}

// Registered paths may be short ones.
std::string LongPath(const std::string& path) {
    std::wstring full(kLongestPath, L'\0');
    full.resize(GetLongPathNameW(com::Widen(path).c_str(), full.data(), kLongestPath));
    return full.empty() ? path : com::Narrow(full);
}

// The text of a class's key; empty where there is none. A program of 32 bits has entered its class
// in a part of the registry of its own.
std::string ClassText(const std::wstring& key) {
    for (const REGSAM part : {REGSAM{KEY_WOW64_64KEY}, REGSAM{KEY_WOW64_32KEY}}) {
        HKEY opened = nullptr;
        if (RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_QUERY_VALUE | part, &opened) !=
            ERROR_SUCCESS) {
            continue;
        }
        const com::Owned<HKEY> owned(opened);
        std::vector<wchar_t> text(kLongestPath);
        auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        if (RegGetValueW(opened, nullptr, nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) ==
            ERROR_SUCCESS) {
            return com::Narrow(text.data());
        }
    }
    return {};
}

} // namespace

platform::Rights OtherPrograms::RightsOf(platform::WindowHandle window) {
    const com::OwnedHandle process = ProcessOf(window);
    const auto theirs = process ? IntegrityOf(process.get()) : std::nullopt;
    const auto ours = IntegrityOf(GetCurrentProcess());
    if (!theirs || !ours) {
        return platform::Rights::kUnknown;
    }
    return *theirs == *ours  ? platform::Rights::kSame
           : *theirs > *ours ? platform::Rights::kMore
                             : platform::Rights::kLess;
}

std::string OtherPrograms::PathOf(platform::WindowHandle window) {
    const com::OwnedHandle process = ProcessOf(window);
    std::wstring path(kLongestPath, L'\0');
    DWORD length = kLongestPath;
    if (!process || QueryFullProcessImageNameW(process.get(), 0, path.data(), &length) == FALSE) {
        return {};
    }
    path.resize(length);
    return LongPath(com::Narrow(path));
}

platform::Registration OtherPrograms::RegisteredUnder(std::string_view program_id) {
    if (purpose_ == com::Purpose::kTrial) {
        const HWND stand_in = FindWindowW(com::kTrialStandInWindow, nullptr);
        return {stand_in != nullptr, PathOf(reinterpret_cast<platform::WindowHandle>(stand_in))};
    }
    CLSID class_id{};
    if (FAILED(CLSIDFromProgID(com::Widen(program_id).c_str(), &class_id))) {
        return {};
    }
    std::array<wchar_t, 40> id{};
    StringFromGUID2(class_id, id.data(), static_cast<int>(id.size()));
    const std::string command =
        ClassText(std::wstring(L"CLSID\\") + id.data() + L"\\LocalServer32");
    const std::string program(text::ProgramOf(command));
    return {true, program.empty() ? program : LongPath(program)};
}

} // namespace win32
