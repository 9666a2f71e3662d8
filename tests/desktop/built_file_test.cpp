// The built programs: what their files say of their safety, and where they take libraries from.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>

#include "com/safety.hpp"
#include "com/utf.hpp"
#include "fixture.hpp"

using namespace driver;

namespace {

std::string Lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

// A program's file, by the places that its parts have in memory.
class ProgramFile {
  public:
    explicit ProgramFile(const std::string& path) {
        std::ifstream file(std::filesystem::path(com::Widen(path)), std::ios::binary);
        bytes_.assign(std::istreambuf_iterator<char>(file), {});
        const auto dos = Part<IMAGE_DOS_HEADER>(0);
        headers_ = Part<IMAGE_NT_HEADERS64>(static_cast<std::size_t>(dos.e_lfanew));
        const std::size_t sections = static_cast<std::size_t>(dos.e_lfanew) +
                                     offsetof(IMAGE_NT_HEADERS64, OptionalHeader) +
                                     headers_.FileHeader.SizeOfOptionalHeader;
        for (std::size_t i = 0; i < headers_.FileHeader.NumberOfSections; ++i) {
            sections_.push_back(
                Part<IMAGE_SECTION_HEADER>(sections + i * sizeof(IMAGE_SECTION_HEADER)));
        }
    }

    [[nodiscard]] const IMAGE_NT_HEADERS64& Headers() const { return headers_; }
    [[nodiscard]] const std::vector<IMAGE_SECTION_HEADER>& Sections() const { return sections_; }
    [[nodiscard]] IMAGE_DATA_DIRECTORY Directory(std::size_t index) const {
        return headers_.OptionalHeader.DataDirectory[index];
    }

    // The libraries that Windows loads before the program runs.
    [[nodiscard]] std::set<std::string> Imports() const {
        std::set<std::string> names;
        DWORD place = Directory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress;
        for (;; place += static_cast<DWORD>(sizeof(IMAGE_IMPORT_DESCRIPTOR))) {
            const auto import = Part<IMAGE_IMPORT_DESCRIPTOR>(OffsetOf(place));
            if (import.Name == 0) {
                return names;
            }
            const std::size_t name = OffsetOf(import.Name);
            names.insert(Lower(bytes_.substr(name, bytes_.find('\0', name) - name)));
        }
    }

  private:
    template <typename Kind>
    [[nodiscard]] Kind Part(std::size_t offset) const {
        Kind part{};
        if (offset + sizeof part > bytes_.size()) {
            throw std::runtime_error("the program's file ends early");
        }
        std::memcpy(&part, bytes_.data() + offset, sizeof part);
        return part;
    }
    [[nodiscard]] std::size_t OffsetOf(DWORD place) const {
        for (const IMAGE_SECTION_HEADER& section : sections_) {
            if (place >= section.VirtualAddress &&
                place - section.VirtualAddress < section.SizeOfRawData) {
                return place - section.VirtualAddress + section.PointerToRawData;
            }
        }
        throw std::runtime_error("a place outside of the program's sections");
    }

    std::string bytes_;
    IMAGE_NT_HEADERS64 headers_{};
    std::vector<IMAGE_SECTION_HEADER> sections_;
};

std::string Manifest(const std::string& path) {
    const HMODULE file =
        LoadLibraryExW(com::Widen(path).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const HRSRC place = FindResourceW(file, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));
    const HGLOBAL manifest = LoadResource(file, place);
    std::string text(static_cast<const char*>(LockResource(manifest)), SizeofResource(file, place));
    FreeLibrary(file);
    return text;
}

std::string PathIn(const std::string& variable) {
    return std::filesystem::path(com::Widen(Environment(variable))).make_preferred().string();
}

std::string OwnPath() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), 32768));
    return com::Narrow(path);
}

class BuiltFile : public DesktopTest {
  protected:
    const std::vector<std::string> paths_{PathIn("DORVAK_EXE"), PathIn("CATIASIM_EXE")};
};

} // namespace

TEST_F(BuiltFile, StandsAtAnAddressThatNobodyKnowsAndRunsNoData) {
    for (const std::string& path : paths_) {
        SCOPED_TRACE(path);
        const ProgramFile file(path);
        const WORD marks = file.Headers().OptionalHeader.DllCharacteristics;
        EXPECT_NE(marks & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE, 0);
        EXPECT_NE(marks & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA, 0);
        EXPECT_NE(marks & IMAGE_DLLCHARACTERISTICS_NX_COMPAT, 0);
#ifdef _MSC_VER
        EXPECT_NE(marks & IMAGE_DLLCHARACTERISTICS_GUARD_CF, 0);
#endif
        // Without its relocations it could not stand anywhere else.
        EXPECT_EQ(file.Headers().FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED, 0);
        EXPECT_GT(file.Directory(IMAGE_DIRECTORY_ENTRY_BASERELOC).Size, 0U);
        for (const IMAGE_SECTION_HEADER& section : file.Sections()) {
            constexpr DWORD kBoth = IMAGE_SCN_MEM_WRITE | IMAGE_SCN_MEM_EXECUTE;
            EXPECT_NE(section.Characteristics & kBoth, kBoth);
        }
    }
}

// Those that Windows never takes from the program's folder: it knows them, and of the common
// controls the manifest says which.
TEST_F(BuiltFile, IsLinkedWithLibrariesThatWindowsKnowsAndNoOther) {
    const std::set<std::string> known{
        "advapi32.dll", "comctl32.dll", "comdlg32.dll", "gdi32.dll",   "kernel32.dll",
        "msvcrt.dll",   "ole32.dll",    "oleaut32.dll", "shell32.dll", "user32.dll"};
    for (const std::string& path : paths_) {
        SCOPED_TRACE(path);
        const auto imports = ProgramFile(path).Imports();
        EXPECT_TRUE(imports.contains("kernel32.dll"));
        EXPECT_TRUE(imports.contains("comctl32.dll"));
        for (const std::string& import : imports) {
            EXPECT_TRUE(known.contains(import)) << import;
        }
    }
}

TEST_F(BuiltFile, AsksForNoMoreThanThePersonsRights) {
    for (const std::string& path : paths_) {
        SCOPED_TRACE(path);
        const std::string manifest = Manifest(path);
        EXPECT_NE(manifest.find(R"(level="asInvoker" uiAccess="false")"), std::string::npos);
        EXPECT_EQ(manifest.find("requireAdministrator"), std::string::npos);
        EXPECT_EQ(manifest.find("highestAvailable"), std::string::npos);
    }
}

// The tests too: they make controls of the program in their own process.
TEST_F(BuiltFile, HasTheCommonControlsThatTheWindowIsMadeFor) {
    for (const std::string& path : {paths_[0], paths_[1], OwnPath()}) {
        EXPECT_NE(Manifest(path).find("Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""),
                  std::string::npos)
            << path;
    }
}

TEST_F(BuiltFile, NoLibraryIsTakenFromTheProgramsFolder) {
    constexpr const wchar_t* kPlanted = L"dorvak-planted.dll";
    const std::filesystem::path planted =
        std::filesystem::path(com::Widen(OwnPath())).replace_filename(kPlanted);
    std::filesystem::copy_file(com::Widen(paths_[0]), planted,
                               std::filesystem::copy_options::overwrite_existing);
    const auto is_found = [](const wchar_t* name) {
        const HMODULE file = LoadLibraryExW(name, nullptr, DONT_RESOLVE_DLL_REFERENCES);
        if (file != nullptr) {
            FreeLibrary(file);
        }
        return file != nullptr;
    };
    EXPECT_TRUE(is_found(kPlanted)) << "as Windows looks for libraries by itself";
    com::LoadLibrariesOfTheSystemOnly();
    EXPECT_FALSE(is_found(kPlanted));
    EXPECT_TRUE(is_found(L"shcore.dll"));
    std::filesystem::remove(planted);
}
