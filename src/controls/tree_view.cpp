#include "controls/tree_view.hpp"

#include "automation/run_time_error.hpp"

namespace controls {

std::size_t TreeView::Index(std::size_t node) const {
    if (node < 1 || node > nodes_.size()) {
        throw automation::IndexOutOfBounds();
    }
    return node - 1;
}

std::size_t TreeView::Add(std::size_t parent, std::string_view key, std::string text, int image) {
    const std::size_t number = nodes_.size() + 1;
    if (!key.empty() && !node_by_key_.try_emplace(std::string(key), number).second) {
        throw automation::KeyNotUnique();
    }
    nodes_.push_back({.text = std::move(text), .parent = parent, .image = image});
    ++restructurings_;
    Changed();
    return number;
}

std::size_t TreeView::AddRoot(std::string_view key, std::string text, int image) {
    return Add(0, key, std::move(text), image);
}

std::size_t TreeView::AddChild(std::string_view parent_key, std::string_view key, std::string text,
                               int image) {
    const auto parent = node_by_key_.find(parent_key);
    if (parent == node_by_key_.end()) {
        throw automation::ElementNotFound();
    }
    return Add(parent->second, key, std::move(text), image);
}

void TreeView::Clear() {
    nodes_.clear();
    node_by_key_.clear();
    node_to_show_.reset();
    ++restructurings_;
    Changed();
}

void TreeView::SetExpanded(std::size_t node, bool expanded) {
    nodes_[Index(node)].expanded = expanded;
    Changed();
}

void TreeView::SetChecked(std::size_t node, bool checked) {
    nodes_[Index(node)].checked = checked;
    Changed();
}

std::string TreeView::FullPath(std::size_t node) const {
    std::vector<const std::string*> texts;
    std::size_t length = 0;
    for (std::size_t at = node; at != 0; at = nodes_[at - 1].parent) {
        texts.push_back(&Node(at).text);
        length += texts.back()->size() + kPathSeparator.size();
    }
    std::string path;
    path.reserve(length);
    for (auto text = texts.rbegin(); text != texts.rend(); ++text) {
        if (text != texts.rbegin()) {
            path += kPathSeparator;
        }
        path += **text;
    }
    return path;
}

void TreeView::EnsureVisible(std::size_t node) {
    Index(node);
    node_to_show_ = node;
    Changed();
}

} // namespace controls
