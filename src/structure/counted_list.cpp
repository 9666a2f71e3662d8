#include <unordered_map>

#include "shell/shell.hpp"
#include "structure/structure.hpp"
#include "text/text.hpp"

namespace structure {

namespace {

using enum controls::PartField;

constexpr std::size_t kSummaryQuantity = 1;

} // namespace

void Command4_Click(Form1& form) {
    const controls::TreeView& tree = form.TreeView1;
    if (tree.Count() == 0) {
        return;
    }
    shell::SetMousePointer(form, controls::MousePointer::kHourglass);
    form.ListView1.Clear();
    form.ListView2.Clear();

    // The check boxes decide which part numbers get a row; the quantity counts every node of that
    // text, checked or not, parts and assemblies alike.
    struct Part {
        std::size_t nodes = 0;
        bool listed = false;
    };
    std::unordered_map<std::string_view, Part> parts;
    for (std::size_t node = 1; node <= tree.Count(); ++node) {
        const controls::TreeNode& tree_node = tree.Node(node);
        Part& part = parts[tree_node.text];
        ++part.nodes;
        if (tree_node.checked && tree_node.image == controls::kPartImage && !part.listed) {
            part.listed = true;
            form.ListView1.Add(tree_node.text);
            form.ListView2.Add(tree_node.text);
        }
    }
    shell::ShowRowCount(form);

    for (std::size_t row = 1; row <= form.ListView1.Count(); ++row) {
        const std::string quantity = std::to_string(parts[form.ListView1.Row(row).text].nodes);
        form.ListView1.SetSubItem(row, kQuantity, quantity);
        form.ListView2.SetSubItem(row, kSummaryQuantity, quantity);
        form.ListView1.SetSubItem(row, kPosition, text::FourDigits(row));
    }
    shell::SetMousePointer(form, controls::MousePointer::kDefault);
}

} // namespace structure
