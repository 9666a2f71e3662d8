#include "partslist/list_update.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <unordered_map>

#include "partslist/partslist.hpp"
#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"

namespace partslist {

namespace {

using controls::ListRow;
using structure::CountedPart;

// The number that a position begins with; 0 where it is none, or one that nobody numbers up to.
std::uint32_t PositionNumber(const ListRow& row) {
    const std::string& position = controls::SubItemOf(row, kPosition);
    const std::string_view digits = text::TrimBlanks(position);
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() ? number : 0;
}

std::size_t HighestPosition(const std::vector<ListRow>& rows) {
    std::uint32_t highest = 0;
    for (const ListRow& row : rows) {
        highest = std::max(highest, PositionNumber(row));
    }
    return highest;
}

// Shows what was found in the list, and goes to the first row that is missing.
void Apply(Form1& form, const ListUpdate& update) {
    controls::ListView& list = form.ListView1;
    std::optional<std::size_t> first_missing;
    for (std::size_t row = 1; row <= update.rows.size(); ++row) {
        const RowUpdate& changed = update.rows[row - 1];
        if (list.SubItem(row, kQuantity) != changed.quantity) {
            list.SetSubItem(row, kQuantity, changed.quantity);
        }
        list.SetMarked(row, changed.marked);
        list.SetSelected(row, changed.selected);
        if (changed.selected && !first_missing) {
            first_missing = row;
        }
    }
    for (const NewRow& added : update.added) {
        const std::size_t row = list.Add(added.name);
        list.SetSubItem(row, kPosition, added.position);
        list.SetSubItem(row, kQuantity, added.quantity);
    }
    if (first_missing) {
        list.SetCurrentRow(first_missing);
        list.EnsureVisible(*first_missing);
    }
}

} // namespace

ListUpdate UpdatedList(const structure::CountedTree& tree, const controls::NameSet* before,
                       const std::vector<ListRow>& rows) {
    std::unordered_map<std::string_view, std::size_t> quantities; // of the tree's parts
    for (const auto* parts : {&tree.listed, &tree.others}) {
        for (const CountedPart& part : *parts) {
            quantities.emplace(part.name, part.quantity);
        }
    }
    std::unordered_map<std::string_view, std::size_t> rows_of; // how many a name has
    for (const ListRow& row : rows) {
        ++rows_of[row.text];
    }

    ListUpdate update;
    update.rows.reserve(rows.size());
    for (const ListRow& row : rows) {
        RowUpdate changed{.quantity = controls::SubItemOf(row, kQuantity)};
        const auto found = quantities.find(row.text);
        if (found == quantities.end()) {
            const bool was_there = before != nullptr && before->contains(row.text);
            changed.selected = was_there;
            changed.marked = was_there || before == nullptr;
            update.missing += changed.marked ? 1 : 0;
        } else if (rows_of[row.text] > 1) {
            changed.marked = true;
            ++update.ambiguous;
        } else if (std::string quantity = std::to_string(found->second);
                   quantity != changed.quantity) {
            changed.quantity = std::move(quantity);
            ++update.changed;
        }
        update.rows.push_back(std::move(changed));
    }

    std::size_t position = HighestPosition(rows);
    for (const CountedPart& part : tree.listed) {
        if (!rows_of.contains(part.name)) {
            update.added.push_back(
                {part.name, text::FourDigits(++position), std::to_string(part.quantity)});
        }
    }
    return update;
}

void Command39_Click(Form1& form) {
    if (form.TreeView1.Count() == 0) {
        shell::Refuse(form, "Strom je prazdny");
        return;
    }
    controls::ListView& list = form.ListView1;
    const structure::CountedTree tree = structure::CountParts(form.TreeView1);
    const bool knows_before = list.SourceNames() != nullptr;
    const ListUpdate update = UpdatedList(tree, list.SourceNames().get(), list.Rows());
    Apply(form, update);
    list.SetSourceNames(structure::NamesOf(tree));
    shell::ShowRowCount(form);
    shell::stat(form, "Aktualizovano: zmeneno " + std::to_string(update.changed) + ", novych " +
                          std::to_string(update.added.size()) + ", chybi " +
                          std::to_string(update.missing));
    if (update.missing > 0 || update.ambiguous > 0) {
        shell::Explain(form, shell::RowsMarked({.missing = update.missing,
                                                .knows_before = knows_before,
                                                .ambiguous = update.ambiguous}));
    }
}

} // namespace partslist
