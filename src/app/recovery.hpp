// What a crash would lose. While the program runs, the parts list, the table configuration and the
// pickers' values go to a recovery file in the data folder soon after they change; a clean end
// removes it. A start that finds one, which no other running copy can own, offers what it holds.
#pragma once

#include "controls/form1.hpp"

namespace app {

// How soon a change is kept: when nothing has changed for the first time, or when the second has
// passed since the change. In milliseconds.
struct RecoveryPace {
    long long idle = 2000;
    long long longest = 8000;
};

// After the form has loaded and its window is shown: where the run before has left something else
// than what was loaded, asks whether to take it. What is not taken stays beside it, under another
// name. Only then changes are kept: a leftover that could not be read, or whose question went
// unanswered because the program was closed, waits for the next start. Not to be called where the
// data folder is not this copy's alone: the file may be another one's that runs.
void OfferRecovery(controls::Form1& form);

// Keeps what has changed where that is due. Called at rest and at yields, `now` being milliseconds
// of a clock that never goes back. Raises nothing: what cannot be written is tried again.
void KeepRecovery(controls::Form1& form, long long now, const RecoveryPace& pace = {});

// Keeps what has changed at once: something opens that the person may look at for long.
void KeepRecoveryNow(controls::Form1& form);

// The closing steps have saved the list. Where nobody has answered for the leftover, it becomes the
// newer file again, so that the next start does not take it for one that was saved afterwards.
void KeepLeftover(controls::Form1& form);

// The program ends, and everything is saved as the person wants it.
void RemoveRecovery(controls::Form1& form);

} // namespace app
