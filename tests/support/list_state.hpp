// A list view as plain values, to be compared with what it becomes.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "controls/list_view.hpp"
#include "tests/support/headless_form.hpp"

namespace testing_support {

struct RowState {
    std::uint64_t id = 0;
    std::vector<std::string> texts; // the name, then the sub-items by their numbers
    std::string tag;
    bool checked = false;
    bool selected = false;

    // The same row but for its id.
    [[nodiscard]] bool SameAs(const RowState& other) const {
        return texts == other.texts && tag == other.tag && checked == other.checked;
    }
};

struct ListState {
    std::vector<RowState> rows;
    std::optional<std::size_t> current; // counted from 1
};

inline ListState StateOf(const controls::ListView& list) {
    ListState state;
    state.current = list.CurrentRow();
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        const controls::ListRow& shown = list.Row(row);
        state.rows.push_back({.id = shown.id,
                              .texts = RowTexts(list, row),
                              .tag = shown.tag,
                              .checked = shown.checked,
                              .selected = shown.selected});
    }
    return state;
}

} // namespace testing_support
