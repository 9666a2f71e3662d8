// The platform's ports on Windows.
#pragma once

#include "com/owned.hpp"
#include "platform/ports.hpp"

namespace win32 {

class WindowsDesktop : public platform::DesktopWindows {
  public:
    void EnumWindows(const std::function<long(platform::WindowHandle)>& callback) override;
    std::string GetWindowTitle(platform::WindowHandle window) override;
    void SetTopmost(platform::WindowHandle window, bool topmost) override;
    int ScreenWidth() override;
    int ScreenHeight() override;
};

// HKEY_CURRENT_USER\Software\<application>\<section>, value <key>.
class RegistrySettings : public platform::SettingsStore {
  public:
    std::string GetSetting(std::string_view application, std::string_view section,
                           std::string_view key, std::string_view fallback) override;
    void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                     std::string_view value) override;
};

class WindowEventPump : public platform::EventPump {
  public:
    void DoEvents() override {
        if (do_events) {
            do_events();
        }
    }

    std::function<void()> do_events; // set by the window for as long as it lives
};

class ComServers : public platform::AutomationServers {
  public:
    automation::ObjectPtr GetActiveObject(std::string_view program_id) override;
};

class UserNumberFormat : public platform::NumberFormat {
  public:
    std::optional<double> ReadNumber(std::string_view text) override;
};

class SystemCodePage : public platform::CodePage {
  public:
    std::string Character(unsigned char code) override;
};

class SystemClock : public platform::Clock {
  public:
    float SecondsSinceMidnight() override;
    std::string Now() override;
    double Seconds() override;
};

class WindowMessageBoxes : public platform::MessageBoxes {
  public:
    void ShowError(const automation::RunTimeError& error) override;
    void ShowInformation(std::string_view text, std::string_view title) override;
    bool AskYesNo(std::string_view question) override;
    platform::Answer AskYesNoCancel(std::string_view question, std::string_view title) override;
    platform::AfterFailedSave AskAfterFailedSave(std::string_view reason) override;
    std::string AskText(std::string_view prompt, std::string_view title,
                        std::string_view proposal) override;

    HWND owner = nullptr;
    std::function<void()> opening; // called before a box opens

  private:
    int Show(const std::wstring& text, const wchar_t* title, UINT style) const;
};

} // namespace win32
