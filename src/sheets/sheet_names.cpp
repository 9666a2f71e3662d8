#include "sheets/sheet_names.hpp"

#include "automation/run_time_error.hpp"
#include "sheets/sheet_action.hpp"

namespace sheets {

namespace {

constexpr std::size_t kListSlots = 500;
constexpr std::size_t kDrawingSlots = 100;
constexpr const char* kAssembly = "1.Sestava";

void Put(NameTable& table, std::size_t slot, std::string name) {
    if (slot > table.slots.size()) {
        throw automation::SubscriptOutOfRange();
    }
    table.slots[slot - 1] = std::move(name);
    ++table.names;
}

} // namespace

NameTable NamesForTheList(const controls::ListView& parts_list, bool first_is_assembly) {
    NameTable table{std::vector<std::string>(kListSlots)};
    if (first_is_assembly) {
        Put(table, 1, kAssembly);
    }
    std::size_t number = 1;
    for (std::size_t row = 1; row <= parts_list.Count(); ++row) {
        if (HasSheet(parts_list, row)) {
            Put(table, first_is_assembly ? row + 1 : row,
                std::to_string(++number) + "." + parts_list.Row(row).text);
        }
    }
    return table;
}

NameTable NamesForTheDrawing(const controls::ListView& parts_list, bool first_is_assembly) {
    NameTable table{std::vector<std::string>(kDrawingSlots)};
    if (first_is_assembly) {
        Put(table, 1, kAssembly);
    }
    for (std::size_t row = 1; row <= parts_list.Count(); ++row) {
        if (HasSheet(parts_list, row)) {
            const std::size_t slot = first_is_assembly ? row + 1 : row;
            Put(table, slot, std::to_string(slot) + "." + parts_list.Row(row).text);
        }
    }
    return table;
}

} // namespace sheets
