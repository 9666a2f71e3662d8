// How things are measured: medians with their spread, the waits that do not disturb what is
// measured, and the simulated session's own times.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "simulator/win32/call_clock.hpp"
#include "tests/desktop/programs.hpp"

namespace measuring {

using namespace driver;

inline constexpr Milliseconds kLong{1500000}; // what makes many calls

double MillisecondsSince(Clock::time_point start);

// A median of several times in milliseconds, with the least and the greatest.
struct Spread {
    double median = 0;
    double least = 0;
    double most = 0;
};
Spread SpreadOf(std::vector<double> times);

// "4.01 s (3.92 to 4.40)", "35.2 ms (33.0 to 41.7)".
std::string Shown(const Spread& spread);
std::string Shown(double milliseconds);
// "1.83", "9.1 %".
std::string Ratio(double dividend, double divisor);
std::string Share(double part, double whole);

// A table in Markdown, row by row.
void PrintHeadings(const std::vector<std::string>& headings);
void PrintRow(const std::vector<std::string>& cells);

// Looks every millisecond whether `holds`.
void WaitTightly(std::string_view awaited, const std::function<bool()>& holds,
                 Milliseconds limit = kPatience);

// When the session was at work, by its own clock.
class SessionTimes {
  public:
    // The session runs already.
    SessionTimes();
    ~SessionTimes();
    SessionTimes(const SessionTimes&) = delete;
    SessionTimes& operator=(const SessionTimes&) = delete;

    void Clear() const;
    [[nodiscard]] const simulator::CallTimes& Read() const { return *times_; }

  private:
    HANDLE page_;
    simulator::CallTimes* times_ = nullptr;
};

// Waits until the thread of the window has handled all that was posted to it before, and the window
// and its children have nothing to paint. `edit` is an edit control of the same thread, whose flag
// of a change is used for it.
void WaitUntilDone(HWND window, HWND edit);

// Real input, without the pauses that a person's hand makes. The mouse stands there already.
void PressMouse(HWND window, POINT point);
void PressKeys(const std::vector<WORD>& keys);

// In MB.
double WorkingSet(const Program& program);

// Presses a button of the program as an assistive program does, at once.
void Press(const DorvakWindow& dorvak, int button);

// One run of an action, in milliseconds: from the press to the text that it ends with on the status
// line.
struct Run {
    double all = 0;
    double to_first_call = 0;
    double from_last_call = 0;
    double session_at_work = 0;
};

// Presses the button and waits until the session has answered so many calls and the status line
// begins with the text. Nothing is asked of the program before the calls are made: the session's
// page says how many they are. `meanwhile` runs some four times a second.
Run RunAction(const DorvakWindow& dorvak, const SessionTimes& session, int button, LONG64 calls,
              const std::string& last_status, const std::function<void()>& meanwhile = {});

// A file of that name in the folder for temporary files, with the content. Gives its path.
std::string WriteTemporary(const std::string& name, const std::string& content);

// A product document of `assemblies` with `parts` in each, one of `distinct` in turn.
std::string WriteProduct(const std::string& name, int assemblies, int parts, int distinct);

// The parts list's working file with so many rows; the last one alone begins with a "Z". Seven
// texts each, the first ones "Part 00001", "1", "2".
std::vector<std::vector<std::string>> MakeParts(int rows);
std::string ListFile(const std::vector<std::vector<std::string>>& parts);

} // namespace measuring
