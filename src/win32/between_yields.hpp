// What the window does between the yields of an action: it paints, it can be moved, minimised and
// closed, and it takes the key that ends the action. No handler runs there, and everything else
// that the person does waits for the next yield. Where a call waits for long, the window says so.
#pragma once

#include <array>
#include <deque>
#include <functional>

#include <windows.h>

#include "com/client.hpp"
#include "controls/form1.hpp"
#include "win32/refresh.hpp"
#include "win32/views.hpp"

namespace win32 {

class BetweenYields : public com::CallWatch {
  public:
    // `run_event` runs what was kept.
    BetweenYields(controls::Form1& form, HWND window, StatusBarView& status_bar,
                  Refresher& refresher, RunEvent run_event)
        : form_(form), window_(window), status_bar_(status_bar), refresher_(refresher),
          run_event_(std::move(run_event)) {}

    // Whether handlers have to wait.
    [[nodiscard]] bool Now() const { return taking_ || com::IsCalling(); }
    // An event whose handler has to: other programs press buttons without the queue, and what is
    // edited ends with the focus.
    void Keep(const std::function<void()>& event) { events_.push_back(event); }

    // Before every call; looks at the messages now and then.
    void BeforeCall();
    bool Waiting(ULONGLONG milliseconds, bool rejected) override;
    void WaitEnded() override;

    // Where the message is the key that ends what runs, and nothing that is open takes it first:
    // pressed again before that has got it, it ends what runs.
    bool TakeStopKey(const MSG& message);
    // Runs the event or has the message handled that waits longest. False where there is none.
    bool HandleNext(const std::function<void(MSG&)>& handle);
    // Whether events or keys wait that came between yields.
    [[nodiscard]] bool HasKept() const { return !events_.empty() || !keys_.empty(); }

  private:
    // A key that was pressed between yields, and what else was pressed then.
    struct Key {
        MSG message;
        std::array<BYTE, 256> pressed;
    };

    void Take();
    void TakeKeys();
    [[nodiscard]] bool KeepsEscape() const;
    void GoBehindCatia();
    void ComeForwardWherePressed();

    controls::Form1& form_;
    HWND window_;
    StatusBarView& status_bar_;
    Refresher& refresher_;
    RunEvent run_event_;
    bool taking_ = false;
    DWORD last_press_ = 0; // when the press came that has brought the window forward
    ULONGLONG next_look_ = 0;
    std::deque<std::function<void()>> events_;
    std::deque<Key> keys_;
    bool told_ = false;   // that CATIA is busy
    bool behind_ = false; // CATIA's window
};

} // namespace win32
