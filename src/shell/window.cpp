#include "shell/shell.hpp"

#include <array>
#include <cmath>

#include "text/text.hpp"

namespace shell {

namespace {

constexpr int kFullHeight = 7155;     // twips
constexpr int kCollapsedHeight = 660; // twips: the title bar and the top strip

constexpr std::string_view kApplication = "Lumsek";
constexpr std::string_view kSection = "Pantrel";
constexpr std::string_view kConfigurationKey = "export";
constexpr std::string_view kTablesSection = "Tabulky";
constexpr std::string_view kRedrawingKey = "bez_prekreslovani";
constexpr std::string_view kPreviewKey = "nahled";
constexpr std::string_view kPreviewPlaceKey = "nahled_misto";

// The numbers that say where the preview stands, in their order.
std::array<int controls::Preview::*, 4> PlaceOfPreview() {
    using controls::Preview;
    return {&Preview::left, &Preview::top, &Preview::width, &Preview::height};
}

// A number of a stored place; nothing where no window stands there.
std::optional<int> Coordinate(std::string_view stored) {
    constexpr double kFarthest = 1'000'000;
    const auto number = text::Number(stored);
    if (!number || !(std::abs(*number) <= kFarthest)) {
        return std::nullopt;
    }
    return static_cast<int>(*number);
}

} // namespace

void Check2_Click(Form1& form) {
    if (form.Check2.Value() == 1) {
        Nastav_Navrch(form, form.hWnd);
    } else {
        Zrus_Navrch(form, form.hWnd);
    }
}

void Check3_Click(Form1& form) {
    form.ports.settings.SaveSetting(kApplication, kTablesSection, kRedrawingKey,
                                    form.Check3.Value() == 1 ? "1" : "0");
}

void Command18_Click(Form1& form) {
    if (form.Command18.Caption() != "min") {
        form.Command18.SetCaption("min");
        form.Height = kFullHeight;
    } else {
        form.Command18.SetCaption("max");
        form.Height = kCollapsedHeight;
    }
}

void Command19_Click(Form1& form) {
    form.Text2.SetText(form.Text4.Text());
}

void Command36_Click(Form1& form) {
    form.preview.open = !form.preview.open;
    SavePreviewSetting(form);
}

void SSTab1_Click(Form1& form) {
    if (form.Check2.Value() == 1) {
        Nastav_Navrch(form, form.hWnd);
    }
    if (form.Command18.Caption() != "min") {
        Command18_Click(form);
    }
}

void StatusBar1_RightClick(Form1& form) {
    form.show_popup(form.m_Stav, controls::PopupPlace::kPointer);
}

void StatusBar1_MenuKey(Form1& form) {
    form.show_popup(form.m_Stav, controls::PopupPlace::kCurrentRow);
}

void Vycentruj(Form1& form) {
    form.Left = (form.ports.desktop_windows.ScreenWidth() - form.Width) / 2;
    form.Top = (form.ports.desktop_windows.ScreenHeight() - form.Height) / 2;
}

void Nastav_Navrch(Form1& form, platform::WindowHandle window) {
    form.ports.desktop_windows.SetTopmost(window, true);
}

void Zrus_Navrch(Form1& form, platform::WindowHandle window) {
    form.ports.desktop_windows.SetTopmost(window, false);
}

void LoadConfigurationSetting(Form1& form) {
    std::string configuration =
        form.ports.settings.GetSetting(kApplication, kSection, kConfigurationKey, "");
    if (!configuration.empty()) {
        form.Text2.SetText(std::move(configuration));
    }
}

void LoadRedrawingSetting(Form1& form) {
    const std::string ticked =
        form.ports.settings.GetSetting(kApplication, kTablesSection, kRedrawingKey, "0");
    form.Check3.SetValue(ticked == "1" ? 1 : 0);
}

void LoadPreviewSetting(Form1& form) {
    platform::SettingsStore& settings = form.ports.settings;
    form.preview.open = settings.GetSetting(kApplication, kTablesSection, kPreviewKey, "0") == "1";
    const std::string stored =
        settings.GetSetting(kApplication, kTablesSection, kPreviewPlaceKey, "");
    const auto numbers = text::Split(stored, ";");
    const auto members = PlaceOfPreview();
    controls::Preview place = form.preview;
    for (std::size_t member = 0; member < members.size(); ++member) {
        const auto number =
            numbers.size() == members.size() ? Coordinate(numbers[member]) : std::nullopt;
        if (!number) {
            return;
        }
        place.*members.at(member) = *number;
    }
    if (place.width > 0 && place.height > 0) {
        form.preview = place;
    }
}

void SavePreviewSetting(const Form1& form) {
    try {
        form.ports.settings.SaveSetting(kApplication, kTablesSection, kPreviewKey,
                                        form.preview.open ? "1" : "0");
        if (form.preview.width == 0) {
            return; // it has not stood anywhere yet
        }
        std::string place;
        for (int controls::Preview::*const member : PlaceOfPreview()) {
            place += (place.empty() ? "" : ";") + std::to_string(form.preview.*member);
        }
        form.ports.settings.SaveSetting(kApplication, kTablesSection, kPreviewPlaceKey, place);
    } catch (const automation::RunTimeError&) {
        return;
    }
}

void SaveConfigurationSetting(const Form1& form) {
    form.ports.settings.SaveSetting(kApplication, kSection, kConfigurationKey, form.Text2.Text());
}

} // namespace shell
