#include "win32/files.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <vector>

#include <windows.h>

#include "com/owned.hpp"
#include "com/utf.hpp"

namespace win32 {

namespace {

constexpr std::size_t kChunk = 1U << 20;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// The classic error of a failed file operation.
automation::RunTimeError FileError(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
        return automation::FileNotFound();
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return {76, "Path not found"};
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
        return {70, "Permission denied"};
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return {61, "Disk full"};
    case ERROR_NOT_READY:
        return {71, "Disk not ready"};
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
        return {52, "Bad file name or number"};
    case ERROR_ACCESS_DENIED:
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
        return {75, "Path/File access error"};
    default:
        return {57, "Device I/O error"};
    }
}

// Tries `access`, which returns an error code or 0, again for a while as long as something else has
// hold of the file: a copy of the program that saves at the same moment, or a virus scanner, soon
// lets go of it. Returns what the last try did.
template <typename Access>
DWORD WhenFree(Access&& access, std::initializer_list<DWORD> in_use) {
    constexpr int kTries = 10;
    constexpr DWORD kPause = 50; // milliseconds
    DWORD error = access();
    for (int tries = 1; tries < kTries && std::ranges::find(in_use, error) != in_use.end();
         ++tries) {
        Sleep(kPause);
        error = access();
    }
    return error;
}

com::OwnedHandle Open(const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition) {
    HANDLE file = INVALID_HANDLE_VALUE;
    const DWORD error = WhenFree(
        [&] {
            file = CreateFileW(path.c_str(), access, sharing, nullptr, disposition,
                               FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
            return file == INVALID_HANDLE_VALUE ? GetLastError() : DWORD{ERROR_SUCCESS};
        },
        {ERROR_SHARING_VIOLATION});
    if (error != ERROR_SUCCESS) {
        throw FileError(error);
    }
    return com::OwnedHandle(file);
}

// Raises what writing to a file that is there already would raise.
void CheckWritable(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return;
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        throw FileError(ERROR_ACCESS_DENIED);
    }
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        throw FileError(ERROR_WRITE_PROTECT);
    }
    Open(path, GENERIC_WRITE | DELETE, kShareAll, OPEN_EXISTING);
}

// A file that is being written beside another one. It goes when it does not come to take the other
// one's place. Nobody else can open it meanwhile. It always has the same name, so that a killed
// program leaves at most one, which the next save takes over.
class FileBeside {
  public:
    explicit FileBeside(const std::wstring& path)
        : path_(path), file_(Open(path + L".new", GENERIC_WRITE | DELETE, 0, CREATE_ALWAYS)) {}
    ~FileBeside() {
        if (!in_place_) {
            FILE_DISPOSITION_INFO disposition{};
            disposition.DeleteFile = TRUE;
            SetFileInformationByHandle(file_.get(), FileDispositionInfo, &disposition,
                                       sizeof disposition);
        }
    }
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    void Write(std::string_view bytes) {
        while (!bytes.empty()) {
            DWORD written = 0;
            if (WriteFile(file_.get(), bytes.data(),
                          static_cast<DWORD>(std::min(bytes.size(), kChunk)), &written,
                          nullptr) == FALSE) {
                throw FileError(GetLastError());
            }
            if (written == 0) {
                throw FileError(ERROR_DISK_FULL);
            }
            bytes.remove_prefix(written);
        }
    }

    void TakePlace() {
        // On the disk before it does.
        if (FlushFileBuffers(file_.get()) == FALSE) {
            throw FileError(GetLastError());
        }
        const std::size_t length = path_.size() * sizeof(wchar_t);
        std::vector<std::byte> buffer(sizeof(FILE_RENAME_INFO) + length);
        auto& rename = *reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
        rename.ReplaceIfExists = TRUE;
        rename.FileNameLength = static_cast<DWORD>(length);
        std::memcpy(rename.FileName, path_.data(), length);
        const DWORD error = WhenFree(
            [&] {
                return SetFileInformationByHandle(file_.get(), FileRenameInfo, &rename,
                                                  static_cast<DWORD>(buffer.size())) == FALSE
                           ? GetLastError()
                           : DWORD{ERROR_SUCCESS};
            },
            {ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED});
        if (error != ERROR_SUCCESS) {
            throw FileError(error);
        }
        in_place_ = true;
    }

  private:
    std::wstring path_;
    com::OwnedHandle file_;
    bool in_place_ = false;
};

} // namespace

std::string CodePageFiles::ProgramFolder() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) ==
           path.size()) {
        path.resize(path.size() * 2);
    }
    path.resize(length);
    return com::Narrow(std::wstring_view(path).substr(0, path.find_last_of(L'\\')));
}

bool CodePageFiles::Exists(std::string_view path) {
    return GetFileAttributesW(com::Widen(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void CodePageFiles::MakeFolder(std::string_view path) {
    CreateDirectoryW(com::Widen(path).c_str(), nullptr);
}

std::string CodePageFiles::Read(std::string_view path) {
    const com::OwnedHandle file = Open(com::Widen(path), GENERIC_READ, kShareAll, OPEN_EXISTING);
    std::string bytes;
    for (DWORD read = 1; read != 0;) {
        const std::size_t before = bytes.size();
        bytes.resize(before + kChunk);
        if (ReadFile(file.get(), bytes.data() + before, static_cast<DWORD>(kChunk), &read,
                     nullptr) == FALSE) {
            throw FileError(GetLastError());
        }
        bytes.resize(before + read);
    }
    return com::FromSystemCodePage(bytes);
}

void CodePageFiles::Write(std::string_view path, std::string_view text) {
    const std::wstring target = com::Widen(path);
    CheckWritable(target);
    FileBeside beside(target);
    beside.Write(com::ToSystemCodePage(text));
    beside.TakePlace();
}

} // namespace win32
