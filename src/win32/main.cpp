// The program: its surroundings on Windows, the form, its window. `--zkouska` starts it on trial.
#include "app/form_events.hpp"
#include "com/client.hpp"
#include "com/safety.hpp"
#include "com/trial.hpp"
#include "win32/computer.hpp"
#include "win32/data_folder.hpp"
#include "win32/files.hpp"
#include "win32/guide_pages.hpp"
#include "win32/log_file.hpp"
#include "win32/main_window.hpp"
#include "win32/other_programs.hpp"
#include "win32/windows_ports.hpp"

#include <cwchar>
#include <string_view>

#include <ole2.h>

namespace {

class Apartment {
  public:
    Apartment() { OleInitialize(nullptr); }
    ~Apartment() { OleUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

// `--recovery-pace N` keeps changes after N milliseconds at rest and after four times as long at
// the latest.
app::RecoveryPace PaceOf(std::wstring_view command_line) {
    constexpr std::wstring_view kSwitch = L"--recovery-pace ";
    app::RecoveryPace pace;
    const std::size_t place = command_line.find(kSwitch);
    if (place != std::wstring_view::npos) {
        const std::wstring number(command_line.substr(place + kSwitch.size()));
        if (const long idle = std::wcstol(number.c_str(), nullptr, 10); idle > 0) {
            pace = {.idle = idle, .longest = 4LL * idle};
        }
    }
    return pace;
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    com::LoadLibrariesOfTheSystemOnly();
    const com::Purpose purpose = com::PurposeOf(GetCommandLineW());
    const bool on_trial = purpose == com::Purpose::kTrial;
    const auto data_folder = win32::ClaimDataFolder(purpose);
    if (!data_folder) {
        return 0; // the copy that runs has been brought forward
    }
    const Apartment apartment;
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);

    win32::WindowsDesktop desktop(purpose);
    win32::RegistrySettings settings(purpose);
    win32::WindowEventPump events;
    win32::ComServers servers(purpose);
    win32::OtherPrograms programs(purpose);
    win32::UserNumberFormat number_format;
    win32::WindowMessageBoxes message_boxes;
    win32::CodePageFiles files({data_folder->path, data_folder->other, win32::ProgramFolder()});
    win32::SystemCodePage code_page;
    win32::SystemClock clock;
    win32::LogFile log(on_trial ? data_folder->path : win32::LogFolder(data_folder->path));
    win32::ThisComputer computer;
    win32::GuidePages guide(win32::ProgramFolder());
    controls::Form1 form({desktop, settings, events, servers, programs, number_format,
                          message_boxes, files, code_page, clock, log, computer, guide});
    form.on_trial = on_trial;

    win32::MainWindow window(form, PaceOf(GetCommandLineW()));
    const com::MessageFilterRegistration message_filter(window.Watch());
    events.do_events = [&window] { window.DoEvents(); };
    message_boxes.owner = window.Window();
    message_boxes.opening = [&form] { app::KeepRecoveryNow(form); };
    app::BindActions(form);
    window.Show(data_folder->lock != nullptr);
    return window.Run();
}
