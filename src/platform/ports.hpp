// What the program needs from the system beside its window. src/win32 implements the ports on
// Windows; tests bring versions that live in memory.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "automation/object.hpp"
#include "automation/run_time_error.hpp"

namespace platform {

// A window of the system, or 0 for none.
using WindowHandle = std::uintptr_t;

class DesktopWindows {
  public:
    virtual ~DesktopWindows() = default;

    // Calls `callback` with every top-level window, in the system's order, for as long as it
    // returns a number other than 0.
    virtual void EnumWindows(const std::function<long(WindowHandle)>& callback) = 0;
    // The first 255 bytes of the window's title in the system's code page, as UTF-8. Never waits
    // for the window's program.
    virtual std::string GetWindowTitle(WindowHandle window) = 0;
    // Puts the window above all others, or back among them. Ignores a failure.
    virtual void SetTopmost(WindowHandle window, bool topmost) = 0;
    // The size of the primary screen in twips.
    virtual int ScreenWidth() = 0;
    virtual int ScreenHeight() = 0;
};

// Per-user settings, keyed by application, section and key.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;

    // `fallback` where nothing is stored.
    virtual std::string GetSetting(std::string_view application, std::string_view section,
                                   std::string_view key, std::string_view fallback) = 0;
    // Raises 75 (path/file access error) when the store cannot be written.
    virtual void SaveSetting(std::string_view application, std::string_view section,
                             std::string_view key, std::string_view value) = 0;
};

class EventPump {
  public:
    virtual ~EventPump() = default;

    // Brings the window up to date and handles the messages that wait for it. Handlers run inside.
    virtual void DoEvents() = 0;
};

class AutomationServers {
  public:
    virtual ~AutomationServers() = default;

    // The running application that is registered under `program_id`. Never starts one; raises 429
    // when none runs.
    virtual automation::ObjectPtr GetActiveObject(std::string_view program_id) = 0;
};

class NumberFormat {
  public:
    virtual ~NumberFormat() = default;

    // `text` read as a number in the user's number format; nothing where it is none.
    virtual std::optional<double> ReadNumber(std::string_view text) = 0;
};

class MessageBoxes {
  public:
    virtual ~MessageBoxes() = default;

    // The default handling of an error that no action trapped: a box with its number and
    // description, titled with the program's title.
    virtual void ShowError(const automation::RunTimeError& error) = 0;
};

struct Ports {
    DesktopWindows& desktop_windows;
    SettingsStore& settings;
    EventPump& events;
    AutomationServers& automation_servers;
    NumberFormat& number_format;
    MessageBoxes& message_boxes;
};

} // namespace platform
