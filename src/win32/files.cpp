#include "win32/files.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <optional>
#include <vector>

#include <windows.h>

#include "com/owned.hpp"
#include "com/utf.hpp"
#include "text/text.hpp"

namespace win32 {

namespace {

constexpr std::size_t kChunk = 1U << 20;
constexpr std::string_view kSignature = "\xEF\xBB\xBF"; // of a text in UTF-8
constexpr int kTries = 10;                              // half a second
constexpr int kPatientTries = 100;                      // five seconds
constexpr DWORD kQuotaExceeded = 1295; // ERROR_DISK_QUOTA_EXCEEDED, which older headers lack
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
    case kQuotaExceeded:
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
DWORD WhenFree(Access&& access, std::initializer_list<DWORD> in_use, int most_tries = kTries) {
    constexpr DWORD kPause = 50; // milliseconds
    DWORD error = access();
    for (int tries = 1; tries < most_tries && std::ranges::find(in_use, error) != in_use.end();
         ++tries) {
        Sleep(kPause);
        error = access();
    }
    return error;
}

com::OwnedHandle Open(const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition,
                      int tries = kTries) {
    HANDLE file = INVALID_HANDLE_VALUE;
    const DWORD error = WhenFree(
        [&] {
            file = CreateFileW(path.c_str(), access, sharing, nullptr, disposition,
                               FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
            return file == INVALID_HANDLE_VALUE ? GetLastError() : DWORD{ERROR_SUCCESS};
        },
        {ERROR_SHARING_VIOLATION}, tries);
    if (error != ERROR_SUCCESS) {
        throw FileError(error);
    }
    return com::OwnedHandle(file);
}

// Raises what writing to a file that is there already would raise.
void CheckWritable(const std::wstring& path, int tries) {
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
    Open(path, GENERIC_WRITE | DELETE, kShareAll, OPEN_EXISTING, tries);
}

// FILE_RENAME_REPLACE_IF_EXISTS and FILE_RENAME_POSIX_SEMANTICS, and the information class that
// takes them, FileRenameInfoEx; older headers lack them.
constexpr DWORD kReplaceIfExists = 1;
constexpr DWORD kPosixSemantics = 2;
constexpr auto kRenameInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);

// A file that is being written beside another one. It goes when it does not come to take the other
// one's place. Nobody else can open it meanwhile. It always has the same name, so that a killed
// program leaves at most one, which the next save takes over.
class FileBeside {
  public:
    FileBeside(const std::wstring& path, int tries)
        : path_(path),
          file_(Open(path + L".new", GENERIC_WRITE | DELETE, 0, CREATE_ALWAYS, tries)) {}
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

    // Where something has the other file open that lets it be deleted, the name is taken from it at
    // once, where the system can do that.
    void TakePlace(int tries) {
        // On the disk before it does.
        if (FlushFileBuffers(file_.get()) == FALSE) {
            throw FileError(GetLastError());
        }
        const DWORD error = WhenFree(
            [this] {
                return Rename(kRenameInfoEx, kReplaceIfExists | kPosixSemantics) ||
                               Rename(FileRenameInfo, kReplaceIfExists)
                           ? DWORD{ERROR_SUCCESS}
                           : GetLastError();
            },
            {ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED}, tries);
        if (error != ERROR_SUCCESS) {
            throw FileError(error);
        }
        in_place_ = true;
    }

  private:
    // The first member of FILE_RENAME_INFO is a flag to one information class, flags to the other.
    bool Rename(FILE_INFO_BY_HANDLE_CLASS information, DWORD flags) {
        const std::size_t length = path_.size() * sizeof(wchar_t);
        std::vector<std::byte> buffer(sizeof(FILE_RENAME_INFO) + length);
        std::memcpy(buffer.data(), &flags, sizeof flags);
        auto& rename = *reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
        rename.FileNameLength = static_cast<DWORD>(length);
        std::memcpy(rename.FileName, path_.data(), length);
        return SetFileInformationByHandle(file_.get(), information, &rename,
                                          static_cast<DWORD>(buffer.size())) != FALSE;
    }

    std::wstring path_;
    com::OwnedHandle file_;
    bool in_place_ = false;
};

std::string ReadBytes(const std::wstring& path) {
    const com::OwnedHandle file = Open(path, GENERIC_READ, kShareAll, OPEN_EXISTING);
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
    return bytes;
}

// `kept` gets the file before, where its path is not empty and the bytes are others.
void WriteBytes(const std::wstring& path, const std::string& bytes, int tries,
                const std::wstring& kept = {}) {
    CheckWritable(path, tries);
    FileBeside beside(path, tries);
    beside.Write(bytes);
    if (!kept.empty()) {
        try {
            const std::string before = ReadBytes(path);
            if (before != bytes) {
                WriteBytes(kept, before, tries);
            }
        } catch (const automation::RunTimeError&) {
            // There is none, or no room for it: the new one matters more.
        }
    }
    beside.TakePlace(tries);
}

std::optional<FILETIME> LastWrite(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) == FALSE) {
        return std::nullopt;
    }
    return data.ftLastWriteTime;
}

} // namespace

bool CodePageFiles::Exists(std::string_view path) {
    return GetFileAttributesW(com::Widen(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void CodePageFiles::MakeFolder(std::string_view path) {
    CreateDirectoryW(com::Widen(path).c_str(), nullptr);
}

bool CodePageFiles::IsNewer(std::string_view path, std::string_view than) {
    const auto written = LastWrite(com::Widen(path));
    const auto other = LastWrite(com::Widen(than));
    return written && (!other || CompareFileTime(&*written, &*other) > 0);
}

std::string CodePageFiles::DateOf(std::string_view path) {
    const auto written = LastWrite(com::Widen(path));
    if (!written) {
        throw automation::FileNotFound();
    }
    SYSTEMTIME universal;
    SYSTEMTIME local;
    FileTimeToSystemTime(&*written, &universal);
    SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local);
    std::array<char, 32> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%04u-%02u-%02u %02u-%02u-%02u", local.wYear,
                      local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond);
    return {text.data(), static_cast<std::size_t>(length)};
}

void CodePageFiles::Copy(std::string_view from, std::string_view to) {
    WriteBytes(com::Widen(to), ReadBytes(com::Widen(from)), kTries);
}

void CodePageFiles::Remove(std::string_view path) {
    DeleteFileW(com::Widen(path).c_str());
}

std::vector<std::string> CodePageFiles::NamesIn(std::string_view folder, std::string_view ending) {
    std::vector<std::string> names;
    const std::wstring pattern = com::Widen(std::string(folder) + "\\*");
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(pattern.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return names;
    }
    do {
        const std::string name = com::Narrow(found.cFileName);
        const bool is_file = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
        if (is_file && name.size() > ending.size() &&
            text::EqualsIgnoringCase(std::string_view(name).substr(name.size() - ending.size()),
                                     ending)) {
            names.push_back(name.substr(0, name.size() - ending.size()));
        }
    } while (FindNextFileW(search, &found) != FALSE);
    FindClose(search);
    return names;
}

std::string CodePageFiles::Read(std::string_view path) {
    const std::string bytes = ReadBytes(com::Widen(path));
    if (bytes.starts_with(kSignature)) {
        return bytes.substr(kSignature.size());
    }
    return com::FromSystemCodePage(bytes);
}

void CodePageFiles::Write(std::string_view path, std::string_view text,
                          const platform::Writing& writing) {
    const auto encoded = com::ToSystemCodePageExactly(text);
    // A text that begins like the signature would be read as if it had one.
    const bool plain = encoded && !encoded->starts_with(kSignature);
    WriteBytes(com::Widen(path), plain ? *encoded : std::string(kSignature) + std::string(text),
               writing.patient ? kPatientTries : kTries, com::Widen(writing.keep_before_as));
}

} // namespace win32
