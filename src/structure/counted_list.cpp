#include <unordered_map>

#include "shell/shell.hpp"
#include "structure/counted_parts.hpp"
#include "structure/structure.hpp"
#include "text/text.hpp"

namespace structure {

namespace {

using enum controls::PartField;

constexpr std::size_t kSummaryQuantity = 1;

} // namespace

CountedTree CountParts(const controls::TreeView& tree) {
    struct Part {
        std::size_t nodes = 0;
        bool listed = false;
        bool met = false; // as a part
    };
    std::unordered_map<std::string_view, Part> parts;
    std::vector<std::string_view> listed;
    std::vector<std::string_view> met;
    for (std::size_t number = 1; number <= tree.Count(); ++number) {
        const controls::TreeNode& node = tree.Node(number);
        Part& part = parts[node.text];
        ++part.nodes;
        if (node.image != controls::kPartImage) {
            continue;
        }
        if (!part.met) {
            part.met = true;
            met.push_back(node.text);
        }
        if (node.checked && !part.listed) {
            part.listed = true;
            listed.push_back(node.text);
        }
    }
    CountedTree counted;
    counted.listed.reserve(listed.size());
    for (const std::string_view name : listed) {
        counted.listed.push_back({std::string(name), parts[name].nodes});
    }
    counted.others.reserve(met.size() - listed.size());
    for (const std::string_view name : met) {
        if (const Part& part = parts[name]; !part.listed) {
            counted.others.push_back({std::string(name), part.nodes});
        }
    }
    return counted;
}

controls::NameSet NamesOf(const CountedTree& counted) {
    controls::NameSet names;
    for (const std::vector<CountedPart>* parts : {&counted.listed, &counted.others}) {
        for (const CountedPart& part : *parts) {
            names.insert(part.name);
        }
    }
    return names;
}

void Command4_Click(Form1& form) {
    if (form.TreeView1.Count() == 0) {
        return;
    }
    shell::SetMousePointer(form, controls::MousePointer::kHourglass);
    form.ListView1.Clear();
    form.ListView2.Clear();

    const CountedTree counted = CountParts(form.TreeView1);
    for (const CountedPart& part : counted.listed) {
        form.ListView1.Add(part.name);
        form.ListView2.Add(part.name);
    }
    form.ListView1.SetSourceNames(NamesOf(counted));
    shell::ShowRowCount(form);

    for (std::size_t row = 1; row <= counted.listed.size(); ++row) {
        const std::string quantity = std::to_string(counted.listed[row - 1].quantity);
        form.ListView1.SetSubItem(row, kQuantity, quantity);
        form.ListView2.SetSubItem(row, kSummaryQuantity, quantity);
        form.ListView1.SetSubItem(row, kPosition, text::FourDigits(row));
    }
    shell::SetMousePointer(form, controls::MousePointer::kDefault);
}

} // namespace structure
