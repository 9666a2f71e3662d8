// Czech sentences for what the status line has no room for: why an action ended, what the person
// can do, how many things were done. Nothing else in the program makes sentences of errors.
#pragma once

#include <optional>
#include <string>

#include "automation/run_time_error.hpp"
#include "controls/controls.hpp"
#include "platform/ports.hpp"

namespace shell {

// What happened, at which member of CATIA, and what the person can do. One or two sentences.
std::string Explained(const automation::RunTimeError& error);
// The person has ended the action: its last message, and how far it was where that is known.
std::string Interrupted(const std::string& last_message,
                        const std::optional<controls::Progress>& progress);
// A call has been waiting for long: CATIA works, or refuses to take it.
std::string CatiaIsBusy();
std::string CatiaRejectsCalls();

// A window of CATIA is there, its automation object is not.
struct UnreachableCatia {
    platform::Rights rights = platform::Rights::kUnknown; // of CATIA
    std::string program;                                  // its path; empty where it is not known
    platform::Registration registration;                  // of its automation
};
std::string CatiaUnreachable(const UnreachableCatia& state);
// The document of the session that answered, where several windows of CATIA are open.
std::string WorkedOn(const std::string& document, std::size_t windows);

// Reasons that go into RunTimeError::reason. Lines of the configuration count from 1.
std::string TooManyValues(std::size_t line, std::size_t values, std::size_t most);
std::string PositionWithoutY(std::size_t line);
std::string NoColumnOfTheList(const std::string& slot);
std::string NoCurrentRow();
std::string TableInWork();
std::string TableChangedMeanwhile();
std::string TableFilledMeanwhile();
std::string TableToUpdateInWork();
std::string TableChangedWhileUpdated();

// The table is written, but CATIA does not show it.
std::string TableNotRedrawn();

// What an action that shows no closing message has done.
std::string TextsPlaced(std::size_t texts);
std::string SheetsNumbered(int sheets);
std::string SheetsNamed(int sheets);
std::string SheetCreated();
std::string SheetsSwapped();

// An error in the log: without what may be the person's own words.
std::string ErrorForLog(const automation::RunTimeError& error);
// An error for whoever helps the person from afar, a line each thing.
std::string ErrorReport(const automation::RunTimeError& error, const std::string& step,
                        const std::string& time);

// Why a table gave no rows, and which lines a tree leaves out.
std::string NotSevenColumns(int columns);
std::string LinesSkipped(std::size_t lines, std::size_t first);

// What was marked when the list was brought up to date with the tree.
struct MarkedRows {
    std::size_t missing = 0;   // rows whose part the tree has not
    bool knows_before = false; // whether it is known that the tree of before had them
    std::size_t ambiguous = 0; // rows whose name stands in several rows
};
std::string RowsMarked(const MarkedRows& rows);
// Materials, sizes and notes could not be kept for "Doplnit známé".
std::string PartsNotRemembered(const automation::RunTimeError& error);

// Why a file could not be written or read, and what the person can do.
std::string FileTrouble(const automation::RunTimeError& error);
// The working list was loaded from `loaded`, which is newer than the file that stands in `kept`.
std::string NewerListLoaded(const std::string& loaded, const std::string& kept);
// The question about what the run before has left behind, from a time of day ("14:32").
std::string RestoreQuestion(const std::string& time, std::size_t rows);

// The guide does not stand beside the program.
std::string GuideIsMissing();

} // namespace shell
