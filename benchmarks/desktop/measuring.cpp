#include "measuring.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <thread>

// after windows.h, which programs.hpp brings
#include <psapi.h>

#include "win32/resource.h"

namespace measuring {

namespace {

constexpr Milliseconds kMeanwhile{250};

std::string Formatted(const char* format, double number) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

const char* FormatOf(double milliseconds) {
    return milliseconds >= 10000 ? "%.1f" : milliseconds >= 1000 ? "%.2f" : "%.1f";
}

double InUnit(double shown_like, double milliseconds) {
    return shown_like >= 1000 ? milliseconds / 1000 : milliseconds;
}

const char* UnitOf(double milliseconds) {
    return milliseconds >= 1000 ? " s" : " ms";
}

double TicksPerMillisecond() {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(frequency.QuadPart) / 1000;
}

LONG64 Ticks() {
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}

INPUT KeyInput(WORD key, bool up) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = up ? static_cast<DWORD>(KEYEVENTF_KEYUP) : 0U;
    if (key == VK_HOME || key == VK_NEXT) {
        input.ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
    }
    return input;
}

void Input(std::vector<INPUT> inputs) {
    if (SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) !=
        inputs.size()) {
        throw std::runtime_error("the system refuses mouse and keyboard input");
    }
}

bool HasToPaint(HWND window) {
    return GetUpdateRect(window, nullptr, FALSE) != FALSE && IsWindowVisible(window) != FALSE;
}

} // namespace

double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

Spread SpreadOf(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    const std::size_t middle = times.size() / 2;
    const double median =
        times.size() % 2 == 1 ? times[middle] : (times[middle - 1] + times[middle]) / 2;
    return {median, times.front(), times.back()};
}

std::string Shown(double milliseconds) {
    return Formatted(FormatOf(milliseconds), InUnit(milliseconds, milliseconds)) +
           UnitOf(milliseconds);
}

std::string Shown(const Spread& spread) {
    const double like = spread.median;
    return Shown(like) + " (" + Formatted(FormatOf(like), InUnit(like, spread.least)) + " to " +
           Formatted(FormatOf(like), InUnit(like, spread.most)) + ")";
}

std::string Ratio(double dividend, double divisor) {
    return Formatted("%.2f", dividend / divisor);
}

std::string Share(double part, double whole) {
    return Formatted("%.1f %%", 100 * part / whole);
}

void PrintRow(const std::vector<std::string>& cells) {
    for (const std::string& cell : cells) {
        std::cout << "| " << cell << " ";
    }
    std::cout << "|" << std::endl;
}

void PrintHeadings(const std::vector<std::string>& headings) {
    std::cout << '\n';
    PrintRow(headings);
    for (std::size_t i = 0; i < headings.size(); ++i) {
        std::cout << "|---";
    }
    std::cout << "|" << std::endl;
}

void WaitTightly(std::string_view awaited, const std::function<bool()>& holds, Milliseconds limit) {
    const Clock::time_point end = Clock::now() + limit;
    while (!holds()) {
        if (Clock::now() > end) {
            throw std::runtime_error("waited in vain for " + std::string(awaited));
        }
        std::this_thread::sleep_for(Milliseconds(1));
    }
}

SessionTimes::SessionTimes()
    : page_(OpenFileMappingW(FILE_MAP_WRITE, FALSE, simulator::kCallTimesName)) {
    if (page_ != nullptr) {
        times_ = static_cast<simulator::CallTimes*>(
            MapViewOfFile(page_, FILE_MAP_WRITE, 0, 0, sizeof(simulator::CallTimes)));
    }
    if (times_ == nullptr) {
        throw std::runtime_error("the simulated session shows no times");
    }
}

SessionTimes::~SessionTimes() {
    UnmapViewOfFile(times_);
    CloseHandle(page_);
}

void SessionTimes::Clear() const {
    times_->calls = 0;
    times_->first_begun = 0;
    times_->last_ended = 0;
    times_->at_work = 0;
}

void WaitUntilDone(HWND window, HWND edit) {
    Send(edit, EM_SETMODIFY, FALSE, 0, kLong);
    PostMessageW(edit, EM_SETMODIFY, TRUE, 0);
    WaitTightly(
        "all messages to be handled", [&] { return Send(edit, EM_GETMODIFY, 0, 0, kLong) != 0; },
        kLong);
    WaitTightly(
        "the window painted",
        [&] {
            bool painted = !HasToPaint(window);
            EnumChildWindows(
                window,
                [](HWND child, LPARAM result) -> BOOL {
                    bool& all = *reinterpret_cast<bool*>(result);
                    all = all && !HasToPaint(child);
                    return all ? TRUE : FALSE;
                },
                reinterpret_cast<LPARAM>(&painted));
            return painted;
        },
        kLong);
}

void PressMouse(HWND window, POINT point) {
    ClientToScreen(window, &point);
    INPUT down{};
    down.type = INPUT_MOUSE;
    down.mi.dwFlags = MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    // The middle of the pixel, in 65536ths of the screen.
    down.mi.dx = (point.x * 65536 + 32768) / GetSystemMetrics(SM_CXSCREEN);
    down.mi.dy = (point.y * 65536 + 32768) / GetSystemMetrics(SM_CYSCREEN);
    INPUT up = down;
    up.mi.dwFlags = MOUSEEVENTF_LEFTUP | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    Input({down, up});
}

void PressKeys(const std::vector<WORD>& keys) {
    std::vector<INPUT> inputs;
    inputs.reserve(2 * keys.size());
    for (const WORD key : keys) {
        inputs.push_back(KeyInput(key, false));
    }
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        inputs.push_back(KeyInput(*key, true));
    }
    Input(inputs);
}

double WorkingSet(const Program& program) {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(program.Process(), &counters, sizeof counters);
    return static_cast<double>(counters.WorkingSetSize) / 1024 / 1024;
}

void Press(const DorvakWindow& dorvak, int button) {
    PostMessageW(dorvak[button], BM_CLICK, 0, 0);
}

Run RunAction(const DorvakWindow& dorvak, const SessionTimes& session, int button, LONG64 calls,
              const std::string& last_status, const std::function<void()>& meanwhile) {
    const HWND status_bar = dorvak[ID_StatusBar1];
    const HWND pressed = dorvak[button];
    session.Clear();
    Clock::time_point next_meanwhile = Clock::now() + kMeanwhile;
    const Clock::time_point start = Clock::now();
    const LONG64 start_ticks = Ticks();
    PostMessageW(pressed, BM_CLICK, 0, 0);
    WaitUntil(
        "the action's calls",
        [&] {
            if (meanwhile && Clock::now() > next_meanwhile) {
                meanwhile();
                next_meanwhile = Clock::now() + kMeanwhile;
            }
            const simulator::CallTimes& times = session.Read();
            // Fewer calls than expected show when the calls are compared.
            return times.calls >= calls ||
                   (times.last_ended != 0 &&
                    static_cast<double>(Ticks() - times.last_ended) > 5000 * TicksPerMillisecond());
        },
        kLong);
    WaitTightly("the status " + last_status,
                [&] { return Text(status_bar).starts_with(last_status); });
    const LONG64 end_ticks = Ticks();
    const simulator::CallTimes& times = session.Read();
    const double per_millisecond = TicksPerMillisecond();
    return {MillisecondsSince(start),
            static_cast<double>(times.first_begun - start_ticks) / per_millisecond,
            static_cast<double>(end_ticks - times.last_ended) / per_millisecond,
            static_cast<double>(times.at_work) / per_millisecond};
}

std::string WriteTemporary(const std::string& name, const std::string& content) {
    std::string path = TemporaryPath(name);
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string WriteProduct(const std::string& name, int assemblies, int parts, int distinct) {
    std::string content = "ProductDocument " + name + ".CATProduct\nproduct \"" + name + "\"\n";
    for (int i = 0; i < assemblies; ++i) {
        content += "  child \"Assembly " + std::to_string(i) + "\"\n";
    }
    for (int i = 0; i < assemblies; ++i) {
        content += "product \"Assembly " + std::to_string(i) + "\"\n";
        for (int part = 0; part < parts; ++part) {
            content += "  child \"Part " + std::to_string((i * parts + part) % distinct) + "\"\n";
        }
    }
    return WriteTemporary(name + ".txt", content);
}

std::vector<std::vector<std::string>> MakeParts(int rows) {
    std::vector<std::vector<std::string>> parts;
    for (int row = 1; row <= rows; ++row) {
        std::string number = std::to_string(row);
        std::string name = row == rows ? "Zavora " : "Part ";
        name.append(6 - std::min<std::size_t>(number.size(), 6), '0').append(number);
        parts.push_back(
            {std::move(name), std::move(number), "2", "", "14 220", "D110x28", "kalit"});
    }
    return parts;
}

std::string ListFile(const std::vector<std::vector<std::string>>& parts) {
    std::string file;
    for (const auto& part : parts) {
        file += part[0] + "@@False";
        for (std::size_t field = 1; field < part.size(); ++field) {
            file += "@@" + part[field];
        }
        file += "\r\n";
    }
    return file;
}

} // namespace measuring
