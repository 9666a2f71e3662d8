// The platform's ports on Windows.
#pragma once

#include "com/owned.hpp"
#include "com/trial.hpp"
#include "platform/ports.hpp"

namespace win32 {

class WindowsDesktop : public platform::DesktopWindows {
  public:
    explicit WindowsDesktop(com::Purpose purpose = com::Purpose::kWork) : purpose_(purpose) {}

    void EnumWindows(const std::function<long(platform::WindowHandle)>& callback) override;
    std::string GetWindowTitle(platform::WindowHandle window) override;
    bool MayBeOfCatia(platform::WindowHandle window) override;
    void SetTopmost(platform::WindowHandle window, bool topmost) override;
    int ScreenWidth() override;
    int ScreenHeight() override;

  private:
    com::Purpose purpose_;
};

// HKEY_CURRENT_USER\Software\<application>\<section>, value <key>; on trial the section stands in
// the key Zkouska of the application.
class RegistrySettings : public platform::SettingsStore {
  public:
    explicit RegistrySettings(com::Purpose purpose = com::Purpose::kWork) : purpose_(purpose) {}

    std::string GetSetting(std::string_view application, std::string_view section,
                           std::string_view key, std::string_view fallback) override;
    void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                     std::string_view value) override;

  private:
    [[nodiscard]] std::wstring KeyPath(std::string_view application,
                                       std::string_view section) const;

    com::Purpose purpose_;
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
    explicit ComServers(com::Purpose purpose = com::Purpose::kWork) : purpose_(purpose) {}

    // On trial CATIA's stand-in, whatever the name.
    automation::ObjectPtr GetActiveObject(std::string_view program_id) override;

  private:
    com::Purpose purpose_;
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
