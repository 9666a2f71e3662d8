// The package, installed as a designer does it: an older version, this one over it, and away again.
// SETUP_BEFORE and SETUP name the two setups. It all happens in the real places of the person who
// runs it, so that it is for a Wine prefix alone.
#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <set>

#include <shlobj.h>

#include "com/owned.hpp"
#include "com/utf.hpp"
#include "fixture.hpp"
#include "version.h"

using namespace driver;

namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

constexpr const wchar_t* kEntry =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Dorvak";
constexpr Milliseconds kInstalling{60000};
constexpr DWORD kAborted = 2; // the exit code of a setup that gives up

fs::path FolderOf(const KNOWNFOLDERID& id) {
    PWSTR path = nullptr;
    SHGetKnownFolderPath(id, 0, nullptr, &path);
    fs::path folder(path);
    CoTaskMemFree(path);
    return folder;
}

fs::path Installed(const std::string& name = {}) {
    const fs::path folder = FolderOf(FOLDERID_LocalAppData) / "Programs" / "Dorvak";
    return name.empty() ? folder : folder / com::Widen(name);
}

std::string EntryText(const wchar_t* name) {
    return SettingKeeper::Read(Setting{kEntry, name}).value_or("");
}

void AddFiles(const fs::path& folder, const std::string& path, Names& names) {
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = path + com::Narrow(entry.path().filename().wstring());
        if (name == "Temp" || name == "AppData\\Local\\Temp") {
            continue;
        }
        names.insert(name);
        if (entry.is_directory()) {
            AddFiles(entry.path(), name + "\\", names);
        }
    }
}

// All files and folders of the person but the temporary ones.
Names PersonsFiles() {
    Names names;
    AddFiles(FolderOf(FOLDERID_Profile), "", names);
    return names;
}

void AddKeys(HKEY parent, const std::wstring& name, const std::wstring& path, Names& keys) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(parent, name.c_str(), 0, KEY_ENUMERATE_SUB_KEYS, &opened) != ERROR_SUCCESS) {
        return;
    }
    const com::Owned<HKEY> key(opened);
    keys.insert(com::Narrow(path));
    std::wstring child(256, L'\0');
    for (DWORD index = 0;; ++index) {
        auto length = static_cast<DWORD>(child.size());
        if (RegEnumKeyExW(key.get(), index, child.data(), &length, nullptr, nullptr, nullptr,
                          nullptr) != ERROR_SUCCESS) {
            return;
        }
        const std::wstring child_name = child.substr(0, length);
        std::wstring child_path = path;
        child_path += L"\\";
        child_path += child_name;
        AddKeys(key.get(), child_name, child_path, keys);
    }
}

// The registry's keys but those of the person's settings and Wine's own.
Names RegistryKeys() {
    Names keys;
    AddKeys(HKEY_CURRENT_USER, L"Software", L"Software", keys);
    std::erase_if(keys, [](const std::string& key) {
        return key.starts_with("Software\\Lumsek") || key.starts_with("Software\\Wine");
    });
    AddKeys(HKEY_CLASSES_ROOT, L"CATIA.Application", L"CATIA.Application", keys);
    return keys;
}

Names Beyond(const Names& now, const Names& before) {
    Names more;
    std::ranges::set_difference(now, before, std::inserter(more, more.end()));
    return more;
}

std::string Lines(const Names& names) {
    std::string lines;
    for (const std::string& name : names) {
        lines += name + "\n";
    }
    return lines;
}

// What an entry of the start menu starts.
struct Target {
    std::string path;
    std::string arguments;
    std::string folder;
};

Target TargetOf(const fs::path& link) {
    IShellLinkW* shell_link = nullptr;
    IPersistFile* file = nullptr;
    Target target;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                reinterpret_cast<void**>(&shell_link)))) {
        return target;
    }
    if (SUCCEEDED(shell_link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file)))) {
        if (SUCCEEDED(file->Load(link.c_str(), 0))) {
            std::array<wchar_t, 1024> text{};
            const auto size = static_cast<int>(text.size());
            shell_link->GetPath(text.data(), size, nullptr, 0);
            target.path = com::Narrow(text.data());
            shell_link->GetArguments(text.data(), size);
            target.arguments = com::Narrow(text.data());
            shell_link->GetWorkingDirectory(text.data(), size);
            target.folder = com::Narrow(text.data());
        }
        file->Release();
    }
    shell_link->Release();
    return target;
}

fs::path StartMenu(const std::string& entry) {
    return FolderOf(FOLDERID_Programs) / "Dorvak" / com::Widen(entry);
}

DWORD Install(const std::string& setup, const std::vector<std::string>& options = {}) {
    std::vector<std::string> arguments{"/S"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return Program(Environment(setup), arguments).WaitForEnd(kInstalling);
}

// By the command that Windows runs; the program hands on to a copy of itself.
void Uninstall() {
    const std::string command = EntryText(L"QuietUninstallString");
    ASSERT_EQ(command, '"' + com::Narrow(Installed("odinstalovat.exe").wstring()) + "\" /S");
    const Program uninstaller(com::Narrow(Installed("odinstalovat.exe").wstring()), {"/S"});
    WaitUntil(
        "the program uninstalled", [] { return EntryText(L"DisplayName").empty(); }, kInstalling);
}

std::string PathOfDorvak() {
    return TargetOf(StartMenu("Dorvak.lnk")).path;
}

const std::vector<std::string> kParts{"Hřídel", "Kolo"};
constexpr const char* kStructure = "\r\n0\tSestava\r\n1\tHřídel\tSestava\r\n1\tKolo\tSestava";

class Installation : public DesktopTest {
  protected:
    Installation() {
        fs::remove_all(Installed());
        fs::create_directories(Installed().parent_path()); // which may be there or not
        HKEY entry = nullptr; // so that the key of all entries is there, as it may be or not
        RegCreateKeyW(HKEY_CURRENT_USER, kEntry, &entry);
        RegCloseKey(entry);
        RegDeleteTreeW(HKEY_CURRENT_USER, kEntry);
        files_before_ = PersonsFiles();
        keys_before_ = RegistryKeys();
    }

    // What there is that was not there before the installation.
    [[nodiscard]] Names NewFiles() const { return Beyond(PersonsFiles(), files_before_); }
    [[nodiscard]] Names NewKeys() const { return Beyond(RegistryKeys(), keys_before_); }

  private:
    Names files_before_;
    Names keys_before_;
};

TEST_F(Installation, LeavesNothingBehindWhereNothingWasDone) {
    ASSERT_EQ(Install("SETUP", {"/PLOCHA"}), 0U);
    EXPECT_TRUE(fs::exists(FolderOf(FOLDERID_Desktop) / "Dorvak.lnk"));
    const Target dorvak = TargetOf(StartMenu("Dorvak.lnk"));
    EXPECT_EQ(dorvak.path, com::Narrow(Installed("Dorvak.exe").wstring()));
    EXPECT_EQ(dorvak.folder, com::Narrow(Installed().wstring()));
    const Target trial = TargetOf(StartMenu("Dorvak na zkoušku.lnk"));
    EXPECT_EQ(trial.path, com::Narrow(Installed("CatiaSim.exe").wstring()));
    EXPECT_EQ(trial.arguments, "--zkouska");
    Uninstall();
    WaitForText("the files left", "", [this] { return Lines(NewFiles()); });
    EXPECT_EQ(Lines(NewKeys()), "");
}

TEST_F(Installation, KeepsThePersonsListThroughAnUpdateAndAfterwards) {
    ASSERT_EQ(Install("SETUP_BEFORE"), 0U);
    EXPECT_EQ(EntryText(L"DisplayVersion"), "0.9.0");
    {
        const DorvakWindow dorvak(PathOfDorvak());
        EXPECT_NE(Text(dorvak.Window()).find("0.9.0"), std::string::npos);
        FillList(dorvak, kStructure, 2);
        dorvak.Close();
    }
    // The list cannot be saved, so that the program does not end.
    const std::string list = com::Narrow(Installed("list.txt").wstring());
    {
        const DorvakWindow dorvak(PathOfDorvak());
        dorvak.OpenPage(kEditPage);
        ASSERT_EQ(Column(dorvak[ID_ListView1], 0), kParts);
        const auto materials = ComboBoxItems(dorvak[ID_Combo1]);
        EXPECT_EQ(materials.front(), "S235JR") << "the values that the setup brings";
        SetFileAttributesW(com::Widen(list).c_str(), FILE_ATTRIBUTE_READONLY);
        EXPECT_EQ(Install("SETUP"), kAborted) << "the program asks where to save";
        EXPECT_TRUE(dorvak.Process().Running());
        EXPECT_EQ(EntryText(L"DisplayVersion"), "0.9.0") << "nothing is changed";
        EXPECT_TRUE(fs::exists(Installed("samples\\gearbox-drawing.txt")));

        SetFileAttributesW(com::Widen(list).c_str(), FILE_ATTRIBUTE_NORMAL);
        const HWND box = WaitForDialog(dorvak, "Dorvak");
        constexpr WPARAM kTryAgain = 100;
        PostMessageW(box, WM_USER + 102, kTryAgain, 0); // TDM_CLICK_BUTTON
        EXPECT_EQ(dorvak.Process().WaitForEnd(), 0U);
    }
    const DorvakWindow dorvak(PathOfDorvak());
    EXPECT_EQ(Install("SETUP"), 0U);
    EXPECT_EQ(dorvak.Process().WaitForEnd(), 0U) << "it was closed, and saved its list";
    EXPECT_EQ(EntryText(L"DisplayVersion"), DORVAK_VERSION_TEXT);
    {
        const DorvakWindow updated(PathOfDorvak());
        EXPECT_NE(Text(updated.Window()).find(DORVAK_VERSION_TEXT), std::string::npos);
        updated.OpenPage(kEditPage);
        EXPECT_EQ(Column(updated[ID_ListView1], 0), kParts);
        updated.Close();
    }

    const Target trial = TargetOf(StartMenu("Dorvak na zkoušku.lnk"));
    const Program session(trial.path, {trial.arguments});
    const HWND window = session.WaitForWindow("CatiaSimZkouska");
    WaitUntil("the gearbox", [&] { return Text(window).starts_with("CATIA V5 - [Gearbox."); });
    Uninstall();
    EXPECT_EQ(session.WaitForEnd(), 0U) << "the session was closed";
    const std::string folder = R"(AppData\Local\Programs\Dorvak)";
    Names left{folder, folder + "\\Zkouska", folder + "\\list.strom", folder + "\\list.txt"};
    for (const char* const values : {"\\Material.txt", "\\Poznamka.txt", "\\Velikost.txt"}) {
        left.insert(folder + values);
        left.insert(folder + "\\Zkouska" + values);
    }
    WaitForText("the files left", Lines(left), [this] { return Lines(NewFiles()); });
    EXPECT_EQ(Lines(NewKeys()), "");
    EXPECT_TRUE(SettingKeeper::Read()) << "the configuration is the person's";
    fs::remove_all(Installed());
}

} // namespace

int main(int argc, char** argv) {
    CoInitialize(nullptr);
    testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    std::cout.flush();
    LeaveResult(result);
    CoUninitialize();
    return result;
}
