#include "win32/log_file.hpp"

#include <utility>

#include <windows.h>

#include "com/owned.hpp"
#include "com/utf.hpp"
#include "win32/explorer.hpp"

namespace win32 {

namespace {

constexpr std::string_view kSignature = "\xEF\xBB\xBF"; // of a text in UTF-8
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

com::OwnedHandle Open(const std::wstring& path, DWORD access, DWORD disposition) {
    const HANDLE file = CreateFileW(path.c_str(), access, kShareAll, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    return com::OwnedHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

com::OwnedHandle OpenToAppend(const std::wstring& path) {
    return Open(path, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE, OPEN_ALWAYS);
}

long long SizeOf(const com::OwnedHandle& file) {
    LARGE_INTEGER size{};
    GetFileSizeEx(file.get(), &size);
    return size.QuadPart;
}

} // namespace

LogFile::LogFile(std::string folder, long long limit) : folder_(std::move(folder)), limit_(limit) {
    MakeFolder();
}

void LogFile::MakeFolder() const {
    CreateDirectoryW(com::Widen(folder_).c_str(), nullptr);
}

void LogFile::Write(std::string_view line) {
    const std::wstring path = com::Widen(folder_ + "\\dorvak.log");
    com::OwnedHandle file = OpenToAppend(path);
    if (!file) {
        MakeFolder();
        file = OpenToAppend(path);
    }
    std::string bytes = std::string(line) + "\r\n";
    const long long size = SizeOf(file) + static_cast<long long>(bytes.size());
    if (file && size > limit_) {
        file.reset();
        const BOOL moved =
            MoveFileExW(path.c_str(), com::Widen(folder_ + "\\dorvak.old.log").c_str(),
                        MOVEFILE_REPLACE_EXISTING);
        // Something may have hold of the predecessor for a while, and no longer.
        if (moved == FALSE && size > 2 * limit_) {
            Open(path, GENERIC_WRITE, TRUNCATE_EXISTING);
        }
        file = OpenToAppend(path);
    }
    if (!file) {
        return;
    }
    if (SizeOf(file) == 0) {
        bytes.insert(0, kSignature);
    }
    DWORD written = 0;
    WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

void LogFile::ShowFolder() {
    MakeFolder(); // the shell shows another one where it is not there
    OpenInExplorer(com::Widen(folder_));
}

std::string LogFolder(const std::string& otherwise) {
    constexpr DWORD kLongest = 32768;
    std::wstring path(kLongest, L'\0');
    path.resize(GetEnvironmentVariableW(L"LOCALAPPDATA", path.data(), kLongest));
    return path.empty() ? otherwise : com::Narrow(path) + "\\Dorvak";
}

} // namespace win32
