// The sections of the measurement, each of which prints its table in Markdown.
#pragma once

#include <string>

namespace measuring {

struct Options {
    int pairs = 10;    // interleaved pairs of runs
    std::string macro; // walk_and_table.vbs
};

void StartOfTheProgram(const Options& options);

// Against the bare client, which makes the same calls; an error where it does not.
void Walk(const Options& options);
void Table(const Options& options);
void ReadBack(const Options& options);
void Sheets(const Options& options);
// A table brought to the list's state, one quantity of which has changed, against a new one.
void Update(const Options& options);
// Per instance, at 20,000 instances against 1,400.
void LargeWalk(const Options& options);

// Against the macro.
void Macro(const Options& options);

// A click, all rows selected, typing ahead and a page down, against a bare control.
void Lists(const Options& options);
// From a letter typed, and from a change of the list, to the painted preview.
void Preview(const Options& options);
// The tree shown and its root unchecked; memory.
void Trees(const Options& options);

} // namespace measuring
