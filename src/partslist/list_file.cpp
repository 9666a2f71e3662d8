#include "partslist/list_file.hpp"

#include "automation/run_time_error.hpp"
#include "text/text.hpp"

namespace partslist {

namespace {

constexpr std::string_view kSeparator = "@@";

bool ReadChecked(std::string_view field) {
    if (text::EqualsIgnoringCase(field, "True")) {
        return true;
    }
    if (text::EqualsIgnoringCase(field, "False")) {
        return false;
    }
    const auto number = text::Number(field);
    if (!number) {
        throw automation::TypeMismatch();
    }
    return *number != 0;
}

} // namespace

std::string WriteListFile(const controls::ListView& list) {
    std::string file;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        file += list.Row(row).text;
        file += kSeparator;
        file += list.Row(row).checked ? "True" : "False";
        for (std::size_t sub_item = 1; sub_item < list.Columns().size(); ++sub_item) {
            file += kSeparator;
            file += list.SubItem(row, sub_item);
        }
        file += "\r\n";
    }
    return file;
}

void ReadListFile(std::string_view file, controls::ListView& list) {
    for (const std::string_view line : text::Lines(file)) {
        if (line.empty()) {
            throw automation::SubscriptOutOfRange();
        }
        const auto fields = text::Split(line, kSeparator);
        const std::size_t row = list.Add(std::string(fields[0]));
        if (fields.size() < 2) {
            throw automation::SubscriptOutOfRange();
        }
        list.SetChecked(row, ReadChecked(fields[1]));
        for (std::size_t field = 2; field < fields.size(); ++field) {
            list.SetSubItem(row, field - 1, std::string(fields[field]));
        }
    }
}

} // namespace partslist
