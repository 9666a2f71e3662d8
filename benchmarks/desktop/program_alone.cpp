// The start, long lists, the preview and large trees: what the program does without calls.
#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <thread>

#include "com/utf.hpp"
#include "measuring.hpp"
#include "sections.hpp"
#include "win32/resource.h"

namespace measuring {

namespace {

// From the start to a window that has painted and waits for the person.
double StartTime(const std::string& program, const std::string& window_class) {
    const Clock::time_point start = Clock::now();
    const Program started(program);
    WaitForInputIdle(started.Process(), static_cast<DWORD>(kPatience.count()));
    HWND window = nullptr;
    WaitTightly("a window of class " + window_class, [&] {
        window = started.FindVisible(window_class);
        return window != nullptr;
    });
    WaitTightly("the window painted",
                [&] { return GetUpdateRect(window, nullptr, FALSE) == FALSE; });
    Send(window, WM_NULL);
    return MillisecondsSince(start);
}

// Lists -------------------------------------------------------------------------------------------

// The common controls of the version that the program's manifest asks for, on this thread. Stays
// so.
void UseControlsOf(const std::string& program) {
    const std::wstring path = com::Widen(program);
    ACTCTXW context{};
    context.cbSize = sizeof context;
    context.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
    context.lpSource = path.c_str();
    context.lpResourceName = MAKEINTRESOURCEW(1); // of a program's own manifest
    ULONG_PTR cookie = 0;
    const HANDLE activation = CreateActCtxW(&context);
    if (activation == INVALID_HANDLE_VALUE || ActivateActCtx(activation, &cookie) == FALSE) {
        throw std::runtime_error("the manifest of " + program + " cannot be used");
    }
}

// A virtual list view without a program: the styles, columns and place of another one, and texts
// made up when they are asked for. It lives on a thread of its own.
class BareList {
  public:
    BareList(HWND like, int rows);
    ~BareList();
    BareList(const BareList&) = delete;
    BareList& operator=(const BareList&) = delete;

    [[nodiscard]] HWND List() const { return list_; }
    [[nodiscard]] HWND Edit() const { return edit_; }

  private:
    void Live(HWND like, int rows, HANDLE ready);
    static LRESULT CALLBACK FrameProcedure(HWND window, UINT message, WPARAM w, LPARAM l);

    HWND list_ = nullptr;
    HWND edit_ = nullptr;
    std::thread thread_;
};

constexpr const wchar_t* kFrameClass = L"BareListFrame";

BareList::BareList(HWND like, int rows) {
    const HANDLE ready = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    thread_ = std::thread([=, this] { Live(like, rows, ready); });
    WaitForSingleObject(ready, INFINITE);
    CloseHandle(ready);
}

BareList::~BareList() {
    PostMessageW(GetAncestor(list_, GA_ROOT), WM_CLOSE, 0, 0);
    thread_.join();
}

LRESULT CALLBACK BareList::FrameProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    if (message == WM_NOTIFY) {
        auto& header = *reinterpret_cast<NMHDR*>(l);
        if (header.code == LVN_GETDISPINFOW) {
            static std::wstring text;
            LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(header).item;
            if ((item.mask & LVIF_TEXT) != 0) {
                text = L"Part " + std::to_wstring(item.iItem);
                item.pszText = text.data();
            }
            if ((item.mask & LVIF_STATE) != 0) {
                item.state = INDEXTOSTATEIMAGEMASK(1);
            }
            return 0;
        }
        if (header.code == LVN_ODFINDITEMW) {
            return SendMessageW(header.hwndFrom, LVM_GETITEMCOUNT, 0, 0) - 1;
        }
    }
    return DefWindowProcW(window, message, w, l);
}

void BareList::Live(HWND like, int rows, HANDLE ready) {
    UseControlsOf(Environment("DORVAK_EXE"));
    WNDCLASSEXW window_class{};
    window_class.cbSize = sizeof window_class;
    window_class.lpfnWndProc = FrameProcedure;
    window_class.hInstance = GetModuleHandleW(nullptr);
    window_class.lpszClassName = kFrameClass;
    RegisterClassExW(&window_class);
    const RECT place = Place(like);
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    const HWND frame =
        CreateWindowExW(WS_EX_TOPMOST, kFrameClass, L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20,
                        width + 20, height + 80, nullptr, nullptr, window_class.hInstance, nullptr);
    list_ = CreateWindowExW(static_cast<DWORD>(GetWindowLongPtrW(like, GWL_EXSTYLE)), WC_LISTVIEWW,
                            L"", static_cast<DWORD>(GetWindowLongPtrW(like, GWL_STYLE)), 0, 0,
                            width, height, frame, nullptr, window_class.hInstance, nullptr);
    edit_ = CreateWindowExW(0, WC_EDITW, L"", WS_CHILD, 0, 0, 10, 10, frame, nullptr,
                            window_class.hInstance, nullptr);
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    const HFONT font = CreateFontIndirectW(&metrics.lfMessageFont);
    SendMessageW(list_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, Send(like, LVM_GETEXTENDEDLISTVIEWSTYLE));
    SendMessageW(list_, LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK, 0);
    for (int column = 0; column < 7; ++column) {
        LVCOLUMNW made{};
        made.mask = LVCF_WIDTH | LVCF_SUBITEM;
        made.cx = static_cast<int>(Send(like, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
        made.iSubItem = column;
        SendMessageW(list_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&made));
    }
    SendMessageW(list_, LVM_SETITEMCOUNT, static_cast<WPARAM>(rows), 0);
    SetEvent(ready);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        // What a list view does not do by itself.
        if (message.message == WM_KEYDOWN && message.wParam == 'A' && GetKeyState(VK_CONTROL) < 0) {
            LVITEMW all{};
            all.state = LVIS_SELECTED;
            all.stateMask = LVIS_SELECTED;
            SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(-1),
                         reinterpret_cast<LPARAM>(&all));
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    DeleteObject(font);
}

constexpr std::array kGestures{"click",        "Ctrl+A",    "click where all were selected",
                               "typing ahead", "page down", "nothing: what measuring itself takes"};
using GestureTimes = std::array<std::vector<double>, kGestures.size()>;

constexpr Milliseconds kGesturePatience{180000};

LRESULT SelectedCount(HWND list) {
    return Send(list, LVM_GETSELECTEDCOUNT, 0, 0, kGesturePatience);
}

// From the input to the moment where its consequence shows and nothing is left to do or to paint.
double GestureTime(HWND list, HWND edit, const std::string& what,
                   const std::function<void()>& input, const std::function<bool()>& happened) {
    WaitUntilDone(GetAncestor(list, GA_ROOT), edit);
    const Clock::time_point start = Clock::now();
    input();
    WaitTightly(
        what,
        [&] {
            Send(list, WM_NULL, 0, 0, kGesturePatience); // a busy thread answers late
            return happened();
        },
        kGesturePatience);
    WaitUntilDone(GetAncestor(list, GA_ROOT), edit);
    return MillisecondsSince(start);
}

double ClickTime(HWND list, HWND edit, int row) {
    const POINT point = RowPoint(list, row);
    MoveMouse(list, point);
    return GestureTime(
        list, edit, "the clicked row in " + ClassName(GetAncestor(list, GA_ROOT)),
        [&] { PressMouse(list, point); },
        [&] { return SelectedCount(list) == 1 && FocusedRow(list) == row; });
}

GestureTimes MeasureGestures(HWND list, HWND edit, int rows, int runs) {
    GestureTimes times;
    const auto key = [&](WORD pressed, const std::function<bool()>& happened) {
        return GestureTime(
            list, edit, "what key " + std::to_string(pressed) + " does",
            [&] { PressKeys({pressed}); }, happened);
    };
    const auto home = [&] { key(VK_HOME, [&] { return FocusedRow(list) == 0; }); };
    BringToFront(list);
    ClickTime(list, edit, 2); // the focus
    for (int run = 0; run < runs; ++run) {
        // Not a double click.
        std::this_thread::sleep_for(Milliseconds(GetDoubleClickTime() + 50));
        times[0].push_back(ClickTime(list, edit, 4));
        times[1].push_back(GestureTime(
            list, edit, "all rows selected",
            [] {
                PressKeys({VK_CONTROL, 'A'});
            },
            [&] { return SelectedCount(list) == rows; }));
        times[2].push_back(ClickTime(list, edit, 6));
        times[3].push_back(key('Z', [&] { return FocusedRow(list) == rows - 1; }));
        home();
        // The first one goes to the end of the page in sight.
        key(VK_NEXT, [&] { return FocusedRow(list) > 0; });
        const int before = FocusedRow(list);
        times[4].push_back(key(VK_NEXT, [&] { return FocusedRow(list) > before; }));
        home();
        times[5].push_back(GestureTime(
            list, edit, "nothing", [] {}, [] { return true; }));
    }
    return times;
}

void MeasureList(int rows, int runs) {
    auto folder = std::make_shared<ProgramFolder>();
    const std::string written = WriteTemporary("list.txt", ListFile(MakeParts(rows)));
    std::filesystem::copy_file(written, folder->Path("list.txt"));
    auto dorvak = std::make_unique<DorvakWindow>(folder, kEditPage);
    const HWND list = (*dorvak)[ID_ListView1];
    WaitTightly("the list", [&] { return RowCount(list) == rows; });
    const GestureTimes times = MeasureGestures(list, (*dorvak)[ID_Text7], rows, runs);
    const BareList bare(list, rows);
    dorvak.reset(); // which stands above all others
    BringToFront(bare.List());
    const GestureTimes bare_times = MeasureGestures(bare.List(), bare.Edit(), rows, runs);

    PrintHeadings(
        {"list of " + std::to_string(rows) + " rows", "Dorvak", "bare control", "our own share"});
    for (std::size_t i = 0; i < kGestures.size(); ++i) {
        const Spread ours = SpreadOf(times.at(i));
        const Spread control = SpreadOf(bare_times.at(i));
        PrintRow(
            {kGestures.at(i), Shown(ours), Shown(control), Shown(ours.median - control.median)});
    }
}

// Preview -----------------------------------------------------------------------------------------

// The program with so many parts, and its preview beside it.
class OpenedPreview {
  public:
    explicit OpenedPreview(int rows);

    [[nodiscard]] const DorvakWindow& Dorvak() const { return dorvak_; }
    [[nodiscard]] HWND Canvas() const { return Control(preview_, ID_Preview_Canvas); }
    [[nodiscard]] std::string Summary() const {
        return Text(Control(preview_, ID_Preview_Summary));
    }
    [[nodiscard]] std::vector<std::string> Hints() const {
        return ListBoxItems(Control(preview_, ID_Preview_Hints));
    }
    // From the input to the painted preview, whose line or hints say something else then.
    [[nodiscard]] double TimeOf(const std::string& what, const std::function<void()>& input) const;
    void ZoomToTheRealSize() const;

  private:
    // And no preview that an earlier run has left open.
    static std::shared_ptr<ProgramFolder> FolderWithParts(int rows);

    DorvakWindow dorvak_;
    HWND preview_;
};

OpenedPreview::OpenedPreview(int rows) : dorvak_(FolderWithParts(rows), kExportPage) {
    SetWindowPos(dorvak_.Window(), nullptr, 0, 40, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    WaitTightly("the list", [&] { return RowCount(dorvak_[ID_ListView1]) == rows; });
    dorvak_.Press(ID_Command36);
    preview_ = dorvak_.Process().WaitForWindow("DorvakNahled");
}

std::shared_ptr<ProgramFolder> OpenedPreview::FolderWithParts(int rows) {
    auto folder = std::make_shared<ProgramFolder>();
    const std::string written = WriteTemporary("list.txt", ListFile(MakeParts(rows)));
    std::filesystem::copy_file(written, folder->Path("list.txt"));
    SettingKeeper::Write({}, kPreviewOpen);
    SettingKeeper::Write({}, kPreviewPlace);
    return folder;
}

double OpenedPreview::TimeOf(const std::string& what, const std::function<void()>& input) const {
    const std::string summary = Summary();
    const std::vector<std::string> hints = Hints();
    WaitUntilDone(dorvak_.Window(), dorvak_[ID_Text7]);
    return GestureTime(Canvas(), dorvak_[ID_Text7], "the preview after " + what, input,
                       [&] { return Summary() != summary || Hints() != hints; });
}

void OpenedPreview::ZoomToTheRealSize() const {
    constexpr int kSteps = 60;
    Send(Canvas(), WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, kSteps * WHEEL_DELTA), 0, kLong);
    if ((GetWindowLongPtrW(Canvas(), GWL_STYLE) & WS_VSCROLL) == 0) {
        throw std::runtime_error("the preview shows the whole table in its real size");
    }
}

constexpr std::array kPreviewChanges{
    "a letter that makes the rows higher, the whole table in sight",
    "the same in the table's real size",
    "a letter that changes a hint, in the real size",
    "a row of the list deleted, in the real size",
    "nothing: what measuring itself takes",
};
using PreviewTimes = std::array<std::vector<double>, kPreviewChanges.size()>;

PreviewTimes MeasurePreviewOf(int rows, int runs) {
    PreviewTimes times;
    const OpenedPreview preview(rows);
    const DorvakWindow& dorvak = preview.Dorvak();
    const auto press = [&](const std::vector<WORD>& keys) {
        return preview.TimeOf("key " + std::to_string(keys.back()), [&] { PressKeys(keys); });
    };
    const auto type_letters = [&](WORD letter, std::vector<double>& into) {
        for (int run = 0; run < runs; ++run) {
            into.push_back(press({letter}));
            press({VK_BACK});
        }
    };
    Click(dorvak[ID_Text2]);
    PressKey(VK_END, {VK_CONTROL});
    TypeText("\r/vyska2;7.3");
    WaitForText("the configuration", "/vyska2;7.3", [&] {
        const std::string text = Text(dorvak[ID_Text2]);
        return text.substr(text.rfind('/'));
    });
    type_letters('5', times[0]);
    preview.ZoomToTheRealSize();
    type_letters('5', times[1]);
    TypeText("\r/vyska2");
    type_letters('X', times[2]);

    dorvak.OpenPage(kEditPage);
    Click(dorvak[ID_ListView1], RowPoint(dorvak[ID_ListView1], 3));
    for (int run = 0; run < runs; ++run) {
        times[3].push_back(press({VK_DELETE}));
        press({VK_CONTROL, 'Z'});
        times[4].push_back(GestureTime(
            preview.Canvas(), dorvak[ID_Text7], "nothing", [] {},
            [&] { return !preview.Summary().empty(); }));
    }
    return times;
}

// Trees -------------------------------------------------------------------------------------------

// The structure text of a top product with so many assemblies of ten parts each.
std::string StructureText(int assemblies) {
    std::string text = "0\tTop";
    for (int assembly = 1; assembly <= assemblies; ++assembly) {
        const std::string name = "Assembly " + std::to_string(assembly);
        const std::string path = "Top|||||" + name + "*" + std::to_string(assembly) + "*";
        text.append("\r\n1\t").append(name).append("\tTop\t").append(path);
        for (int part = 0; part < 10; ++part) {
            text += "\r\n2\tPart " + std::to_string((assembly * 10 + part) % 2000) + "\t" + path;
        }
    }
    return text;
}

// Piece by piece: a message to another process carries no text of several megabytes.
void PutText(HWND edit, const std::wstring& text) {
    constexpr std::size_t kPiece = 200'000;
    Send(edit, EM_SETSEL, 0, -1, kLong);
    for (std::size_t at = 0; at < text.size(); at += kPiece) {
        const std::wstring piece = text.substr(at, kPiece);
        Send(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(piece.c_str()), kLong);
    }
}

void MeasureTree(int assemblies, int runs) {
    const int nodes = 1 + assemblies * 11;
    const DorvakWindow dorvak;
    const HWND tree = dorvak[ID_TreeView1];
    const HWND edit = dorvak[ID_Text7];
    const double memory_before = WorkingSet(dorvak.Process());
    PutText(dorvak[ID_Text1], com::Widen(StructureText(assemblies)));
    WaitUntilDone(dorvak.Window(), edit);

    std::vector<double> shown;
    for (int run = 0; run < runs; ++run) {
        const Clock::time_point start = Clock::now();
        Press(dorvak, ID_Command5);
        WaitUntilDone(dorvak.Window(), edit);
        shown.push_back(MillisecondsSince(start));
        if (Send(tree, TVM_GETCOUNT, 0, 0, kLong) != nodes) {
            throw std::runtime_error("the tree has other nodes than its text");
        }
    }
    auto* const root = reinterpret_cast<HTREEITEM>(Send(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0));
    const POINT check_box = TreeCheckPoint(tree, root);
    BringToFront(tree);
    MoveMouse(tree, check_box);
    std::vector<double> unchecked;
    for (int run = 0; run < 2 * runs; ++run) {
        const UINT expected = INDEXTOSTATEIMAGEMASK(run % 2 == 0 ? 1 : 2);
        const double time = GestureTime(
            tree, edit, "the root's check box", [&] { PressMouse(tree, check_box); },
            [&] {
                return (static_cast<UINT>(Send(tree, TVM_GETITEMSTATE,
                                               reinterpret_cast<WPARAM>(root),
                                               TVIS_STATEIMAGEMASK)) &
                        TVIS_STATEIMAGEMASK) == expected;
            });
        if (run % 2 == 0) {
            unchecked.push_back(time);
        }
        std::this_thread::sleep_for(Milliseconds(GetDoubleClickTime() + 50));
    }
    PrintHeadings({"tree of " + std::to_string(nodes) + " nodes", ""});
    PrintRow({"shown from the structure text", Shown(SpreadOf(shown))});
    PrintRow({"root unchecked", Shown(SpreadOf(unchecked))});
    PrintRow({"working set before and after",
              std::to_string(static_cast<int>(memory_before)) + " MB, " +
                  std::to_string(static_cast<int>(WorkingSet(dorvak.Process()))) + " MB"});
}

} // namespace

void StartOfTheProgram(const Options& options) {
    const ProgramFolder folder;
    const std::string program = folder.Path("Dorvak.exe");
    StartTime(program, "DorvakForm1");
    StartTime("notepad.exe", "Notepad");
    std::vector<double> dorvak;
    std::vector<double> notepad;
    for (int i = 0; i < options.pairs; ++i) {
        dorvak.push_back(StartTime(program, "DorvakForm1"));
        notepad.push_back(StartTime("notepad.exe", "Notepad"));
    }
    PrintHeadings({"start to a painted, usable window", ""});
    PrintRow({"Dorvak", Shown(SpreadOf(dorvak))});
    PrintRow({"notepad", Shown(SpreadOf(notepad))});
    PrintRow({"ratio", Ratio(SpreadOf(dorvak).median, SpreadOf(notepad).median)});
}

void Lists(const Options& options) {
    MeasureList(2'000, options.pairs);
    MeasureList(100'000, std::min(options.pairs, 3));
}

void Preview(const Options& options) {
    const PreviewTimes few = MeasurePreviewOf(500, options.pairs);
    const PreviewTimes many = MeasurePreviewOf(10'000, options.pairs);
    PrintHeadings({"to the painted preview", "500 rows", "10,000 rows"});
    for (std::size_t i = 0; i < kPreviewChanges.size(); ++i) {
        PrintRow({kPreviewChanges.at(i), Shown(SpreadOf(few.at(i))), Shown(SpreadOf(many.at(i)))});
    }
}

void Trees(const Options& options) {
    MeasureTree(1818, std::min(options.pairs, 3));
    MeasureTree(9091, 1);
}

} // namespace measuring
