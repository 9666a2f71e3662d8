// When the session is at work, for whoever measures its clients: a page of memory that other
// processes open under its name, so that looking at it takes time from neither side.
#pragma once

#include <windows.h>

namespace simulator {

inline constexpr const wchar_t* kCallTimesName = L"CatiaSimCallTimes";

// Times are QueryPerformanceCounter's. Whoever measures sets all of them to 0 before.
struct CallTimes {
    volatile LONG64 calls;       // that were answered, look-ups of names among them
    volatile LONG64 first_begun; // when the first one came
    volatile LONG64 last_ended;  // when the last one was answered
    volatile LONG64 at_work;     // from their coming to their answers, altogether
};

// Makes the page, before the first call.
void ShareCallTimes();

// Notes one call, from its beginning to its end.
class TimedCall {
  public:
    TimedCall();
    ~TimedCall();
    TimedCall(const TimedCall&) = delete;
    TimedCall& operator=(const TimedCall&) = delete;

  private:
    LONG64 begun_;
};

} // namespace simulator
