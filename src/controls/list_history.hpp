// What a list held before each change, so that changes can be taken back and made again. Nobody
// tells it of a change: it compares the list's content (rows, fields, checks, tags; not what stands
// in columns without a caption) with what it held when it was asked last. Where the rows come from
// is taken back with them; marks stay on the rows that stay.
#pragma once

#include <deque>
#include <memory>

#include "controls/list_view.hpp"

namespace controls {

class ListHistory {
  public:
    static constexpr std::size_t kSteps = 100;
    static constexpr std::size_t kLimit = std::size_t{64} << 20; // bytes that the steps may hold

    // `limit` is that of the bytes; one step is always kept.
    explicit ListHistory(ListView& list, std::size_t limit = kLimit) : list_(list), limit_(limit) {}
    ListHistory(const ListHistory&) = delete;
    ListHistory& operator=(const ListHistory&) = delete;

    // Keeps what has changed since the last time as a step of that name. Changes of the same run in
    // a row are one step; 0 is no run.
    void Note(const std::string& step, std::uint64_t run);
    // Keeps what is selected now as what was selected before the next change.
    void NoteSelection();
    // What the list holds is where it begins: there is nothing to take back.
    void Start();

    // The name of the step that Undo takes back and Redo makes again; nothing where there is none.
    [[nodiscard]] std::optional<std::string> UndoName() const { return NameOfLast(undo_); }
    [[nodiscard]] std::optional<std::string> RedoName() const { return NameOfLast(redo_); }
    // Bring back rows, checks, selection and current row. Do nothing where there is no step.
    void Undo() { Swap(undo_, redo_); }
    void Redo() { Swap(redo_, undo_); }

    // How often the content was found changed.
    [[nodiscard]] std::uint64_t Changes() const { return changes_; }

  private:
    using RowPtr = std::shared_ptr<const ListRow>;
    struct State {
        std::vector<RowPtr> rows;
        std::vector<bool> selected;
        std::optional<std::size_t> current;
        std::shared_ptr<const NameSet> source_names;
    };
    struct Step {
        std::string name;
        std::uint64_t run = 0;
        State state;           // of the list on the step's other side
        std::size_t bytes = 0; // that this state alone holds
    };

    static std::optional<std::string> NameOfLast(const std::deque<Step>& steps);
    [[nodiscard]] bool SameContent(const ListRow& left, const ListRow& right) const;
    [[nodiscard]] bool HasChanged() const;
    [[nodiscard]] State Take() const;
    // The bytes that go when `before`, the state before now, is dropped.
    [[nodiscard]] std::size_t BytesOfItsOwn(const State& before) const;
    void Swap(std::deque<Step>& from, std::deque<Step>& to);
    void DropWhatIsTooMuch();

    ListView& list_;
    std::size_t limit_;
    State now_;
    std::uint64_t seen_revision_ = 0;
    std::uint64_t seen_content_ = 0;
    std::uint64_t seen_selection_ = 0;
    std::uint64_t changes_ = 0;
    std::deque<Step> undo_;
    std::deque<Step> redo_;
    std::size_t bytes_ = 0; // of all steps to be taken back
};

} // namespace controls
