#include "call_clock.hpp"

namespace simulator {

namespace {

LONG64 Now() {
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}

// Stays open until the process ends.
CallTimes& SharedTimes() {
    static CallTimes* const times = [] {
        static CallTimes own{}; // where the system shares none
        const HANDLE page = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                               sizeof(CallTimes), kCallTimesName);
        void* const view = page != nullptr
                               ? MapViewOfFile(page, FILE_MAP_WRITE, 0, 0, sizeof(CallTimes))
                               : nullptr;
        return view != nullptr ? static_cast<CallTimes*>(view) : &own;
    }();
    return *times;
}

} // namespace

void ShareCallTimes() {
    SharedTimes();
}

TimedCall::TimedCall() : begun_(Now()) {
    CallTimes& times = SharedTimes();
    if (times.first_begun == 0) {
        times.first_begun = begun_;
    }
}

TimedCall::~TimedCall() {
    CallTimes& times = SharedTimes();
    const LONG64 ended = Now();
    times.at_work = times.at_work + (ended - begun_);
    times.last_ended = ended;
    times.calls = times.calls + 1;
}

} // namespace simulator
