#include "driver.hpp"

#include <objidl.h>
#include <shlobj.h>

#include <algorithm>
#include <array>

// Its header means the macros of these names, which are switched off.
namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus
// after objidl.h
#include <gdiplus.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

#include "com/owned.hpp"
#include "com/utf.hpp"

namespace driver {
namespace {

[[noreturn]] void Fail(const std::string& what) {
    throw std::runtime_error(what);
}

void Sleep(Milliseconds time) {
    std::this_thread::sleep_for(time);
}

constexpr int kTextLength = 1024; // of what is read from a control's item

// Memory in the process that a window belongs to: what the common controls' messages with pointers
// need across processes.
class RemoteMemory {
  public:
    RemoteMemory(HWND window, std::size_t size) {
        DWORD process_id = 0;
        GetWindowThreadProcessId(window, &process_id);
        process_ = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE,
                               process_id);
        if (process_ != nullptr) {
            memory_ =
                VirtualAllocEx(process_, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
        }
        if (memory_ == nullptr) {
            CloseHandle(process_);
            Fail("no memory in the other process: has the program ended?");
        }
    }
    ~RemoteMemory() {
        VirtualFreeEx(process_, memory_, 0, MEM_RELEASE);
        CloseHandle(process_);
    }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    [[nodiscard]] LPARAM Address(std::size_t offset = 0) const {
        return reinterpret_cast<LPARAM>(static_cast<char*>(memory_) + offset);
    }

    template <typename Thing>
    void Write(const Thing& thing) const {
        WriteProcessMemory(process_, memory_, &thing, sizeof thing, nullptr);
    }
    template <typename Thing>
    [[nodiscard]] Thing Read() const {
        Thing thing{};
        ReadProcessMemory(process_, memory_, &thing, sizeof thing, nullptr);
        return thing;
    }
    [[nodiscard]] std::string ReadText(std::size_t offset, std::size_t length) const {
        std::wstring text(length, L'\0');
        ReadProcessMemory(process_, static_cast<char*>(memory_) + offset, text.data(),
                          length * sizeof(wchar_t), nullptr);
        return com::Narrow(text.substr(0, text.find(L'\0')));
    }

  private:
    HANDLE process_ = nullptr;
    void* memory_ = nullptr;
};

std::string Describe(HWND window) {
    return ClassName(window) + " with id " + std::to_string(GetDlgCtrlID(window));
}

void Input(std::vector<INPUT> inputs) {
    if (SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) !=
        inputs.size()) {
        Fail("the system refuses mouse and keyboard input");
    }
    Sleep(Milliseconds(30));
}

// A doing of the mouse's buttons at a point of the screen. It carries the point along, so that no
// late report of an earlier movement comes between.
INPUT MouseInput(POINT point, DWORD flags) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    // The middle of the pixel, in 65536ths of the screen.
    input.mi.dx = (point.x * 65536 + 32768) / GetSystemMetrics(SM_CXSCREEN);
    input.mi.dy = (point.y * 65536 + 32768) / GetSystemMetrics(SM_CYSCREEN);
    return input;
}

POINT OnScreen(HWND window, POINT point) {
    ClientToScreen(window, &point);
    return point;
}

INPUT Key(WORD virtual_key, bool up) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtual_key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(virtual_key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = up ? static_cast<DWORD>(KEYEVENTF_KEYUP) : 0U;
    const bool extended = virtual_key == VK_APPS || virtual_key == VK_UP ||
                          virtual_key == VK_DOWN || virtual_key == VK_HOME ||
                          virtual_key == VK_END || virtual_key == VK_DELETE ||
                          virtual_key == VK_INSERT;
    if (extended) {
        input.ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
    }
    return input;
}

POINT Middle(const RECT& place) {
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

struct WindowSearch {
    DWORD process_id;
    std::string window_class;
    std::vector<HWND> found;
};

BOOL CALLBACK SearchWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD process_id = 0;
    GetWindowThreadProcessId(window, &process_id);
    if (process_id == search.process_id && IsWindowVisible(window) != FALSE &&
        ClassName(window) == search.window_class) {
        search.found.push_back(window);
    }
    return TRUE;
}

// The text of the tip with that style, or without it.
std::string TextOfTip(const Program& program, bool is_balloon) {
    for (const HWND tip : program.AllVisible(TOOLTIPS_CLASSA)) {
        if (((GetWindowLongPtrW(tip, GWL_STYLE) & TTS_BALLOON) != 0) == is_balloon) {
            return Text(tip);
        }
    }
    return {};
}

// From the top down.
std::vector<HWND> VisibleWindows() {
    std::vector<HWND> windows;
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            if (IsWindowVisible(window) != FALSE && IsIconic(window) == FALSE) {
                reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(window);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

struct ControlSearch {
    int id;
    HWND found = nullptr;
};

BOOL CALLBACK SearchControl(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<ControlSearch*>(parameter);
    if (GetDlgCtrlID(window) == search.id) {
        search.found = window;
        return FALSE;
    }
    return TRUE;
}

std::string Quoted(const std::string& argument) {
    return argument.find(' ') == std::string::npos ? argument : '"' + argument + '"';
}

// The point left of `from`, on its line, where the control finds a check box. `hit` tells.
POINT CheckPoint(HWND control, POINT from, const std::function<bool(POINT)>& hit) {
    for (POINT point = from; point.x >= 0; --point.x) {
        if (hit(point)) {
            point.x -= 4; // away from its edge
            return point;
        }
    }
    Fail("no check box in " + Describe(control));
}

// What a list view finds at a point.
LVHITTESTINFO ListHit(HWND list, POINT point) {
    const RemoteMemory memory(list, sizeof(LVHITTESTINFO));
    LVHITTESTINFO hit{};
    hit.pt = point;
    memory.Write(hit);
    Send(list, LVM_HITTEST, 0, memory.Address());
    return memory.Read<LVHITTESTINFO>();
}

RECT ListRect(HWND list, int row, int part) {
    const RemoteMemory memory(list, sizeof(RECT));
    RECT place{};
    place.left = part;
    memory.Write(place);
    if (Send(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), memory.Address()) == 0) {
        Fail("the list has no row " + std::to_string(row));
    }
    return memory.Read<RECT>();
}

bool RowState(HWND list, int row, UINT state) {
    return (static_cast<UINT>(Send(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row),
                                   static_cast<LPARAM>(state))) &
            state) != 0;
}

HTREEITEM NextItem(HWND tree, UINT relation, HTREEITEM from) {
    return reinterpret_cast<HTREEITEM>(
        Send(tree, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(from)));
}

// Has a common control fill in `item` at its place; gives the item's text.
template <typename Item>
std::string FillIn(HWND control, UINT message, WPARAM place, Item& item) {
    const RemoteMemory memory(control, sizeof(Item) + kTextLength * sizeof(wchar_t));
    item.pszText = reinterpret_cast<wchar_t*>(memory.Address(sizeof(Item)));
    item.cchTextMax = kTextLength;
    memory.Write(item);
    Send(control, message, place, memory.Address());
    item = memory.Read<Item>();
    return memory.ReadText(sizeof(Item), kTextLength);
}

TreeItem ReadTreeItem(HWND tree, HTREEITEM handle, int depth) {
    TVITEMW item{};
    item.mask = TVIF_TEXT | TVIF_STATE | TVIF_IMAGE | TVIF_HANDLE;
    item.hItem = handle;
    item.stateMask = TVIS_STATEIMAGEMASK;
    std::string text = FillIn(tree, TVM_GETITEMW, 0, item);
    return {handle, depth, std::move(text),
            (item.state & TVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2), item.iImage};
}

void AddTreeItems(HWND tree, HTREEITEM first, int depth, std::vector<TreeItem>& items) {
    for (HTREEITEM item = first; item != nullptr; item = NextItem(tree, TVGN_NEXT, item)) {
        items.push_back(ReadTreeItem(tree, item, depth));
        AddTreeItems(tree, NextItem(tree, TVGN_CHILD, item), depth + 1, items);
    }
}

// The texts of a list box, by its messages or by a combo box's.
std::vector<std::string> Items(HWND control, UINT count_message, UINT length_message,
                               UINT text_message) {
    std::vector<std::string> items;
    const LRESULT count = Send(control, count_message);
    for (WPARAM item = 0; item < static_cast<WPARAM>(count); ++item) {
        const LRESULT room = Send(control, length_message, item);
        std::wstring text(static_cast<std::size_t>(std::max<LRESULT>(room, 0)) + 1, L'\0');
        const LRESULT length =
            room < 0 ? room
                     : Send(control, text_message, item, reinterpret_cast<LPARAM>(text.data()));
        if (length < 0) {
            return {}; // the program is filling it anew
        }
        text.resize(static_cast<std::size_t>(length));
        items.push_back(com::Narrow(text));
    }
    return items;
}

// Windows keeps menus' windows hidden while no menu is open.
HWND FindPopupMenu() {
    HWND menu = nullptr;
    do {
        menu = FindWindowExW(nullptr, menu, L"#32768", nullptr);
    } while (menu != nullptr && IsWindowVisible(menu) == FALSE);
    return menu;
}

// Windows lets no program bring a window of another one to the front, unless the last input was its
// own: the press of a hot key that it has registered.
void GetInput() {
    constexpr int kId = 1;
    constexpr WORD kUnused = VK_F22; // on hardly any keyboard
    if (RegisterHotKey(nullptr, kId, MOD_NOREPEAT, kUnused) == FALSE) {
        return;
    }
    Input({Key(kUnused, false), Key(kUnused, true)});
    const Clock::time_point end = Clock::now() + Milliseconds(500);
    MSG press;
    while (PeekMessageW(&press, nullptr, WM_HOTKEY, WM_HOTKEY, PM_REMOVE) == FALSE &&
           Clock::now() < end) {
        Sleep(Milliseconds(10));
    }
    UnregisterHotKey(nullptr, kId);
}

// To a point of the screen, and waits until the window has seen it.
void MoveMouseTo(POINT target, HWND window) {
    // Not by SendInput: under Wine that would leave the X server's own pointer behind, which jumps
    // back in when a window opens beneath it.
    SetCursorPos(target.x, target.y);
    Sleep(Milliseconds(30));
    Send(window, WM_NULL);
}

} // namespace

void WaitUntil(std::string_view awaited, const std::function<bool()>& holds, Milliseconds limit) {
    const Clock::time_point end = Clock::now() + limit;
    while (!holds()) {
        if (Clock::now() > end) {
            Fail("waited in vain for " + std::string(awaited));
        }
        Sleep(Milliseconds(20));
    }
}

void WaitForText(std::string_view what, const std::string& expected,
                 const std::function<std::string()>& read, Milliseconds limit) {
    std::string last;
    const Clock::time_point end = Clock::now() + limit;
    while ((last = read()) != expected) {
        if (Clock::now() > end) {
            std::string message = "waited in vain for ";
            message.append(what).append(" \"").append(expected);
            Fail(message.append("\"; it is \"").append(last).append("\""));
        }
        Sleep(Milliseconds(20));
    }
}

Program::Program(const std::string& path, const std::vector<std::string>& arguments) {
    std::string command = '"' + path + '"';
    for (const std::string& argument : arguments) {
        command += ' ' + Quoted(argument);
    }
    std::wstring command_line = com::Widen(command);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (CreateProcessW(nullptr, command_line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &started) == FALSE) {
        Fail("cannot start " + command + ": error " + std::to_string(GetLastError()));
    }
    CloseHandle(started.hThread);
    process_ = started.hProcess;
    process_id_ = started.dwProcessId;
}

Program::~Program() {
    TerminateProcess(process_, 1);
    WaitForSingleObject(process_, 5000);
    CloseHandle(process_);
}

bool Program::Running() const {
    return WaitForSingleObject(process_, 0) == WAIT_TIMEOUT;
}

DWORD Program::WaitForEnd(Milliseconds limit) const {
    if (WaitForSingleObject(process_, static_cast<DWORD>(limit.count())) != WAIT_OBJECT_0) {
        Fail("waited in vain for the program's end");
    }
    DWORD exit_code = 0;
    GetExitCodeProcess(process_, &exit_code);
    return exit_code;
}

HWND Program::FindVisible(const std::string& window_class) const {
    const auto found = AllVisible(window_class);
    return found.empty() ? nullptr : found.front();
}

std::vector<HWND> Program::AllVisible(const std::string& window_class) const {
    WindowSearch search{process_id_, window_class, {}};
    EnumWindows(SearchWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::string BalloonText(const Program& program) {
    return TextOfTip(program, true);
}

std::string TipText(const Program& program) {
    return TextOfTip(program, false);
}

HWND Program::WaitForWindow(const std::string& window_class, Milliseconds limit) const {
    HWND window = nullptr;
    WaitUntil(
        "a window of class " + window_class,
        [&] {
            if (!Running()) {
                Fail("the program ended with code " + std::to_string(WaitForEnd()) +
                     " before it showed a window of class " + window_class);
            }
            window = FindVisible(window_class);
            return window != nullptr;
        },
        limit);
    WaitForInputIdle(process_, static_cast<DWORD>(limit.count())); // until it is all there
    return window;
}

HWND Control(HWND window, int id) {
    ControlSearch search{id};
    EnumChildWindows(window, SearchControl, reinterpret_cast<LPARAM>(&search));
    if (search.found == nullptr) {
        Fail("no control with id " + std::to_string(id));
    }
    return search.found;
}

LRESULT Send(HWND window, UINT message, WPARAM wparam, LPARAM lparam, Milliseconds limit) {
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutW(window, message, wparam, lparam, SMTO_NORMAL,
                            static_cast<UINT>(limit.count()), &answer) == 0) {
        Fail("no answer to message " + std::to_string(message) + " from " + Describe(window));
    }
    return static_cast<LRESULT>(answer);
}

std::string ClassName(HWND window) {
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return com::Narrow(name.data());
}

std::string Text(HWND window) {
    const auto length = static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH));
    std::wstring text(length + 1, L'\0');
    const LRESULT copied =
        Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(copied));
    return com::Narrow(text);
}

RECT Place(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

bool Topmost(HWND window) {
    return (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

bool Ticked(HWND check_box) {
    return Send(check_box, BM_GETCHECK) == BST_CHECKED;
}

void RequestFront(HWND window) {
    if (SetForegroundWindow(window) == FALSE) {
        GetInput();
        SetForegroundWindow(window);
    }
}

void BringToFront(HWND window) {
    const HWND root = GetAncestor(window, GA_ROOT);
    if (GetForegroundWindow() == root) {
        return;
    }
    RequestFront(root);
    WaitUntil("the window in front", [&] { return GetForegroundWindow() == root; });
    Send(root, WM_NULL); // until it knows
    Sleep(Milliseconds(100));
}

bool StandsBefore(HWND upper, HWND lower) {
    HWND next = upper;
    while (next != nullptr && next != lower) {
        next = GetWindow(next, GW_HWNDNEXT);
    }
    return upper != lower && next == lower;
}

void TellDpi(HWND window, UINT dpi, const RECT& place) {
    const RemoteMemory memory(window, sizeof place);
    memory.Write(place);
    Send(window, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), memory.Address());
}

HWND FocusedControl(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus;
}

void MoveMouse(HWND window, POINT point) {
    MoveMouseTo(OnScreen(window, point), window);
}

void ClickAsItStands(HWND window, POINT point, MouseButton button) {
    MoveMouse(window, point);
    const bool left = button == MouseButton::kLeft;
    const POINT target = OnScreen(window, point);
    Input({MouseInput(target, left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN),
           MouseInput(target, left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP)});
}

void Click(HWND window, POINT point, MouseButton button) {
    BringToFront(window);
    ClickAsItStands(window, point, button);
}

void Click(HWND control, MouseButton button) {
    // A second press at the same place within the double-click time would be the same press.
    static HWND last = nullptr;
    static Clock::time_point last_time;
    if (control == last) {
        std::this_thread::sleep_until(last_time + Milliseconds(GetDoubleClickTime() + 50));
    }
    last = control;
    last_time = Clock::now();
    if (IsWindowVisible(control) == FALSE || IsWindowEnabled(control) == FALSE) {
        Fail(Describe(control) + " is hidden or disabled");
    }
    RECT place{};
    GetClientRect(control, &place);
    Click(control, Middle(place), button);
}

void DoubleClick(HWND control) {
    RECT client{};
    GetClientRect(control, &client);
    DoubleClick(control, {client.right / 2, client.bottom / 2});
}

void DoubleClick(HWND window, POINT point) {
    Click(window, point);
    Click(window, point);
}

void Drag(HWND window, POINT from, POINT to) {
    BringToFront(window);
    const POINT start = OnScreen(window, from); // the window itself may be what is dragged
    const POINT end = OnScreen(window, to);
    MoveMouseTo(start, window);
    Input({MouseInput(start, MOUSEEVENTF_LEFTDOWN)});
    constexpr int kSteps = 8;
    for (int step = 1; step <= kSteps; ++step) {
        MoveMouseTo({start.x + (end.x - start.x) * step / kSteps,
                     start.y + (end.y - start.y) * step / kSteps},
                    window);
    }
    Input({MouseInput(end, MOUSEEVENTF_LEFTUP)});
}

// The program that is told of the drop gives the memory back.
void DropFiles(HWND window, const std::vector<std::string>& paths) {
    std::wstring names;
    for (const std::string& path : paths) {
        names += com::Widen(path) + L'\0';
    }
    names += L'\0';
    DROPFILES head{};
    head.pFiles = sizeof head;
    head.fWide = TRUE;
    std::vector<char> drop(sizeof head + names.size() * sizeof(wchar_t));
    std::memcpy(drop.data(), &head, sizeof head);
    std::memcpy(drop.data() + sizeof head, names.data(), names.size() * sizeof(wchar_t));

    void* memory = nullptr;
    if (GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr) {
        memory = GlobalAlloc(GMEM_FIXED, drop.size());
        std::memcpy(memory, drop.data(), drop.size());
    } else { // which does not carry it to the other process
        DWORD process_id = 0;
        GetWindowThreadProcessId(window, &process_id);
        const com::OwnedHandle process(
            OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_WRITE, FALSE, process_id));
        memory = VirtualAllocEx(process.get(), nullptr, drop.size(), MEM_COMMIT | MEM_RESERVE,
                                PAGE_READWRITE);
        WriteProcessMemory(process.get(), memory, drop.data(), drop.size(), nullptr);
    }
    PostMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
}

void PressKey(WORD virtual_key, const std::vector<WORD>& held) {
    HoldKey(virtual_key, 1, held);
}

void PressKeyThatGoesUpLast(WORD virtual_key, const std::vector<WORD>& held) {
    std::vector<INPUT> inputs;
    inputs.reserve(2 * held.size() + 2);
    for (const WORD key : held) {
        inputs.push_back(Key(key, false));
    }
    inputs.push_back(Key(virtual_key, false));
    for (auto key = held.rbegin(); key != held.rend(); ++key) {
        inputs.push_back(Key(*key, true));
    }
    inputs.push_back(Key(virtual_key, true));
    Input(inputs);
}

void HoldKey(WORD virtual_key, int times, const std::vector<WORD>& held) {
    std::vector<INPUT> inputs;
    inputs.reserve(2 * held.size() + static_cast<std::size_t>(times) + 1);
    for (const WORD key : held) {
        inputs.push_back(Key(key, false));
    }
    inputs.insert(inputs.end(), static_cast<std::size_t>(times), Key(virtual_key, false));
    inputs.push_back(Key(virtual_key, true));
    for (auto key = held.rbegin(); key != held.rend(); ++key) {
        inputs.push_back(Key(*key, true));
    }
    Input(inputs);
}

void TypeText(std::string_view text) {
    for (const wchar_t character : com::Widen(text)) {
        if (character == L'\n') {
            continue;
        }
        if (character == L'\r') {
            PressKey(VK_RETURN);
            continue;
        }
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wScan = character;
        input.ki.dwFlags = KEYEVENTF_UNICODE;
        INPUT release = input;
        release.ki.dwFlags |= KEYEVENTF_KEYUP;
        Input({input, release});
    }
}

void PasteText(HWND edit, const std::string& text) {
    PutTextOnClipboard(text);
    Click(edit);
    PressKey(VK_HOME, {VK_CONTROL});
    PressKey(VK_END, {VK_CONTROL, VK_SHIFT});
    PressKey('V', {VK_CONTROL});
    WaitForText("the pasted text", text, [edit] { return Text(edit); });
}

std::string StatusText(HWND status_bar, int panel) {
    const auto length = static_cast<std::size_t>(LOWORD(
                            Send(status_bar, SB_GETTEXTLENGTHW, static_cast<WPARAM>(panel)))) +
                        1;
    // The text may grow between the two messages.
    const RemoteMemory memory(status_bar, (length + 1024) * sizeof(wchar_t));
    Send(status_bar, SB_GETTEXTW, static_cast<WPARAM>(panel), memory.Address());
    return memory.ReadText(0, length + 1024);
}

SIZE IdealSize(HWND button) {
    const RemoteMemory memory(button, sizeof(SIZE));
    memory.Write(SIZE{});
    Send(button, BCM_GETIDEALSIZE, 0, memory.Address());
    return memory.Read<SIZE>();
}

std::vector<std::string> ListBoxItems(HWND list_box) {
    return Items(list_box, LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
}

std::vector<std::string> ComboBoxItems(HWND combo_box) {
    return Items(combo_box, CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
}

void ClickTab(HWND tab_control, int tab) {
    const RemoteMemory memory(tab_control, sizeof(RECT));
    if (Send(tab_control, TCM_GETITEMRECT, static_cast<WPARAM>(tab), memory.Address()) == 0) {
        Fail("no tab " + std::to_string(tab));
    }
    Click(tab_control, Middle(memory.Read<RECT>()));
}

std::vector<std::string> TabCaptions(HWND tab_control) {
    std::vector<std::string> captions;
    const LRESULT count = Send(tab_control, TCM_GETITEMCOUNT);
    for (WPARAM tab = 0; tab < static_cast<WPARAM>(count); ++tab) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        captions.push_back(FillIn(tab_control, TCM_GETITEMW, tab, item));
    }
    return captions;
}

std::vector<std::string> ColumnHeadings(HWND list) {
    std::vector<std::string> headings;
    auto* const header = reinterpret_cast<HWND>(Send(list, LVM_GETHEADER));
    const LRESULT count = Send(header, HDM_GETITEMCOUNT);
    for (WPARAM column = 0; column < static_cast<WPARAM>(count); ++column) {
        LVCOLUMNW asked{};
        asked.mask = LVCF_TEXT;
        headings.push_back(FillIn(list, LVM_GETCOLUMNW, column, asked));
    }
    return headings;
}

int RowCount(HWND list) {
    return static_cast<int>(Send(list, LVM_GETITEMCOUNT));
}

std::string Cell(HWND list, int row, int column) {
    LVITEMW item{};
    item.iSubItem = column;
    return FillIn(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), item);
}

std::vector<std::string> Row(HWND list, int row, int columns) {
    std::vector<std::string> cells;
    cells.reserve(static_cast<std::size_t>(columns));
    for (int column = 0; column < columns; ++column) {
        cells.push_back(Cell(list, row, column));
    }
    return cells;
}

bool RowChecked(HWND list, int row) {
    const auto state = static_cast<UINT>(
        Send(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_STATEIMAGEMASK));
    return (state & LVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
}

bool RowSelected(HWND list, int row) {
    return RowState(list, row, LVIS_SELECTED);
}

void SetRowChecked(HWND list, int row, bool checked) {
    const RemoteMemory memory(list, sizeof(LVITEMW));
    LVITEMW item{};
    item.state = INDEXTOSTATEIMAGEMASK(checked ? 2 : 1);
    item.stateMask = LVIS_STATEIMAGEMASK;
    memory.Write(item);
    Send(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), memory.Address());
}

int FocusedRow(HWND list) {
    return static_cast<int>(
        Send(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), MAKELPARAM(LVNI_FOCUSED, 0)));
}

POINT RowPoint(HWND list, int row) {
    const RECT label = ListRect(list, row, LVIR_LABEL);
    return {label.left + 12, (label.top + label.bottom) / 2};
}

POINT RowCheckPoint(HWND list, int row) {
    return CheckPoint(list, RowPoint(list, row), [&](POINT point) {
        return (ListHit(list, point).flags & LVHT_ONITEM) == LVHT_ONITEMSTATEICON;
    });
}

POINT CellPoint(HWND list, int row, int column) {
    int left = 0;
    for (int before = 0; before < column; ++before) {
        left += ColumnWidth(list, before);
    }
    return {left + ColumnWidth(list, column) / 2, RowPoint(list, row).y};
}

int ColumnWidth(HWND list, int column) {
    return static_cast<int>(Send(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
}

std::vector<TreeItem> TreeItems(HWND tree) {
    std::vector<TreeItem> items;
    AddTreeItems(tree, NextItem(tree, TVGN_ROOT, nullptr), 0, items);
    return items;
}

void SetTreeItemChecked(HWND tree, HTREEITEM item, bool checked) {
    const RemoteMemory memory(tree, sizeof(TVITEMW));
    TVITEMW change{};
    change.mask = TVIF_HANDLE | TVIF_STATE;
    change.hItem = item;
    change.state = INDEXTOSTATEIMAGEMASK(checked ? 2 : 1);
    change.stateMask = TVIS_STATEIMAGEMASK;
    memory.Write(change);
    Send(tree, TVM_SETITEMW, 0, memory.Address());
}

RECT TreeLabel(HWND tree, HTREEITEM item) {
    const RemoteMemory memory(tree, sizeof(RECT));
    memory.Write(
        reinterpret_cast<std::uintptr_t>(item)); // the rectangle's first bytes say which item
    if (Send(tree, TVM_GETITEMRECT, TRUE, memory.Address()) == 0) {
        Fail("the tree item is out of sight");
    }
    return memory.Read<RECT>();
}

POINT TreeCheckPoint(HWND tree, HTREEITEM item) {
    Send(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    const RECT label = TreeLabel(tree, item);
    const RemoteMemory memory(tree, sizeof(TVHITTESTINFO));
    return CheckPoint(tree, {label.left, (label.top + label.bottom) / 2}, [&](POINT point) {
        TVHITTESTINFO hit{};
        hit.pt = point;
        memory.Write(hit);
        Send(tree, TVM_HITTEST, 0, memory.Address());
        return (memory.Read<TVHITTESTINFO>().flags & TVHT_ONITEMSTATEICON) != 0;
    });
}

HWND WaitForPopupMenu() {
    WaitUntil("a popup menu", PopupMenuOpen);
    Sleep(Milliseconds(100)); // until it takes keys
    return FindPopupMenu();
}

void ClickEntry(HWND popup_menu, int entries_above, int separators_above) {
    RECT place{};
    GetClientRect(popup_menu, &place);
    const int height = GetSystemMetrics(SM_CYMENU);
    const int above = entries_above * height + separators_above * height / 2;
    Click(popup_menu, {place.right / 2, above + height / 2});
}

bool PopupMenuOpen() {
    return FindPopupMenu() != nullptr;
}

std::optional<std::string> ClipboardText() {
    WaitUntil("the clipboard", [] { return OpenClipboard(nullptr) != 0; });
    std::optional<std::string> text;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
        text = com::Narrow(static_cast<const wchar_t*>(GlobalLock(data)));
        GlobalUnlock(data);
    }
    CloseClipboard();
    return text;
}

HCURSOR ShownPointer() {
    CURSORINFO info{};
    info.cbSize = sizeof info;
    GetCursorInfo(&info);
    return info.hCursor;
}

bool ShowsColour(HWND window, const RECT& area, COLORREF colour) {
    // Through the top-level window: of another process's inner windows Wine shows no pixels.
    const HWND top = GetAncestor(window, GA_ROOT);
    RECT part = area;
    MapWindowPoints(window, HWND_DESKTOP, reinterpret_cast<POINT*>(&part), 2);
    const RECT frame = Place(top);
    OffsetRect(&part, -frame.left, -frame.top);
    const int width = part.right - part.left;
    const int height = part.bottom - part.top;

    const HDC source = GetWindowDC(top);
    const HDC memory = CreateCompatibleDC(source);
    const HBITMAP bitmap = CreateCompatibleBitmap(source, width, height);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, source, part.left, part.top, SRCCOPY);
    bool shown = false;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            shown = shown || GetPixel(memory, x, y) == colour;
        }
    }
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(top, source);
    return shown;
}

void SaveScreenshot(const std::string& path, const std::optional<RECT>& part) {
    const RECT place =
        part.value_or(RECT{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)});
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;

    // Window by window from the bottom up: the screen's own device context shows none of them where
    // the desktop is a window itself, as under Wine.
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    const RECT all{0, 0, width, height};
    FillRect(memory, &all, GetSysColorBrush(COLOR_DESKTOP));
    const std::vector<HWND> windows = VisibleWindows();
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        const RECT bounds = Place(*window);
        const HDC source = GetWindowDC(*window);
        const HRGN shape = CreateRectRgn(0, 0, 0, 0); // of a balloon
        if (GetWindowRgn(*window, shape) != ERROR) {
            OffsetRgn(shape, bounds.left - place.left, bounds.top - place.top);
            SelectClipRgn(memory, shape);
        }
        BitBlt(memory, bounds.left - place.left, bounds.top - place.top, bounds.right - bounds.left,
               bounds.bottom - bounds.top, source, 0, 0, SRCCOPY);
        SelectClipRgn(memory, nullptr);
        DeleteObject(shape);
        ReleaseDC(*window, source);
    }
    SelectObject(memory, before);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);

    const Gdiplus::GdiplusStartupInput startup;
    ULONG_PTR token = 0;
    Gdiplus::GdiplusStartup(&token, &startup, nullptr);
    constexpr CLSID kPngEncoder = {
        0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
    Gdiplus::Status saved = Gdiplus::GenericError;
    {
        Gdiplus::Bitmap image(bitmap, nullptr);
        saved = image.Save(com::Widen(path).c_str(), &kPngEncoder, nullptr);
    }
    Gdiplus::GdiplusShutdown(token);
    DeleteObject(bitmap);
    if (saved != Gdiplus::Ok) {
        Fail("cannot write " + path);
    }
}

void PutTextOnClipboard(std::string_view text) {
    const std::wstring wide = com::Widen(text);
    const std::size_t size = (wide.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    std::memcpy(GlobalLock(memory), wide.c_str(), size);
    GlobalUnlock(memory);
    WaitUntil("the clipboard", [] { return OpenClipboard(nullptr) != 0; });
    EmptyClipboard();
    SetClipboardData(CF_UNICODETEXT, memory);
    CloseClipboard();
}

void KeepPicture(const std::string& file_name) {
    if (const char* folder = std::getenv("PICTURES")) {
        SaveScreenshot(std::string(folder) + "\\" + file_name);
    }
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(std::filesystem::path(com::Widen(path)), std::ios::binary);
    if (!file) {
        Fail("cannot read " + path);
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace driver
