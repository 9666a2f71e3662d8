#include "win32/preview_canvas.hpp"

#include <windowsx.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "com/utf.hpp"
#include "platform/screen.hpp"
#include "win32/system_colours.hpp"

namespace win32 {

namespace {

constexpr const wchar_t* kCanvasClass = L"DorvakNahledPlocha";

constexpr double kMillimetresOfAnInch = 25.4;
constexpr double kHeightOfLetters = 0.72; // of a font's height
constexpr double kTextMargin = 0.5;       // millimetres
constexpr double kZoomStep = 1.25;
constexpr int kMargin = 26;        // design pixels around the table
constexpr int kAnchorRadius = 4;   // design pixels
constexpr int kLineScroll = 24;    // design pixels
constexpr double kLegible = 4;     // pixels of letters that can be read
constexpr double kDensestRows = 3; // pixels from one drawn row to the next

// Windows' bars count in integers.
constexpr double kLongestBar = 1e6;
// And so do its pixels; far enough outside every window.
constexpr double kFarPixel = 30'000;

constexpr COLORREF kTooLargeTint = RGB(0xff, 0xd6, 0xd0);
constexpr COLORREF kTooLargeText = RGB(0, 0, 0);

// A drawing object chosen into a device context for as long as it lives.
class ChosenObject {
  public:
    ChosenObject(HDC dc, HGDIOBJ object) : dc_(dc), before_(SelectObject(dc, object)) {}
    ~ChosenObject() { SelectObject(dc_, before_); }
    ChosenObject(const ChosenObject&) = delete;
    ChosenObject& operator=(const ChosenObject&) = delete;

  private:
    HDC dc_;
    HGDIOBJ before_;
};

int Pixel(double place) {
    return static_cast<int>(std::lround(std::clamp(place, -kFarPixel, kFarPixel)));
}

void FillWith(HDC dc, const RECT& area, COLORREF colour) {
    SetDCBrushColor(dc, colour);
    FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

PreviewCanvas* CanvasOf(HWND window) {
    return reinterpret_cast<PreviewCanvas*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

// A line thickness as CATIA draws it, in millimetres.
double ThicknessOf(int line_thickness) {
    constexpr std::array kThicknesses{0.13, 0.35, 0.7, 1.0, 1.4, 2.0, 2.6};
    const auto index = static_cast<std::size_t>(std::max(line_thickness - 1, 0));
    return kThicknesses.at(std::min(index, kThicknesses.size() - 1));
}

// The lines of a text, however they are broken.
std::vector<std::wstring> LinesOfText(const std::string& text) {
    std::vector<std::wstring> lines(1);
    wchar_t before = 0;
    for (const wchar_t c : com::Widen(text)) {
        if (c == L'\r' || (c == L'\n' && before != L'\r')) {
            lines.emplace_back();
        } else if (c != L'\n') {
            lines.back() += c;
        }
        before = c;
    }
    return lines;
}

com::Owned<HFONT> FontOf(const std::string& face, int height) {
    return com::Owned<HFONT>(CreateFontW(-height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                                         DEFAULT_CHARSET, OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS,
                                         CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_SWISS,
                                         com::Widen(face).substr(0, LF_FACESIZE - 1).c_str()));
}

} // namespace

PreviewCanvas::PreviewCanvas(HWND parent, int id) {
    static const ATOM kRegistered = [] {
        WNDCLASSEXW window_class{};
        window_class.cbSize = sizeof window_class;
        window_class.style = CS_HREDRAW | CS_VREDRAW;
        window_class.lpfnWndProc = WindowProcedure;
        window_class.hInstance = GetModuleHandleW(nullptr);
        window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        window_class.lpszClassName = kCanvasClass;
        return RegisterClassExW(&window_class);
    }();
    static_cast<void>(kRegistered);
    window_ = CreateWindowExW(WS_EX_CLIENTEDGE, kCanvasClass, L"Náhled tabulky",
                              WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_HSCROLL | WS_VSCROLL, 0, 0, 0,
                              0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                              GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

PreviewCanvas::~PreviewCanvas() {
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
}

void PreviewCanvas::Show(tables::TableLayout layout) {
    layout_ = std::move(layout);
    Arrange();
    InvalidateRect(window_, nullptr, FALSE);
    UpdateWindow(window_);
}

void PreviewCanvas::SetDpi(UINT monitor_dpi, UINT layout_dpi, HFONT font) {
    if (zoom_) {
        *zoom_ *= static_cast<double>(monitor_dpi) / monitor_dpi_;
    }
    monitor_dpi_ = monitor_dpi;
    layout_dpi_ = layout_dpi;
    note_font_ = font;
    Arrange();
    InvalidateRect(window_, nullptr, FALSE);
}

LRESULT CALLBACK PreviewCanvas::WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (PreviewCanvas* self = CanvasOf(window)) {
        if (const auto result = self->OnMessage(message, w, l)) {
            return *result;
        }
    }
    return DefWindowProcW(window, message, w, l);
}

std::optional<LRESULT> PreviewCanvas::OnMessage(UINT message, WPARAM w, LPARAM l) {
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_SIZE:
        Arrange();
        return 0;
    case WM_VSCROLL:
        OnScroll(SB_VERT, LOWORD(w));
        return 0;
    case WM_HSCROLL:
        OnScroll(SB_HORZ, LOWORD(w));
        return 0;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL: {
        POINT at{GET_X_LPARAM(l), GET_Y_LPARAM(l)};
        ScreenToClient(window_, &at);
        const bool sideways = message == WM_MOUSEHWHEEL;
        OnWheel(sideways ? -GET_WHEEL_DELTA_WPARAM(w) : GET_WHEEL_DELTA_WPARAM(w),
                (GET_KEYSTATE_WPARAM(w) & MK_CONTROL) != 0,
                sideways || (GET_KEYSTATE_WPARAM(w) & MK_SHIFT) != 0, at);
        return 0;
    }
    case WM_KEYDOWN:
        return OnKey(w) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_LBUTTONDOWN:
        SetFocus(window_);
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        InvalidateRect(window_, nullptr, FALSE);
        return 0;
    default:
        return std::nullopt;
    }
}

SIZE PreviewCanvas::Client() const {
    RECT client;
    GetClientRect(window_, &client);
    return {client.right, client.bottom};
}

double PreviewCanvas::Margin() const {
    return platform::Scaled(kMargin, layout_dpi_);
}

double PreviewCanvas::RealScale() const {
    return monitor_dpi_ / kMillimetresOfAnInch;
}

// The whole table, but never larger than it is. Without the bars, which it does not need.
double PreviewCanvas::WholeScale() const {
    RECT window;
    GetWindowRect(window_, &window);
    const int edges = 2 * GetSystemMetrics(SM_CXEDGE);
    const double wide = std::max(window.right - window.left - edges - 2 * Margin(), 1.0);
    const double high = std::max(window.bottom - window.top - edges - 2 * Margin(), 1.0);
    double scale = RealScale();
    if (layout_.width > 0) {
        scale = std::min(scale, wide / layout_.width);
    }
    if (layout_.height > 0) {
        scale = std::min(scale, high / layout_.height);
    }
    return scale;
}

int PreviewCanvas::X(double millimetres) const {
    return Pixel(origin_x_ + millimetres * scale_);
}

int PreviewCanvas::Y(double millimetres) const {
    return Pixel(origin_y_ + millimetres * scale_);
}

// Scale, bars and where the table stands, after any of what they depend on has changed.
void PreviewCanvas::Arrange() {
    if (layout_.rows == 0) { // half a number is typed: the next table stands as the last one did
        SetBar(SB_HORZ, 0, 0, 0);
        SetBar(SB_VERT, 0, 0, 0);
        return;
    }
    const double whole = WholeScale();
    if (zoom_ && *zoom_ <= whole) {
        zoom_.reset();
    }
    scale_ = zoom_ ? std::min(*zoom_, RealScale()) : whole;
    MakeFonts();
    const double wide = zoom_ ? layout_.width * scale_ + 2 * Margin() : 0;
    const double high = zoom_ ? layout_.height * scale_ + 2 * Margin() : 0;
    // A bar that comes takes room, so that the other one may have to come.
    for (int i = 0; i < 2; ++i) {
        const SIZE client = Client();
        scroll_x_ = std::clamp(scroll_x_, 0.0, std::max(wide - client.cx, 0.0));
        scroll_y_ = std::clamp(scroll_y_, 0.0, std::max(high - client.cy, 0.0));
        SetBar(SB_HORZ, wide, client.cx, scroll_x_);
        SetBar(SB_VERT, high, client.cy, scroll_y_);
    }
    const SIZE client = Client();
    const double room_x = client.cx - layout_.width * scale_ - 2 * Margin();
    origin_x_ = Margin() + std::max(room_x, 0.0) / 2 - scroll_x_;
    origin_y_ = Margin() - scroll_y_;
}

void PreviewCanvas::SetBar(int bar, double extent, double page, double at) const {
    const double unit = std::max(extent / kLongestBar, 1.0);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = std::max(static_cast<int>(extent / unit) - 1, 0);
    info.nPage = extent <= page ? static_cast<UINT>(info.nMax) + 1
                                : static_cast<UINT>(std::max(page / unit, 1.0));
    info.nPos = static_cast<int>(at / unit);
    SetScrollInfo(window_, bar, &info, TRUE);
}

void PreviewCanvas::ScrollBy(double right, double down) {
    if (layout_.rows == 0) {
        return;
    }
    const double x = scroll_x_;
    const double y = scroll_y_;
    scroll_x_ += right;
    scroll_y_ += down;
    Arrange();
    if (scroll_x_ != x || scroll_y_ != y) {
        InvalidateRect(window_, nullptr, FALSE);
        UpdateWindow(window_);
    }
}

void PreviewCanvas::OnScroll(int bar, int request) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(window_, bar, &info);
    const bool down = bar == SB_VERT;
    const SIZE client = Client();
    const double page = down ? client.cy : client.cx;
    const double line = platform::Scaled(kLineScroll, layout_dpi_);
    const double extent = (down ? layout_.height : layout_.width) * scale_ + 2 * Margin();
    const double unit = std::max(extent / kLongestBar, 1.0);
    const double at = down ? scroll_y_ : scroll_x_;
    double by = 0;
    switch (request) {
    case SB_LINEUP:
        by = -line;
        break;
    case SB_LINEDOWN:
        by = line;
        break;
    case SB_PAGEUP:
        by = -page;
        break;
    case SB_PAGEDOWN:
        by = page;
        break;
    case SB_TOP:
        by = -extent;
        break;
    case SB_BOTTOM:
        by = extent;
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        by = info.nTrackPos * unit - at;
        break;
    default:
        return;
    }
    ScrollBy(down ? 0 : by, down ? by : 0);
}

void PreviewCanvas::OnWheel(int delta, bool with_control, bool sideways, POINT at) {
    if (with_control) {
        wheel_rest_ += delta;
        for (; wheel_rest_ >= WHEEL_DELTA; wheel_rest_ -= WHEEL_DELTA) {
            Zoom(kZoomStep, at);
        }
        for (; wheel_rest_ <= -WHEEL_DELTA; wheel_rest_ += WHEEL_DELTA) {
            Zoom(1 / kZoomStep, at);
        }
        return;
    }
    constexpr double kLines = 3;
    const double by = -static_cast<double>(delta) / WHEEL_DELTA * kLines *
                      platform::Scaled(kLineScroll, layout_dpi_);
    ScrollBy(sideways ? by : 0, sideways ? 0 : by);
}

// What stands under `about` stays there.
void PreviewCanvas::Zoom(double factor, POINT about) {
    if (layout_.rows == 0) {
        return;
    }
    const double x = (about.x - origin_x_) / scale_;
    const double y = (about.y - origin_y_) / scale_;
    const double before = scale_;
    zoom_ = std::min(scale_ * factor, RealScale());
    Arrange();
    if (scale_ == before) {
        return;
    }
    scroll_x_ += origin_x_ + x * scale_ - about.x;
    scroll_y_ += origin_y_ + y * scale_ - about.y;
    Arrange();
    InvalidateRect(window_, nullptr, FALSE);
    UpdateWindow(window_);
}

bool PreviewCanvas::OnKey(WPARAM key) {
    const bool control = GetKeyState(VK_CONTROL) < 0;
    const SIZE client = Client();
    const POINT middle{client.cx / 2, client.cy / 2};
    const double line = platform::Scaled(kLineScroll, layout_dpi_);
    const double far_away = (layout_.width + layout_.height) * scale_ + 4 * Margin();
    switch (key) {
    case VK_UP:
        ScrollBy(0, -line);
        return true;
    case VK_DOWN:
        ScrollBy(0, line);
        return true;
    case VK_LEFT:
        ScrollBy(-line, 0);
        return true;
    case VK_RIGHT:
        ScrollBy(line, 0);
        return true;
    case VK_PRIOR:
        ScrollBy(0, -client.cy);
        return true;
    case VK_NEXT:
        ScrollBy(0, client.cy);
        return true;
    case VK_HOME:
        ScrollBy(-far_away, control ? -far_away : 0);
        return true;
    case VK_END:
        ScrollBy(control ? 0 : far_away, control ? far_away : 0);
        return true;
    case VK_ADD:
    case VK_OEM_PLUS:
        Zoom(kZoomStep, middle);
        return true;
    case VK_SUBTRACT:
    case VK_OEM_MINUS:
        Zoom(1 / kZoomStep, middle);
        return true;
    default:
        return false;
    }
}

void PreviewCanvas::MakeFonts() {
    Fonts fonts{.face = layout_.font_face,
                .header = layout_.header_font_size,
                .body = layout_.body_font_size,
                .scale = scale_};
    if (fonts != fonts_) {
        fonts_ = std::move(fonts);
        header_font_ = FontOfSize(layout_.header_font_size);
        body_font_ = FontOfSize(layout_.body_font_size);
    }
}

com::Owned<HFONT> PreviewCanvas::FontOfSize(double size) const {
    constexpr double kMost = 2000; // pixels
    return FontOf(layout_.font_face,
                  Pixel(std::clamp(size / kHeightOfLetters * scale_, 1.0, kMost)));
}

void PreviewCanvas::Paint() {
    PAINTSTRUCT paint;
    const HDC screen = BeginPaint(window_, &paint);
    const SIZE client = Client();
    const HDC dc = CreateCompatibleDC(screen);
    const com::Owned<HBITMAP> bitmap(
        CreateCompatibleBitmap(screen, std::max<int>(client.cx, 1), std::max<int>(client.cy, 1)));
    {
        const ChosenObject chosen(dc, bitmap.get());
        const RECT all{0, 0, client.cx, client.cy};
        FillWith(dc, all, GetSysColor(COLOR_WINDOW));
        SetBkMode(dc, TRANSPARENT);
        if (layout_.rows > 0) {
            PaintTable(dc, all);
            PaintAnchor(dc);
        } else {
            PaintNote(dc, all);
        }
        if (GetFocus() == window_) {
            SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
            DrawFocusRect(dc, &all);
        }
        BitBlt(screen, 0, 0, client.cx, client.cy, dc, 0, 0, SRCCOPY);
    }
    DeleteDC(dc);
    EndPaint(window_, &paint);
}

// Rows that stand closer than the eye can tell apart are drawn only now and then.
void PreviewCanvas::PaintTable(HDC dc, const RECT& area) const {
    const auto height_at = [this](int y) { return (y - origin_y_) / scale_; };
    const int first = tables::RowAtHeight(layout_, height_at(area.top));
    const int last = tables::RowAtHeight(layout_, height_at(area.bottom));
    const double row_pixels = std::max(layout_.row_height * scale_, 1e-9);
    const int step = static_cast<int>(
        std::clamp(std::ceil(kDensestRows / row_pixels), 1.0, std::max(1.0 * layout_.rows, 1.0)));

    const int pen_width = std::max(Pixel(ThicknessOf(layout_.line_thickness) * scale_), 1);
    const HPEN pen = CreatePen(PS_SOLID, pen_width, GetSysColor(COLOR_WINDOWTEXT));
    {
        const ChosenObject chosen(dc, pen);
        const auto line = [&](int y) {
            MoveToEx(dc, X(0), y, nullptr);
            LineTo(dc, X(layout_.width) + 1, y);
        };
        for (long long row = first; row <= last; row += step) {
            PaintRow(dc, static_cast<int>(row), step == 1 || row == 1);
            line(Y(tables::RowTop(layout_, static_cast<int>(row))));
        }
        line(Y(layout_.height));
        double x = 0;
        for (std::size_t edge = 0; edge <= layout_.column_widths.size(); ++edge) {
            MoveToEx(dc, X(x), Y(0), nullptr);
            LineTo(dc, X(x), Y(layout_.height) + 1);
            x += edge < layout_.column_widths.size() ? layout_.column_widths.at(edge) : 0;
        }
    }
    DeleteObject(pen);
}

void PreviewCanvas::PaintRow(HDC dc, int row, bool with_texts) const {
    const RECT in_row{X(0), Y(tables::RowTop(layout_, row)), X(layout_.width),
                      Y(tables::RowTop(layout_, row + 1))};
    if (RectVisible(dc, &in_row) == FALSE) {
        return;
    }
    for (int column = 1; column <= tables::kColumns; ++column) {
        const tables::LaidOutCell cell = tables::CellAt(layout_, row, column);
        if (cell.text.empty()) {
            continue;
        }
        const RECT box{X(cell.box.left), Y(cell.box.top), X(cell.box.right), Y(cell.box.bottom)};
        SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
        if (!cell.fits) {
            const bool plain = IsHighContrast();
            FillWith(dc, box, plain ? GetSysColor(COLOR_HIGHLIGHT) : kTooLargeTint);
            SetTextColor(dc, plain ? GetSysColor(COLOR_HIGHLIGHTTEXT) : kTooLargeText);
        }
        if (with_texts) {
            const ChosenObject font(dc, row == 1 ? header_font_.get() : body_font_.get());
            PaintText(dc, cell, box);
        }
    }
}

// Letters too small to be read are a grey bar; on the ground of a text that does not fit it has
// that text's colour.
void PreviewCanvas::PaintText(HDC dc, const tables::LaidOutCell& cell, const RECT& box) const {
    const int left = box.left + std::max(Pixel(kTextMargin * scale_), 1);
    const double letters = cell.font_size * scale_;
    const double middle = (box.top + box.bottom) / 2.0;
    if (letters < kLegible) {
        const double wide = tables::TextWidth(cell.text, *layout_.character_widths) * letters;
        const RECT bar{left, Pixel(middle - letters / 2),
                       std::min<LONG>(Pixel(left + wide), box.right - 1),
                       std::max(Pixel(middle + letters / 2), Pixel(middle - letters / 2) + 1)};
        FillWith(dc, bar, cell.fits ? GetSysColor(COLOR_GRAYTEXT) : GetTextColor(dc));
        return;
    }
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    const auto lines = LinesOfText(cell.text);
    const double pitch = (tables::LinesHeight(2) - tables::LinesHeight(1)) * letters;
    double y = middle - pitch * static_cast<double>(lines.size() - 1) / 2 - metrics.tmHeight / 2.0;
    for (const std::wstring& line : lines) {
        ExtTextOutW(dc, left, Pixel(y), ETO_CLIPPED, &box, line.c_str(),
                    static_cast<UINT>(line.size()), nullptr);
        y += pitch;
    }
}

void PreviewCanvas::PaintAnchor(HDC dc) const {
    constexpr int kInAColumn = 3;
    const int across = layout_.anchor_point / kInAColumn;
    const int x = X(layout_.width * across / 2);
    const int down = layout_.anchor_point % kInAColumn;
    const int y = Y(layout_.height * down / 2);
    const int radius = platform::Scaled(kAnchorRadius, layout_dpi_);
    const HPEN ring =
        CreatePen(PS_SOLID, platform::Scaled(2, layout_dpi_), GetSysColor(COLOR_HIGHLIGHT));
    {
        const ChosenObject pen(dc, ring);
        const ChosenObject brush(dc, GetStockObject(NULL_BRUSH));
        Ellipse(dc, x - radius, y - radius, x + radius + 1, y + radius + 1);
    }
    DeleteObject(ring);

    const std::wstring note = com::Widen(tables::PositionText(layout_));
    const ChosenObject font(dc, note_font_);
    SIZE size{};
    GetTextExtentPoint32W(dc, note.c_str(), static_cast<int>(note.size()), &size);
    const SIZE client = Client();
    if (x < 0 || y < 0 || x >= client.cx || y >= client.cy) {
        return; // the note would speak of a place that is not in sight
    }
    const int gap = radius + 2;
    RECT box{};
    box.left = std::clamp<LONG>(x - size.cx / 2, 2, std::max<LONG>(client.cx - size.cx - 2, 2));
    box.top = down == 2 ? y + gap : y - gap - size.cy;
    box.right = box.left + size.cx;
    box.bottom = box.top + size.cy;
    FillWith(dc, box, GetSysColor(COLOR_WINDOW));
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    ExtTextOutW(dc, box.left, box.top, 0, nullptr, note.c_str(), static_cast<UINT>(note.size()),
                nullptr);
}

void PreviewCanvas::PaintNote(HDC dc, const RECT& area) const {
    RECT box = area;
    InflateRect(&box, -Pixel(Margin()), -Pixel(Margin()));
    const ChosenObject font(dc, note_font_);
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    DrawTextW(dc, com::Widen(layout_.trouble).c_str(), -1, &box,
              DT_WORDBREAK | DT_CENTER | DT_NOPREFIX);
}

tables::CharacterWidths ReadCharacterWidths(const std::string& face) {
    constexpr int kHeight = 1000;
    constexpr UINT kLast = 0x24F; // Latin letters, those of Czech among them
    constexpr UINT kFirst = 0x20;
    std::array<INT, kLast + 1> pixels{};
    const HDC screen = GetDC(nullptr);
    const HDC dc = CreateCompatibleDC(screen);
    const com::Owned<HFONT> font = FontOf(face, kHeight);
    {
        const ChosenObject chosen(dc, font.get());
        GetCharWidth32W(dc, kFirst, kLast, &pixels[kFirst]);
    }
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    constexpr auto kLetters = static_cast<float>(kHeightOfLetters * kHeight);
    tables::CharacterWidths widths;
    widths.widths.reserve(pixels.size());
    for (const INT width : pixels) {
        widths.widths.push_back(static_cast<float>(width) / kLetters);
    }
    widths.other = kHeight / kLetters; // signs are mostly as wide as the font is high
    return widths;
}

} // namespace win32
