#include "controls/list_history.hpp"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace controls {

namespace {

constexpr std::size_t kTreeNode = 4 * sizeof(void*); // of a set, beside what it holds

std::size_t HeapBytes(const std::string& text) {
    return text.capacity() > std::string().capacity() ? text.capacity() + 1 : 0;
}

std::size_t Bytes(const ListRow& row) {
    std::size_t bytes = sizeof row + row.sub_items.capacity() * sizeof(std::string) +
                        HeapBytes(row.text) + HeapBytes(row.tag);
    for (const std::string& field : row.sub_items) {
        bytes += HeapBytes(field);
    }
    return bytes;
}

} // namespace

std::optional<std::string> ListHistory::NameOfLast(const std::deque<Step>& steps) {
    if (steps.empty()) {
        return std::nullopt;
    }
    return steps.back().name;
}

bool ListHistory::SameContent(const ListRow& left, const ListRow& right) const {
    if (left.checked != right.checked || left.text != right.text || left.tag != right.tag) {
        return false;
    }
    const auto& columns = list_.Columns();
    for (std::size_t column = 1; column < columns.size(); ++column) {
        if (!columns[column].empty() && SubItemOf(left, column) != SubItemOf(right, column)) {
            return false;
        }
    }
    return true;
}

bool ListHistory::HasChanged() const {
    if (list_.Count() != now_.rows.size()) {
        return true;
    }
    for (std::size_t row = 1; row <= list_.Count(); ++row) {
        if (!SameContent(list_.Row(row), *now_.rows[row - 1])) {
            return true;
        }
    }
    return false;
}

// Rows that are as they were are shared with the state before.
ListHistory::State ListHistory::Take() const {
    std::unordered_map<std::uint64_t, const RowPtr*> moved; // looked at where rows have moved
    const auto before = [&](std::size_t index, const ListRow& row) -> const RowPtr* {
        if (index < now_.rows.size() && now_.rows[index]->id == row.id) {
            return &now_.rows[index];
        }
        if (moved.empty()) {
            for (const RowPtr& kept : now_.rows) {
                moved.emplace(kept->id, &kept);
            }
        }
        const auto found = moved.find(row.id);
        return found == moved.end() ? nullptr : found->second;
    };
    State state;
    state.source_names = list_.SourceNames();
    state.rows.reserve(list_.Count());
    for (std::size_t index = 0; index < list_.Count(); ++index) {
        const ListRow& row = list_.Row(index + 1);
        const RowPtr* kept = before(index, row);
        if (kept != nullptr && SameContent(**kept, row)) {
            state.rows.push_back(*kept);
        } else {
            auto copy = std::make_shared<ListRow>(row);
            copy->selected = false;
            copy->marked = false;
            state.rows.push_back(std::move(copy));
        }
    }
    return state;
}

std::size_t ListHistory::BytesOfItsOwn(const State& before) const {
    std::unordered_set<const ListRow*> shared; // looked at where rows have moved
    std::size_t bytes = before.rows.size() * (sizeof(RowPtr) + 1);
    for (std::size_t index = 0; index < before.rows.size(); ++index) {
        const ListRow* row = before.rows[index].get();
        if (index < now_.rows.size() && now_.rows[index].get() == row) {
            continue;
        }
        if (shared.empty()) {
            for (const RowPtr& kept : now_.rows) {
                shared.insert(kept.get());
            }
        }
        bytes += shared.contains(row) ? 0 : Bytes(*row);
    }
    if (before.source_names && before.source_names != now_.source_names) {
        for (const std::string& name : *before.source_names) {
            bytes += sizeof(std::string) + kTreeNode + HeapBytes(name);
        }
    }
    return bytes;
}

void ListHistory::NoteSelection() {
    if (list_.Count() != now_.rows.size()) {
        return; // the rows have changed already: this is not how they were selected before
    }
    now_.current = list_.CurrentRow();
    now_.source_names = list_.SourceNames();
    if (now_.selected.size() == list_.Count() && seen_selection_ == list_.SelectionRevision()) {
        return;
    }
    seen_selection_ = list_.SelectionRevision();
    now_.selected.resize(list_.Count());
    for (std::size_t index = 0; index < list_.Count(); ++index) {
        now_.selected[index] = list_.Row(index + 1).selected;
    }
}

void ListHistory::Note(const std::string& step, std::uint64_t run) {
    if (list_.Revision() == seen_revision_) {
        return;
    }
    seen_revision_ = list_.Revision();
    if (list_.ContentRevision() != std::exchange(seen_content_, list_.ContentRevision()) &&
        HasChanged()) {
        State taken = Take();
        State before = std::exchange(now_, std::move(taken));
        ++changes_;
        redo_.clear();
        if (undo_.empty() || run == 0 || undo_.back().run != run) {
            const std::size_t bytes = BytesOfItsOwn(before);
            bytes_ += bytes;
            undo_.push_back({step, run, std::move(before), bytes});
            DropWhatIsTooMuch();
        }
    }
    NoteSelection();
}

void ListHistory::Start() {
    now_ = Take();
    NoteSelection();
    seen_revision_ = list_.Revision();
    seen_content_ = list_.ContentRevision();
    undo_.clear();
    redo_.clear();
    bytes_ = 0;
}

void ListHistory::Swap(std::deque<Step>& from, std::deque<Step>& to) {
    Note({}, 0); // the selection of now, and what nobody has noted yet
    if (from.empty()) {
        return;
    }
    Step step = std::move(from.back());
    from.pop_back();
    std::unordered_set<std::uint64_t> marked;
    for (const ListRow& row : list_.Rows()) {
        if (row.marked) {
            marked.insert(row.id);
        }
    }
    std::vector<ListRow> rows;
    rows.reserve(step.state.rows.size());
    for (std::size_t index = 0; index < step.state.rows.size(); ++index) {
        rows.push_back(*step.state.rows[index]);
        rows.back().selected = step.state.selected[index];
        rows.back().marked = marked.contains(rows.back().id);
    }
    list_.Replace(std::move(rows), step.state.current);
    list_.SetSourceNames(step.state.source_names);
    seen_revision_ = list_.Revision();
    seen_content_ = list_.ContentRevision();
    ++changes_;
    std::swap(now_, step.state);
    bytes_ = &from == &undo_ ? bytes_ - step.bytes : bytes_ + step.bytes;
    step.run = 0; // what the same run does now is another step
    to.push_back(std::move(step));
}

void ListHistory::DropWhatIsTooMuch() {
    while (undo_.size() > kSteps || (undo_.size() > 1 && bytes_ > limit_)) {
        bytes_ -= undo_.front().bytes;
        undo_.pop_front();
    }
}

} // namespace controls
