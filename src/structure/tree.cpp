#include <vector>

#include "shell/shell.hpp"
#include "structure/structure.hpp"
#include "structure/structure_text.hpp"
#include "text/text.hpp"

namespace structure {

namespace {

using controls::kAssemblyImage;
using controls::kPartImage;
using controls::TreeView;

const std::string kSkipped = "Preskoceno radku: ";

// Whether the line is placed, or has nothing to place.
bool AddNode(TreeView& tree, const StructureLine& line) {
    const std::string text(line.part_number);
    switch (line.kind) {
    case LineKind::kNone:
        return true;
    case LineKind::kMalformed:
        return false;
    case LineKind::kTop:
        if (tree.HasKey(line.part_number)) {
            return false;
        }
        tree.AddRoot(line.part_number, text, kAssemblyImage);
        return true;
    case LineKind::kAssembly:
        if (!tree.HasKey(line.parent_path) || tree.HasKey(line.path)) {
            return false;
        }
        tree.AddChild(line.parent_path, line.path, text, kAssemblyImage);
        return true;
    case LineKind::kLeaf:
        if (!tree.HasKey(line.parent_path)) {
            return false;
        }
        tree.AddChild(line.parent_path, {}, text, kPartImage);
        return true;
    }
    return false;
}

} // namespace

SkippedLines FillTree(Form1& form) {
    TreeView& tree = form.TreeView1;
    tree.Clear();
    std::size_t line_number = 0;
    SkippedLines skipped;
    for (const std::string_view line : text::Split(text::TrimBlanks(form.Text1.Text()), "\r\n")) {
        ++line_number;
        if (!AddNode(tree, ParseStructureLine(line)) && skipped.count++ == 0) {
            skipped.first = line_number;
        }
    }
    for (std::size_t node = 1; node <= tree.Count(); ++node) {
        tree.SetExpanded(node, true);
        tree.SetChecked(node, true);
    }
    if (tree.Count() > 0) {
        tree.EnsureVisible(1);
    }
    return skipped;
}

void Command5_Click(Form1& form) {
    if (form.Text1.Text().empty()) {
        return;
    }
    const SkippedLines skipped = FillTree(form);
    if (skipped.count > 0) {
        shell::stat(form, kSkipped + std::to_string(skipped.count) + " prvni je radek " +
                              std::to_string(skipped.first));
    } else if (form.StatusBar1.PanelText(1).starts_with(kSkipped)) {
        shell::stat(form, ""); // what it says is mended
    }
}

void TreeView1_NodeCheck(Form1& form, std::size_t node) {
    TreeView& tree = form.TreeView1;
    const bool checked = tree.Node(node).checked;
    const std::string path = tree.FullPath(node);
    const std::string prefix = path + std::string(TreeView::kPathSeparator);

    // A path that contains the prefix hands it on to every path below it. The search is for the
    // prefix anywhere: nodes elsewhere in the tree whose paths merely contain it change too.
    std::vector<bool> contains(tree.Count() + 1);
    for (std::size_t other = 1; other <= tree.Count(); ++other) {
        bool same_path = false;
        if (contains[tree.Node(other).parent]) {
            contains[other] = true;
        } else {
            const std::string other_path = tree.FullPath(other);
            contains[other] = other_path.find(prefix) != std::string::npos;
            same_path = other_path == path;
        }
        if (contains[other] || same_path) {
            tree.SetChecked(other, checked);
        }
    }
}

} // namespace structure
