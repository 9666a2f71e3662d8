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
    BetweenYields(controls::Form1& form, HWND window, StatusBarView& status_bar,
                  Refresher& refresher)
        : form_(form), window_(window), status_bar_(status_bar), refresher_(refresher) {}

    // Whether handlers have to wait.
    [[nodiscard]] bool Now() const { return taking_ || com::IsCalling(); }

    // Before every call; looks at the messages now and then.
    void BeforeCall();
    bool Waiting(ULONGLONG milliseconds, bool rejected) override;
    void WaitEnded() override;

    // Where the message is the key that ends what runs, and nothing that is open takes it first.
    bool TakeStopKey(const MSG& message);
    // Has the message that waits longest handled. False where there is none.
    bool HandleNext(const std::function<void(MSG&)>& handle);
    // Whether keys that were pressed between yields wait to be handled.
    [[nodiscard]] bool HasKeys() const { return !keys_.empty(); }

  private:
    // A key that was pressed between yields, and what else was pressed then.
    struct Key {
        MSG message;
        std::array<BYTE, 256> pressed;
    };

    void Take();
    void TakeKeys();
    void GoBehindCatia();

    controls::Form1& form_;
    HWND window_;
    StatusBarView& status_bar_;
    Refresher& refresher_;
    bool taking_ = false;
    ULONGLONG next_look_ = 0;
    std::deque<Key> keys_;
    bool told_ = false;   // that CATIA is busy
    bool behind_ = false; // CATIA's window
};

} // namespace win32
