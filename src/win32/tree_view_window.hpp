// The structure tree on the screen. The native tree is built anew where nodes were added or
// removed, and otherwise told only of the check boxes that changed. Clicks on a check box and the
// space key are taken before the native tree sees them: the control object decides which nodes
// change.
#pragma once

#include <vector>

#include "controls/tree_view.hpp"
#include "win32/views.hpp"

namespace win32 {

class TreeViewWindow : public View {
  public:
    TreeViewWindow(HWND window, controls::TreeView& tree, RunEvent run_event);
    ~TreeViewWindow() override;

    void SetDpi(UINT dpi) override;
    void Refresh() override;
    [[nodiscard]] bool ShowsContents() const override { return true; }
    LRESULT OnNotify(NMHDR& header) override;

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                            UINT_PTR id, DWORD_PTR self);
    // Whether the message goes no further.
    bool OnMessage(UINT message, WPARAM w, LPARAM l);
    bool OnSetItem(const TVITEMW& change);
    void Rebuild();
    void ScrollToLeft() const;
    void UpdateCheck(HTREEITEM handle);
    void UpdateVisibleChecks();
    void Toggle(HTREEITEM item);
    [[nodiscard]] std::size_t NodeOf(HTREEITEM handle) const;

    controls::TreeView& tree_;
    RunEvent run_event_;
    com::Owned<HIMAGELIST> images_;

    std::uint64_t shown_revision_ = UINT64_MAX;
    std::uint64_t shown_restructurings_ = 0;
    std::vector<HTREEITEM> items_; // of node n at n - 1
    std::vector<bool> shown_checked_;
    bool refreshing_ = false;
};

} // namespace win32
