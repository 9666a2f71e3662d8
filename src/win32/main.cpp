// The program: its surroundings on Windows, the form, its window.
#include "app/form_events.hpp"
#include "com/client.hpp"
#include "win32/files.hpp"
#include "win32/main_window.hpp"
#include "win32/windows_ports.hpp"

#include <ole2.h>

namespace {

class Apartment {
  public:
    Apartment() { OleInitialize(nullptr); }
    ~Apartment() { OleUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    const Apartment apartment;
    const com::MessageFilterRegistration message_filter;
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);

    win32::WindowsDesktop desktop;
    win32::RegistrySettings settings;
    win32::WindowEventPump events;
    win32::ComServers servers;
    win32::UserNumberFormat number_format;
    win32::WindowMessageBoxes message_boxes;
    win32::CodePageFiles files;
    win32::SystemCodePage code_page;
    win32::SystemClock clock;
    controls::Form1 form({desktop, settings, events, servers, number_format, message_boxes, files,
                          code_page, clock});

    win32::MainWindow window(form);
    events.do_events = [&window] { window.DoEvents(); };
    message_boxes.owner = window.Window();
    app::BindActions(form);
    window.Show();
    return window.Run();
}
