#include "win32/tree_view_window.hpp"

#include <windowsx.h>

#include "com/utf.hpp"
#include "win32/resource.h"

namespace win32 {

namespace {

constexpr int kImageEdge = 16; // design pixels

} // namespace

TreeViewWindow::TreeViewWindow(HWND window, controls::TreeView& tree, RunEvent run_event)
    : View(window), tree_(tree), run_event_(std::move(run_event)) {
    // Check boxes asked for at creation do not take states; they must come afterwards.
    SetWindowLongPtrW(Window(), GWL_STYLE, GetWindowLongPtrW(Window(), GWL_STYLE) | TVS_CHECKBOXES);
    SendMessageW(Window(), TVM_SETEXTENDEDSTYLE, TVS_EX_DOUBLEBUFFER, TVS_EX_DOUBLEBUFFER);
    KeepInFront(TreeView_GetToolTips(Window())); // the tips of cut-off names
    SetWindowSubclass(Window(), WindowProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

TreeViewWindow::~TreeViewWindow() {
    RemoveWindowSubclass(Window(), WindowProcedure, kSubclass);
}

void TreeViewWindow::SetDpi(UINT dpi) {
    const int edge = Scaled(kImageEdge, dpi);
    com::Owned<HIMAGELIST> images(ImageList_Create(edge, edge, ILC_COLOR32 | ILC_MASK, 2, 0));
    for (const int resource : {IDI_ASSEMBLY, IDI_PART}) {
        ImageList_ReplaceIcon(images.get(), -1, LoadIconOfSize(resource, edge).get());
    }
    TreeView_SetImageList(Window(), images.get(), TVSIL_NORMAL);
    images_ = std::move(images);
}

void TreeViewWindow::Refresh() {
    if (tree_.Revision() == shown_revision_) {
        return;
    }
    const FlagWhile refreshing(refreshing_);
    shown_revision_ = tree_.Revision();
    if (tree_.Restructurings() != shown_restructurings_) {
        shown_restructurings_ = tree_.Restructurings();
        SetWindowRedraw(Window(), FALSE);
        Rebuild();
        SetWindowRedraw(Window(), TRUE);
    } else {
        UpdateVisibleChecks();
    }
    if (const auto node = tree_.TakeNodeToShow(); node && *node <= items_.size()) {
        TreeView_EnsureVisible(Window(), items_[*node - 1]);
        ScrollToLeft();
    }
}

// Showing a node with a long name scrolls the check boxes out of sight.
void TreeViewWindow::ScrollToLeft() const {
    SendMessageW(Window(), WM_HSCROLL, SB_LEFT, 0);
    SendMessageW(Window(), WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 0), 0); // all that Wine knows
}

void TreeViewWindow::Rebuild() {
    TreeView_SelectItem(Window(), nullptr);
    TreeView_DeleteAllItems(Window());
    const std::size_t count = tree_.Count();
    items_.clear();
    items_.reserve(count);
    shown_checked_.clear();
    shown_checked_.reserve(count);
    // The last child so far of each node, and of the root at 0: inserting after it spares the tree
    // the search for the end of the siblings.
    std::vector<HTREEITEM> last_child(count + 1, TVI_FIRST);
    for (std::size_t number = 1; number <= count; ++number) {
        const controls::TreeNode& node = tree_.Node(number);
        std::wstring text = com::Widen(node.text);
        TVINSERTSTRUCTW insert{};
        insert.hParent = node.parent == 0 ? TVI_ROOT : items_[node.parent - 1];
        insert.hInsertAfter = last_child[node.parent];
        insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_STATE | TVIF_PARAM;
        insert.item.pszText = text.data();
        insert.item.iImage = node.image - 1;
        insert.item.iSelectedImage = node.image - 1;
        insert.item.lParam = static_cast<LPARAM>(number);
        // The roots are expanded last: every node that is in sight when it comes is placed anew.
        const bool expanded = node.expanded && node.parent != 0;
        insert.item.state = CheckState(node.checked) | (expanded ? TVIS_EXPANDED : 0U);
        insert.item.stateMask = TVIS_STATEIMAGEMASK | TVIS_EXPANDED;
        auto* const item = reinterpret_cast<HTREEITEM>(
            SendMessageW(Window(), TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
        last_child[node.parent] = item;
        items_.push_back(item);
        shown_checked_.push_back(node.checked);
    }
    for (std::size_t number = 1; number <= count; ++number) {
        if (tree_.Node(number).parent == 0 && tree_.Node(number).expanded) {
            TreeView_Expand(Window(), items_[number - 1], TVE_EXPAND);
        }
    }
}

void TreeViewWindow::UpdateCheck(HTREEITEM handle) {
    const std::size_t node = NodeOf(handle);
    if (node < 1 || node > shown_checked_.size() || node > tree_.Count()) {
        return;
    }
    const bool checked = tree_.Node(node).checked;
    if (checked != shown_checked_[node - 1]) {
        shown_checked_[node - 1] = checked;
        TVITEMW item{};
        item.mask = TVIF_HANDLE | TVIF_STATE;
        item.hItem = handle;
        item.state = CheckState(checked);
        item.stateMask = TVIS_STATEIMAGEMASK;
        const FlagWhile refreshing(refreshing_);
        SendMessageW(Window(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
}

void TreeViewWindow::UpdateVisibleChecks() {
    if (tree_.Restructurings() != shown_restructurings_) {
        return; // the native tree is still the one before
    }
    auto* item = TreeView_GetFirstVisible(Window());
    for (UINT left = TreeView_GetVisibleCount(Window()) + 1; item != nullptr && left > 0; --left) {
        UpdateCheck(item);
        item = TreeView_GetNextVisible(Window(), item);
    }
}

LRESULT TreeViewWindow::OnNotify(NMHDR& header) {
    if (header.code == TVN_ITEMEXPANDEDW && !refreshing_) {
        const auto& expanded = reinterpret_cast<const NMTREEVIEWW&>(header);
        const auto node = static_cast<std::size_t>(expanded.itemNew.lParam);
        if (node >= 1 && node <= tree_.Count()) {
            const bool in_step = tree_.Revision() == shown_revision_;
            tree_.UserExpand(node, (expanded.itemNew.state & TVIS_EXPANDED) != 0);
            if (in_step) {
                shown_revision_ = tree_.Revision();
            }
        }
    }
    return 0;
}

LRESULT CALLBACK TreeViewWindow::WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                                 UINT_PTR, DWORD_PTR self) {
    if (reinterpret_cast<TreeViewWindow*>(self)->OnMessage(message, w, l)) {
        return message == TVM_SETITEMW || message == TVM_SETITEMA ? TRUE : 0;
    }
    return DefSubclassProc(window, message, w, l);
}

bool TreeViewWindow::OnMessage(UINT message, WPARAM w, LPARAM l) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
        TVHITTESTINFO hit{};
        hit.pt = {GET_X_LPARAM(l), GET_Y_LPARAM(l)};
        TreeView_HitTest(Window(), &hit);
        if (hit.flags != TVHT_ONITEMSTATEICON) {
            return false;
        }
        SetFocus(Window());
        Toggle(hit.hItem);
        return true;
    }
    case WM_KEYDOWN:
        if (w == VK_SPACE) {
            Toggle(TreeView_GetSelection(Window()));
            return true;
        }
        return false;
    case WM_CHAR:
        return w == L' ';
    case WM_PAINT:
        UpdateVisibleChecks();
        return false;
    case TVM_SETITEMA:
    case TVM_SETITEMW:
        return OnSetItem(*reinterpret_cast<const TVITEMW*>(l));
    case TVM_GETITEMSTATE:
        UpdateCheck(reinterpret_cast<HTREEITEM>(w));
        return false;
    case TVM_GETITEMW:
        if ((reinterpret_cast<const TVITEMW*>(l)->mask & TVIF_STATE) != 0) {
            UpdateCheck(reinterpret_cast<const TVITEMW*>(l)->hItem);
        }
        return false;
    default:
        return false;
    }
}

// Programs that work the window for the person set a check box as an item's state.
bool TreeViewWindow::OnSetItem(const TVITEMW& change) {
    const std::size_t node = NodeOf(change.hItem);
    if (refreshing_ || (change.mask & TVIF_STATE) == 0 || change.stateMask != TVIS_STATEIMAGEMASK ||
        node < 1 || node > tree_.Count() || tree_.Restructurings() != shown_restructurings_) {
        return false;
    }
    if ((change.state & TVIS_STATEIMAGEMASK) != CheckState(tree_.Node(node).checked)) {
        Toggle(change.hItem);
    }
    return true;
}

void TreeViewWindow::Toggle(HTREEITEM item) {
    const std::size_t node = NodeOf(item);
    if (node >= 1 && node <= tree_.Count()) {
        run_event_([this, node] { tree_.UserCheck(node, !tree_.Node(node).checked); });
    }
}

std::size_t TreeViewWindow::NodeOf(HTREEITEM handle) const {
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_PARAM;
    item.hItem = handle;
    if (handle == nullptr ||
        SendMessageW(Window(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)) == FALSE) {
        return 0;
    }
    return static_cast<std::size_t>(item.lParam);
}

} // namespace win32
