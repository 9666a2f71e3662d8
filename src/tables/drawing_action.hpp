// What the actions on drawing tables have in common: their opening, the table that the person
// selected, and the values that a parts-list row gives.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "automation/value.hpp"
#include "catia/session.hpp"
#include "controls/form1.hpp"

namespace tables {

inline constexpr int kColumns = 7; // of a table of the parts list

struct OpenDrawing {
    catia::Application application;
    catia::Selection selection;
    catia::DrawingView view; // the active one
};

// The opening of every drawing action, once a session was found: announces the waiting, obtains the
// application anew and goes from its active document to the active view. Says so and gives nothing
// where the document's name is no drawing's. Raises what CATIA raises.
std::optional<OpenDrawing> OpenActiveDrawing(controls::Form1& form);

// Whether something is selected; says so where nothing is.
bool HasSelection(controls::Form1& form, const catia::Selection& selection);
// The first selected element where it is a table.
std::optional<catia::DrawingTable> SelectedTable(const catia::Selection& selection);

// The selected table; says so where nothing or something else is selected.
std::optional<catia::DrawingTable> TableToFill(controls::Form1& form,
                                               const catia::Selection& selection);

// Says for as long as it lives that a table is being made or filled, or read into the list: at a
// yield it, or the list, is a mixture.
class TableInWork {
  public:
    explicit TableInWork(controls::Form1& form) : form_(form) { ++form_.tables_in_work; }
    ~TableInWork() { --form_.tables_in_work; }
    TableInWork(const TableInWork&) = delete;
    TableInWork& operator=(const TableInWork&) = delete;

  private:
    controls::Form1& form_;
};

// Whether the person wants tables to be made and filled without CATIA computing what they display
// after each change.
bool WantsNoRedrawing(const controls::Form1& form);

// Makes a call that puts back what was done in CATIA, also where the person has ended the action.
// Whether it could be made; a failure is no error of the action.
bool TryPuttingBack(controls::Form1& form, const std::function<void()>& call);

// A table that is made or filled, where wanted with the computing of its display switched off. It
// is switched on again by Finish, or, on every other way out, by the end of the object's life;
// there a failure is tried once more. No failure of the switching is an error of the action: where
// the display cannot be switched off, the table is written as always; where it stays off although
// the table is written, the explanation says so.
class WithoutRedrawing {
  public:
    WithoutRedrawing(controls::Form1& form, const catia::DrawingTable& table, bool wanted);
    ~WithoutRedrawing();
    WithoutRedrawing(const WithoutRedrawing&) = delete;
    WithoutRedrawing& operator=(const WithoutRedrawing&) = delete;

    // The table is written.
    void Finish();

  private:
    void SwitchOn();

    controls::Form1& form_;
    const catia::DrawingTable& table_;
    bool to_switch_on_; // also where it is not known whether switching off had its effect
    bool switched_off_ = false;
    bool finished_ = false;
};

// The rows of the parts list as they stand when an action begins: the person may change the list
// while it works. A row is its texts: the name, then the fields by their numbers.
using PartTexts = std::vector<std::string>;
struct Parts {
    std::vector<PartTexts> rows;
    std::optional<std::size_t> current; // counted from 0
};
Parts TakeParts(const controls::ListView& list);

// The current row. Raises 91 (object variable not set) where there is none.
const PartTexts& CurrentPart(const Parts& parts);

// The six values that a row of the parts list gives to a drawing: position as a number, name,
// pieces, size, material, note.
std::array<automation::Value, 6> PartValues(const PartTexts& part);

// How far the filling of a table is, for the status line.
std::string Progress(int done, int total);

// A size with a diameter: where it holds a "D" of either case, `diameter_sign` in the place of its
// first character, whatever that is.
std::string WithDiameterSign(const std::string& size, const std::string& diameter_sign);
std::string DiameterSign(controls::Form1& form);

} // namespace tables
