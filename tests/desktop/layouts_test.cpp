// Layouts of tables: one that was read goes into the configuration, and configurations are kept
// under names.
#include <filesystem>
#include <fstream>

#include "fixture.hpp"

using namespace driver;

namespace {

class Layouts : public DesktopTest {};

TEST_F(Layouts, AreReadFromADrawingKeptUnderANameAndChosenAgain) {
    const CatiaSession catia({SamplePath("tables\\tables.txt")});
    catia.Do(R"(select "Kusovník" "Main View" 1)");
    const auto folder = std::make_shared<ProgramFolder>();
    std::filesystem::create_directory(folder->Path("Nastaveni"));
    std::ofstream(folder->Path("Nastaveni\\Zakaznik.txt"), std::ios::binary)
        << "/vyska1;4\n/vyska2;5\n";
    const DorvakWindow dorvak(folder, kImportPage);
    const HWND configuration = dorvak[ID_Text2];
    const auto text = [&] { return Text(configuration); };
    const std::string standard = text();

    dorvak.Press(ID_Command10);
    dorvak.WaitForStatus("Nacteni parametru Ok");
    dorvak.Press(ID_Command38);
    dorvak.WaitForStatus("Prevzato radku: 10");
    KeepPicture("layout-taken.png");
    const std::string taken = text();
    EXPECT_NE(taken, standard);
    EXPECT_NE(taken.find("\r\n/AnchorPoint;"), std::string::npos) << taken;
    dorvak.OpenPage(kExportPage);
    Click(configuration);
    PressKey('Z', {VK_CONTROL});
    WaitForText("the configuration", standard, text);
    PressKey('Z', {VK_CONTROL});
    WaitForText("the configuration", taken, text);

    const HWND picker = dorvak[ID_Combo5];
    PasteText(FindWindowExW(picker, nullptr, L"Edit", nullptr), "Žlutý / A3");
    dorvak.Press(ID_Command40);
    dorvak.WaitForStatus("Ulozeni ok " + folder->Path("Nastaveni\\Žlutý _ A3.txt"));
    WaitForText("the picker", "Žlutý _ A3", [&] { return Text(picker); });

    Click(FindWindowExW(picker, nullptr, L"Edit", nullptr));
    PressKey(VK_F4);
    WaitForText("the layouts", "Zakaznik|Žlutý _ A3|",
                [&] { return Joined(ComboBoxItems(picker)); });
    KeepPicture("layouts-open.png");
    PressKey(VK_UP);
    PressKey(VK_RETURN);
    WaitForText("the picker", "Zakaznik", [&] { return Text(picker); });
    WaitForText("the configuration", "/vyska1;4\r\n/vyska2;5\r\n", text);
    KeepPicture("layout-chosen.png");
    Click(configuration);
    PressKey('Z', {VK_CONTROL});
    WaitForText("the configuration", taken, text);

    // It stays where the list opens and closes again.
    Click(FindWindowExW(picker, nullptr, L"Edit", nullptr));
    const auto is_open = [&] { return Send(picker, CB_GETDROPPEDSTATE) != 0; };
    PressKey(VK_F4);
    WaitUntil("the list open", is_open);
    PressKey(VK_F4);
    WaitUntil("the list closed", [&] { return !is_open(); });
    dorvak.OpenPage(kImportPage); // whatever was to be done is done
    dorvak.OpenPage(kExportPage);
    EXPECT_EQ(Text(picker), "Zakaznik");
    EXPECT_EQ(text(), taken);
}

} // namespace
