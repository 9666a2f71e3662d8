#include "win32/refresh.hpp"

namespace win32 {

namespace {

// How often messages that follow one another and the amount of work done come to the screen.
constexpr ULONGLONG kStatusInterval = 100; // milliseconds

// While an action runs, the contents of lists and texts are refreshed no more often than this.
constexpr double kContentsInterval = 500; // milliseconds
// And only as long as all that takes no more than this part of the time. On Windows they follow
// the action; where each new line costs much, the most of them come at its end.
constexpr double kContentsShare = 0.02;

double Milliseconds() {
    LARGE_INTEGER now;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart) * 1000 / static_cast<double>(frequency.QuadPart);
}

bool IsSame(POINT one, POINT other) {
    return one.x == other.x && one.y == other.y;
}

} // namespace

Refresher::Refresher(controls::Form1& form, HWND window, Pages& pages, const ControlViews& views,
                     TaskbarButton& taskbar_button)
    : form_(form), window_(window), pages_(pages), views_(views), taskbar_button_(taskbar_button) {}

void Refresher::Pull() const {
    for (const auto& view : views_.All()) {
        view->Pull();
    }
}

void Refresher::Complete() {
    Everything(true, true);
    contents_.reset();
}

void Refresher::Frugal() {
    const double now = Milliseconds();
    if (!contents_) {
        contents_ = {.start = now, .last = now};
    }
    const bool with_contents = ContentsAreDue(now);
    Everything(GetTickCount64() >= next_status_, with_contents);
    if (with_contents) {
        const double cost = Milliseconds() - now;
        contents_->spent += cost;
        contents_->growth = cost / (now - contents_->last);
        contents_->last = now;
    }
}

// What there is to be shown grows with the time since it was shown last.
bool Refresher::ContentsAreDue(double now) const {
    const double since = now - contents_->last;
    const double expected = contents_->spent + contents_->growth * since;
    return since >= kContentsInterval && expected <= kContentsShare * (now - contents_->start);
}

void Refresher::Everything(bool with_status, bool with_contents) {
    if (form_.Caption != shown_caption_) {
        shown_caption_ = form_.Caption;
        ShowText(window_, shown_caption_);
    }
    if (with_status) {
        StatusAndPointer();
    }
    pages_.Show(form_.SSTab1.Tab());
    Place();

    for (const auto& view : views_.All()) {
        const bool is_status = view.get() == &views_.StatusBar(); // dealt with above
        if (!is_status && (with_contents || !view->ShowsContents())) {
            view->Refresh();
        }
    }
}

void Refresher::Place() {
    const bool moved = form_.Left != shown_place_.left || form_.Top != shown_place_.top;
    const bool resized = form_.Width != shown_place_.right || form_.Height != shown_place_.bottom;
    if ((!moved && !resized) || IsIconic(window_) != FALSE) {
        return;
    }
    shown_place_ = {form_.Left, form_.Top, form_.Width, form_.Height};
    const UINT dpi = LayoutDpi();
    const SIZE size{Pixels(form_.Width, dpi), Pixels(form_.Height, dpi)};
    RECT before;
    GetWindowRect(window_, &before);
    POINT corner{before.left, before.top};
    if (moved) {
        corner = {Pixels(form_.Left, dpi), Pixels(form_.Top, dpi)};
    } else if (size.cy < before.bottom - before.top && IsSame(corner, grown_at_)) {
        corner = stood_at_;
    }
    const RECT inside = MovedIn({corner.x, corner.y, corner.x + size.cx, corner.y + size.cy});
    grown_at_ = {inside.left, inside.top};
    stood_at_ = moved ? grown_at_ : corner;
    SetWindowPos(window_, nullptr, inside.left, inside.top, size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void Refresher::StatusSoon() {
    if (GetTickCount64() >= next_status_) {
        StatusAndPointer();
    } else if (!status_waits_) {
        status_waits_ = true;
        SetTimer(window_, kStatusTimer, static_cast<UINT>(kStatusInterval), nullptr);
    }
}

void Refresher::StatusAndPointer() {
    if (status_waits_) {
        status_waits_ = false;
        KillTimer(window_, kStatusTimer);
    }
    next_status_ = GetTickCount64() + kStatusInterval;
    views_.StatusBar().Refresh();
    taskbar_button_.Show(form_.StatusBar1);
    if (form_.Pointer != shown_pointer_) {
        shown_pointer_ = form_.Pointer;
        POINT mouse;
        GetCursorPos(&mouse);
        const HWND below = WindowFromPoint(mouse);
        if (below == window_ || IsChild(window_, below) != FALSE) {
            SetCursor(LoadCursorW(nullptr, shown_pointer_ == controls::MousePointer::kHourglass
                                               ? IDC_WAIT
                                               : IDC_ARROW));
        }
    }
}

} // namespace win32
