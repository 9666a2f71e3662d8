// A report list on the screen. The Windows control is virtual: it asks for texts and check marks
// when it paints, so the control object stays the only copy of the rows. Windows keeps the selected
// and the current rows itself; they are brought in step both ways.
//
// Windows leaves the check boxes of virtual lists to the program, and its own drag detection
// swallows the release of the mouse button; this file has what it takes for both. Windows edits
// nothing but names in place; the field for all cells is the program's own.
#pragma once

#include <vector>

#include "controls/list_view.hpp"
#include "win32/cell_field.hpp"
#include "win32/tool_tips.hpp"
#include "win32/views.hpp"

namespace win32 {

class ListViewWindow : public View {
  public:
    struct Look {
        std::vector<int> column_widths; // in design pixels; the last one in sight fills the list
        bool check_boxes = false;
        bool edits_cells = false; // in place, and shows the cell cursor
        bool whole_rows = false;  // no part of a row at the lower edge: the list is that much lower
    };

    ListViewWindow(HWND window, controls::ListView& list, Look look, RunEvent run_event);
    ~ListViewWindow() override;

    void SetDpi(UINT dpi) override;
    void Refresh() override;
    [[nodiscard]] bool ShowsContents() const override { return true; }
    void Pull() override;
    LRESULT OnNotify(NMHDR& header) override;
    void CancelDrag() override;
    void EndEdit() override;
    // The current row's name; without one, the list's corner.
    [[nodiscard]] RECT MenuAnchor() const override;

    // Whether a row may be dragged by the mouse; shows where it would land while it is dragged.
    // Rows cannot be dragged where this is not set.
    std::function<bool(std::size_t row)> can_drag;
    // Whether a dragged row may be dropped on that row; on every one where this is not set.
    std::function<bool(std::size_t row)> can_drop_on;

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                            UINT_PTR id, DWORD_PTR self);
    static LRESULT CALLBACK HeaderProcedure(HWND window, UINT message, WPARAM w, LPARAM l);
    LRESULT OnMessage(UINT message, WPARAM w, LPARAM l);
    LRESULT OnButtonDown(UINT message, WPARAM w, LPARAM l);
    LRESULT OnRightButtonDown(LPARAM l);
    bool OnDoubleClick(WPARAM w, LPARAM l);
    bool OnKeyDown(WPARAM key);
    LRESULT OnKey(UINT message, WPARAM w, LPARAM l);
    // The item that has the list's focus, -1 for none.
    [[nodiscard]] int FocusedItem() const { return focused_item_; }
    void NoteStates(int first, int last, UINT before, UINT now);
    void ReadStates();
    void RaiseMouseUp(int button, POINT at);
    void DragOver(POINT at);

    // `goes_on`: the enter key takes the text and goes on to the row below.
    void BeginEdit(const controls::Cell& cell, bool goes_on);
    void PlaceField();
    void FollowEditedRow();
    void TakeEdit();
    void TakeEditForSelectedRows();
    void GoOn(controls::CellStep step);
    void OnFieldWish(CellField::Wish wish);
    void StepCell(controls::CellStep step);
    void ShowColumn(std::size_t column) const;
    [[nodiscard]] RECT CellRect(const controls::Cell& cell) const;
    void DrawCellCursor(const NMLVCUSTOMDRAW& draw) const;
    void DrawDropMark(const NMLVCUSTOMDRAW& draw) const;
    void ShowDropMark(std::optional<std::size_t> row);
    LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw);
    void TintSelectedRow(NMLVCUSTOMDRAW& draw) const;
    void ShowMark(NMLVCUSTOMDRAW& draw);
    bool OnSetState(WPARAM item, const LVITEMW& change);
    void OnGetDisplayInfo(LVITEMW& item);
    [[nodiscard]] LRESULT FindByPrefix(const NMLVFINDITEMW& find) const;
    [[nodiscard]] std::optional<std::size_t> RowAt(POINT at, UINT* flags = nullptr) const;
    // The cell that a press of the mouse makes the current one.
    [[nodiscard]] std::optional<controls::Cell> CellAt(POINT at) const;
    void MakeCurrent(const std::optional<controls::Cell>& pressed);
    void Toggle(std::size_t row);
    void PushSelection();
    void PushSelectedRows();
    void EndAfterWholeRow() const;
    // Whether the columns fill the list: not where the person has made them wider or narrower.
    [[nodiscard]] bool FillsWidth() const {
        return shown_dpi_ != 0 && ColumnsWidth() == filled_width_;
    }
    [[nodiscard]] int ColumnsWidth() const;
    void FillWidth();
    void SetItemState(int item, UINT state, UINT mask) const;
    [[nodiscard]] bool HasItemState(int item, UINT state) const;
    void CopySelection() const;

    controls::ListView& list_;
    Look look_;
    RunEvent run_event_;

    UINT shown_dpi_ = 0;
    int filled_width_ = 0; // of the list, when its columns were made to fill it

    std::uint64_t shown_revision_ = UINT64_MAX;
    std::size_t shown_count_ = 0;
    std::uint64_t shown_selection_ = UINT64_MAX; // by its revision
    std::vector<bool> shown_selected_;           // as the list's rows were when they were in step
    // As the items are, by what Windows has notified of: asking for every item of a long list takes
    // seconds.
    std::vector<bool> selected_items_;
    std::size_t selected_count_ = 0;
    int focused_item_ = -1;
    bool selection_changed_ = false; // by the person
    bool refreshing_ = false;
    std::wstring display_text_;
    ToolTip tool_tip_;

    CellField field_;
    bool edit_goes_on_ = false;
    std::size_t shown_column_ = 0;

    // While it paints: selected rows, since the focus is elsewhere, the current cell, since it is
    // here, and marked rows.
    bool is_tinted_ = false;
    bool shows_cursor_ = false;
    bool has_marks_ = false;
    com::Owned<HFONT> marked_font_; // of marked rows; made when one is painted

    bool left_down_ = false;
    bool on_check_box_ = false;
    bool releasing_ = false; // the left button, which ends the mouse's capture
    bool dragging_ = false;
    std::size_t dragged_row_ = 0;
    std::optional<std::size_t> drop_row_;
};

} // namespace win32
