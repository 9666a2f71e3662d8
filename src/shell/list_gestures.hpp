// What the person does with the rows of the parts list and of the sheet list alike.
#pragma once

#include "controls/form1.hpp"

namespace shell {

// Gives the selected rows the check state of a row that the person has just changed.
void CheckSelectedRows(controls::ListView& list, std::size_t changed_row);

// The start of a drag: the row at x, y (pixels in the list), or nothing.
void PressRow(const controls::ListView& list, controls::Drag& drag, int x, int y);

// Whether a row can be dragged: only one whose name is a number other than zero in the user's
// number format.
bool CanDrag(controls::Form1& form, const controls::ListView& list, std::size_t row);

// The pressed row, where it is still there and can be dragged.
std::optional<std::size_t> DraggedRow(controls::Form1& form, const controls::ListView& list,
                                      const controls::Drag& drag);

// The row that a drop moves. Raises 35600 where there is none, or none any more.
std::size_t MovedRow(const controls::ListView& list, const controls::Drag& drag);

// The row that stands `rows` below the current one (above it where negative); nothing where there
// is none.
std::optional<std::size_t> NeighbourOfCurrentRow(const controls::ListView& list, int rows);

// Moves row `moved` to the place of row `target`: before it when `target_index`, the first row of
// the target's name, stands above `moved`, else after it. The rows are sorted by the texts of
// `key`, a sub-item whose texts rise from row to row and are left changed; the list is left sorted.
// Raises 35600 where a row does not exist.
void MoveRow(controls::ListView& list, std::size_t key, std::size_t moved, std::size_t target,
             std::size_t target_index);

// Shows a list's popup menu, whose `remove` is offered where there is a row to be removed.
void OpenListMenu(controls::Form1& form, const controls::ListView& list, controls::PopupMenu& menu,
                  controls::MenuItem& remove, controls::PopupPlace place);

// Yields once while the list is sorted, and ends the sorting. Whether it is still the list that was
// sorted, and not one that was filled anew meanwhile. Raises 18 where the window was closed.
bool YieldWhileSorted(controls::Form1& form, controls::ListView& list);

} // namespace shell
