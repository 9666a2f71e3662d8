// What the program needs from the system beside its window. src/win32 implements the ports on
// Windows; tests bring versions that live in memory.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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
    // Whether a window with a title of CATIA's may be that of the CATIA that the program works
    // with: on trial only its stand-in's, else any but that one.
    virtual bool MayBeOfCatia(WindowHandle window) = 0;
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

// How the rights of another program compare with this program's.
enum class Rights {
    kUnknown, // it cannot be asked: another person's, or one with more rights
    kSame,
    kMore,
    kLess,
};

// The class that stands in the registry under a program id.
struct Registration {
    bool found = false;
    std::string program; // the path of its program; empty where none is named
};

// What keeps this program and another one apart.
class Programs {
  public:
    virtual ~Programs() = default;

    // Of the program that a window belongs to. The path is empty where it cannot be told.
    virtual Rights RightsOf(WindowHandle window) = 0;
    virtual std::string PathOf(WindowHandle window) = 0;
    virtual Registration RegisteredUnder(std::string_view program_id) = 0;
};

class NumberFormat {
  public:
    virtual ~NumberFormat() = default;

    // `text` read as a number in the user's number format; nothing where it is none.
    virtual std::optional<double> ReadNumber(std::string_view text) = 0;
};

// The system's 8-bit code page.
class CodePage {
  public:
    virtual ~CodePage() = default;

    // The character that the code page has at `code`, as UTF-8. Where the system's code page has
    // more than one byte for it (UTF-8), the character of Latin-1.
    virtual std::string Character(unsigned char code) = 0;
};

class Clock {
  public:
    virtual ~Clock() = default;

    // Local time, in seconds with their fraction.
    virtual float SecondsSinceMidnight() = 0;
    // Local date and time, "2026-03-01 14:32:05.123".
    virtual std::string Now() = 0;
    // Seconds of a clock that never goes back.
    virtual double Seconds() = 0;
};

// A small text file for whoever helps the person from afar.
class Log {
  public:
    virtual ~Log() = default;

    // The folder where it stands, without a backslash at its end.
    virtual std::string Folder() = 0;
    // Appends a line. Ignores a failure.
    virtual void Write(std::string_view line) = 0;
    // Opens the folder for the person to see. Raises the classic errors of opening.
    virtual void ShowFolder() = 0;
};

// One thing that is known of the computer, in Czech words.
struct Fact {
    std::string name;
    std::string value;
};

class Computer {
  public:
    virtual ~Computer() = default;

    // What may matter where something works elsewhere and not here: versions, languages, screens,
    // rights.
    virtual std::vector<Fact> Facts() = 0;
};

// The guide that comes with the program.
class Guide {
  public:
    virtual ~Guide() = default;

    // Opens one of its pages, named without an ending, for the person to read. Raises 53 (file not
    // found) where it is not there.
    virtual void Show(std::string_view page) = 0;
};

enum class Answer { kYes, kNo, kCancel };
enum class AfterFailedSave { kTryAgain, kChooseFile, kCloseWithoutSaving };

class MessageBoxes {
  public:
    virtual ~MessageBoxes() = default;

    // The default handling of an error that no action trapped: a box with its number and
    // description, titled with the program's title.
    virtual void ShowError(const automation::RunTimeError& error) = 0;
    virtual void ShowInformation(std::string_view text, std::string_view title) = 0;
    // A question with the buttons Yes and No, titled with the program's title.
    virtual bool AskYesNo(std::string_view question) = 0;
    // A question with the buttons Yes, No and Cancel; closing the box is Cancel.
    virtual Answer AskYesNoCancel(std::string_view question, std::string_view title) = 0;
    // The list could not be saved at closing, for that reason (the file and a sentence): what now?
    // Raises 7 (out of memory) where no box can open: nobody wants to close without saving then.
    virtual AfterFailedSave AskAfterFailedSave(std::string_view reason) = 0;
    // A line of text asked for, with a proposed answer. Empty when the person cancels.
    virtual std::string AskText(std::string_view prompt, std::string_view title,
                                std::string_view proposal) = 0;
};

// How a file is written.
struct Writing {
    std::string keep_before_as = {}; // the path that keeps the file before; empty for none
    bool patient = false;            // whether to try for some seconds where others hold the file
};

// Files in the system's 8-bit code page. Paths are UTF-8 with backslashes.
class Files {
  public:
    virtual ~Files() = default;

    // The folder that the program keeps its files in, without a backslash at its end. While the
    // program runs, it is this running copy's alone.
    virtual std::string DataFolder() = 0;
    // The folder that an earlier run may have kept them in; empty where there is none.
    virtual std::string OtherDataFolder() = 0;
    // The folder that the program stands in with all that it brings along, without a backslash at
    // its end.
    virtual std::string ProgramFolder() = 0;
    virtual bool Exists(std::string_view path) = 0;
    // Whether a file was written later than another one; a file that is not there never was.
    virtual bool IsNewer(std::string_view path, std::string_view than) = 0;
    // When a file was written, in local time, "2026-03-01 14-32-05", to be part of a file's name.
    // Raises 53 where it is not there.
    virtual std::string DateOf(std::string_view path) = 0;
    // Copies a file whole, as it is, or raises the classic errors and copies nothing.
    virtual void Copy(std::string_view from, std::string_view to) = 0;
    // Ignores a failure.
    virtual void Remove(std::string_view path) = 0;
    // Makes the folder where it is not there yet; its parent exists. Ignores a failure.
    virtual void MakeFolder(std::string_view path) = 0;
    // The names, without their ending, of the files of a folder that have it, in no particular
    // order. None where the folder is not there or cannot be read.
    virtual std::vector<std::string> NamesIn(std::string_view folder, std::string_view ending) = 0;
    // The whole file, decoded from the code page. Raises 53 (file not found) and the other classic
    // errors of opening and reading.
    virtual std::string Read(std::string_view path) = 0;
    // Writes the whole file, encoded in the code page; where that lacks a character, in UTF-8 with
    // its signature, which Read recognises. At every moment the file is either the new one or the
    // old one, never a part of either; on an error it is the old one. That the file before could
    // not be kept is no error.
    virtual void Write(std::string_view path, std::string_view text,
                       const Writing& writing = {}) = 0;
};

struct Ports {
    DesktopWindows& desktop_windows;
    SettingsStore& settings;
    EventPump& events;
    AutomationServers& automation_servers;
    Programs& programs;
    NumberFormat& number_format;
    MessageBoxes& message_boxes;
    Files& files;
    CodePage& code_page;
    Clock& clock;
    Log& log;
    Computer& computer;
    Guide& guide;
};

} // namespace platform
