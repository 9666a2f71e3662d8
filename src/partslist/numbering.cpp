#include "partslist/numbering.hpp"

#include "controls/form1.hpp"
#include "text/text.hpp"

namespace partslist {

void NumberPositions(controls::ListView& list) {
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        list.SetSubItem(row, controls::kPosition, text::FourDigits(row));
    }
}

void NumberSheets(controls::ListView& list) {
    std::size_t sheet = 1;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        list.SetSubItem(row, controls::kSheet,
                        list.Row(row).checked ? std::to_string(++sheet) : "");
    }
}

void NumberRows(controls::ListView& list) {
    NumberPositions(list);
    NumberSheets(list);
}

} // namespace partslist
