// The program's button on the taskbar, which shows how far an action is.
#pragma once

#include <windows.h>

#include <shobjidl.h>
#include <wrl/client.h>

#include "controls/controls.hpp"

namespace win32 {

class TaskbarButton {
  public:
    explicit TaskbarButton(HWND window);

    // Where the message says that the button is there: only then it shows anything. True where it
    // was this message.
    bool TakeMessage(UINT message);
    // Follows the status bar: running with its amount, failed for as long as the window is not in
    // front. Actions that end at once are not shown.
    void Show(const controls::StatusBar& status_bar);

  private:
    void SetState(TBPFLAG state);

    HWND window_;
    UINT created_message_;
    Microsoft::WRL::ComPtr<ITaskbarList3> list_;
    TBPFLAG state_ = TBPF_NOPROGRESS;
    controls::Progress amount_;
    ULONGLONG running_since_ = 0; // 0 where nothing runs
};

} // namespace win32
