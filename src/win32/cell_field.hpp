// The field over a cell of a list, in which the person edits its text in place. It belongs to the
// row's id, so that rows may come and go while it is open.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "controls/list_view.hpp"
#include "win32/views.hpp"

namespace win32 {

class CellField {
  public:
    // What the person wants of it: the text taken as something else has the focus, by the enter
    // key, for all selected rows, or on the way to a neighbour; or nothing taken.
    enum class Wish { kTake, kEnter, kForSelectedRows, kNext, kPrevious, kCancel };

    CellField(HWND list, std::function<void(Wish)> on_wish);
    ~CellField() { Close(); }
    CellField(const CellField&) = delete;
    CellField& operator=(const CellField&) = delete;

    // Opens over a cell of that text, with all of it selected and the focus. `name` is for programs
    // that read aloud.
    void Open(const controls::TypedCell& cell, const std::string& name, const RECT& place);
    // Over the cell, and a little higher: its text keeps its height inside the border.
    void Place(const RECT& cell);

    [[nodiscard]] bool IsOpen() const { return window_ != nullptr; }
    [[nodiscard]] HWND Window() const { return window_; } // nullptr while it is closed
    // The cell with the text that it began with, and with the one that stands there now.
    [[nodiscard]] const controls::TypedCell& Begun() const { return begun_; }
    [[nodiscard]] controls::TypedCell Typed() const;

    // What was typed; nothing where that is as it was. The list gets the focus back.
    std::optional<controls::TypedCell> Close();

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                            UINT_PTR id, DWORD_PTR self);
    LRESULT OnMessage(UINT message, WPARAM w, LPARAM l);
    bool OnKey(WPARAM key, bool repeated);

    HWND list_;
    std::function<void(Wish)> on_wish_;
    HWND window_ = nullptr;
    controls::TypedCell begun_;
};

} // namespace win32
