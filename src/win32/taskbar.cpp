#include "win32/taskbar.hpp"

namespace win32 {

namespace {

constexpr ULONGLONG kShownAfter = 500; // milliseconds

} // namespace

TaskbarButton::TaskbarButton(HWND window)
    : window_(window), created_message_(RegisterWindowMessageW(L"TaskbarButtonCreated")) {}

bool TaskbarButton::TakeMessage(UINT message) {
    if (message != created_message_ || message == 0) {
        return false;
    }
    list_.Reset();
    state_ = TBPF_NOPROGRESS;
    if (FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER,
                                IID_PPV_ARGS(&list_))) ||
        FAILED(list_->HrInit())) {
        list_.Reset();
    }
    return true;
}

void TaskbarButton::Show(const controls::StatusBar& status_bar) {
    if (list_ == nullptr) {
        return;
    }
    const bool running = status_bar.State() == controls::ActionState::kRunning;
    const ULONGLONG now = GetTickCount64();
    if (!running) {
        running_since_ = 0;
    } else if (running_since_ == 0) {
        running_since_ = now;
    }
    if (running && now - running_since_ < kShownAfter) {
        return;
    }
    if (!running) {
        const bool failed = status_bar.State() == controls::ActionState::kFailed;
        // What has failed in front of the person needs no mark, and a mark seen goes.
        const bool marked =
            state_ == TBPF_INDETERMINATE || state_ == TBPF_NORMAL || state_ == TBPF_ERROR;
        SetState(failed && marked && GetForegroundWindow() != window_ ? TBPF_ERROR
                                                                      : TBPF_NOPROGRESS);
        return;
    }
    const auto& progress = status_bar.ShownProgress();
    if (!progress) {
        SetState(TBPF_INDETERMINATE);
        return;
    }
    SetState(TBPF_NORMAL);
    if (*progress != amount_) {
        amount_ = *progress;
        list_->SetProgressValue(window_, static_cast<ULONGLONG>(amount_.done),
                                static_cast<ULONGLONG>(amount_.total));
    }
}

void TaskbarButton::SetState(TBPFLAG state) {
    if (state == state_) {
        return;
    }
    state_ = state;
    amount_ = {};
    list_->SetProgressState(window_, state);
    if (state == TBPF_ERROR) {
        list_->SetProgressValue(window_, 1, 1); // a full bar, in red
    }
}

} // namespace win32
