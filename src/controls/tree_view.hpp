#pragma once

#include <optional>
#include <unordered_map>

#include "controls/controls.hpp"

namespace controls {

// Images of a tree node: the entries of the window's image list.
inline constexpr int kAssemblyImage = 1;
inline constexpr int kPartImage = 2;

struct TreeNode {
    std::string text;
    std::size_t parent = 0; // the number of the parent node, 0 for a root
    int image = kAssemblyImage;
    bool expanded = false;
    bool checked = false;
};

// A tree with check boxes. Nodes count from 1 in the order in which they were added, so a parent's
// number is lower than its children's. A node that does not exist raises 35600.
class TreeView : public Control {
  public:
    [[nodiscard]] std::size_t Count() const { return nodes_.size(); }
    [[nodiscard]] const TreeNode& Node(std::size_t node) const { return nodes_[Index(node)]; }

    // Adds a node and returns its number. `key` names it for its children to come and may be empty,
    // which is no key. A key that a node has already raises 35602, a parent's key that no node has
    // raises 35601; the tree is then as it was.
    std::size_t AddRoot(std::string_view key, std::string text, int image);
    std::size_t AddChild(std::string_view parent_key, std::string_view key, std::string text,
                         int image);
    [[nodiscard]] bool HasKey(std::string_view key) const { return node_by_key_.contains(key); }
    void Clear();
    void SetExpanded(std::size_t node, bool expanded);
    void SetChecked(std::size_t node, bool checked);

    // The texts from the root down to the node, joined by kPathSeparator.
    [[nodiscard]] std::string FullPath(std::size_t node) const;
    static constexpr std::string_view kPathSeparator = "\\";

    // Asks the view to scroll the node into sight when it refreshes next.
    void EnsureVisible(std::size_t node);
    // The node to scroll to, given once.
    std::optional<std::size_t> TakeNodeToShow() {
        return std::exchange(node_to_show_, std::nullopt);
    }

    // How often nodes were added or removed, as opposed to changing state.
    [[nodiscard]] std::uint64_t Restructurings() const { return restructurings_; }

    void UserCheck(std::size_t node, bool checked) {
        SetChecked(node, checked);
        Raise(NodeCheck, node);
    }
    void UserExpand(std::size_t node, bool expanded) { SetExpanded(node, expanded); }

    Event<std::size_t> NodeCheck; // the node, already in its new state

  private:
    std::size_t Index(std::size_t node) const;
    std::size_t Add(std::size_t parent, std::string_view key, std::string text, int image);

    std::vector<TreeNode> nodes_;
    // Lets keys be looked up without making a string of them.
    struct KeyHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view key) const {
            return std::hash<std::string_view>()(key);
        }
    };

    std::unordered_map<std::string, std::size_t, KeyHash, std::equal_to<>> node_by_key_;
    std::optional<std::size_t> node_to_show_;
    std::uint64_t restructurings_ = 0;
};

} // namespace controls
