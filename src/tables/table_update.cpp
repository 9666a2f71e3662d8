#include "tables/table_update.hpp"

#include <algorithm>

#include "tables/table_rows.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

using enum controls::PartField;

// How many of the rows directly under the header are empty.
std::size_t FreeRows(const std::vector<CellTexts>& table) {
    const auto filled = std::find_if_not(table.begin() + 1, table.end(), IsEmpty);
    return static_cast<std::size_t>(filled - table.begin()) - 1;
}

// How many of the last rows of the list are empty: they stand highest in the table, where nothing
// tells them from free rows.
std::size_t EmptyRowsAtTheEnd(const std::vector<CellTexts>& rows) {
    return static_cast<std::size_t>(std::find_if_not(rows.rbegin(), rows.rend(), IsEmpty) -
                                    rows.rbegin());
}

// Compares and writes the texts of cells, column by column.
class CellRules {
  public:
    CellRules(const WantedTable& wanted, const std::vector<CellTexts>& table, std::size_t first_row)
        : wanted_(wanted) {
        for (std::size_t column = 0; column < kColumns; ++column) {
            with_sign_.at(column) =
                wanted.fields.at(column) == kSize &&
                std::any_of(table.begin() + static_cast<std::ptrdiff_t>(first_row), table.end(),
                            [&](const CellTexts& row) {
                                return row.at(column).starts_with(wanted.diameter_sign);
                            });
        }
    }

    // Whether a cell that holds `text` may stay where `value` is wanted.
    [[nodiscard]] bool IsRight(const std::string& text, const std::string& value,
                               std::size_t column) const {
        if (text == value) {
            return true;
        }
        switch (wanted_.fields.at(column)) {
        case kSize:
            return text == WithDiameterSign(value, wanted_.diameter_sign);
        case kPosition: {
            // A number that was written became a text in the language of whoever converted it.
            std::string plain = text;
            std::ranges::replace(plain, ',', '.');
            return plain == value;
        }
        default:
            return false;
        }
    }

    // The diameter sign goes where the table has it in that column.
    [[nodiscard]] std::string Written(const std::string& value, std::size_t column) const {
        return with_sign_.at(column) ? WithDiameterSign(value, wanted_.diameter_sign) : value;
    }

  private:
    const WantedTable& wanted_;
    std::array<bool, kColumns> with_sign_{};
};

// The cells of a row that differ, those to be emptied last: at no moment is a row empty that holds
// something before and after.
void AddDifferences(std::vector<CellChange>& cells, const CellRules& rules, const CellTexts& is,
                    const CellTexts& wanted, int row) {
    for (const bool emptied : {false, true}) {
        for (std::size_t column = 0; column < kColumns; ++column) {
            const std::string& value = wanted.at(column);
            if (value.empty() == emptied && !rules.IsRight(is.at(column), value, column)) {
                cells.push_back({.row = row,
                                 .column = static_cast<int>(column) + 1,
                                 .text = rules.Written(value, column)});
            }
        }
    }
}

CellTexts WrittenRow(const CellRules& rules, const CellTexts& row) {
    CellTexts written;
    for (std::size_t column = 0; column < kColumns; ++column) {
        written.at(column) = rules.Written(row.at(column), column);
    }
    return written;
}

} // namespace

bool IsEmpty(const CellTexts& row) {
    return std::ranges::all_of(row, &std::string::empty);
}

WantedTable TableWanted(const Parts& parts, const Configuration& configuration,
                        std::string diameter_sign) {
    WantedTable wanted;
    wanted.diameter_sign = std::move(diameter_sign);
    for (std::size_t column = 0; column < kColumns; ++column) {
        wanted.headings.at(column) = text::WithLineFeeds(configuration.headers.at(column));
        wanted.fields.at(column) = FieldOf(configuration.column_order.at(column));
    }
    wanted.rows.reserve(parts.rows.size());
    for (const PartTexts& part : parts.rows) {
        CellTexts& row = wanted.rows.emplace_back();
        for (std::size_t column = 0; column < kColumns; ++column) {
            row.at(column) = text::WithLineFeeds(
                TextInCell(CellValue(part, configuration.column_order.at(column))));
        }
    }
    return wanted;
}

TableUpdate UpdateOfTable(const std::vector<CellTexts>& table, const WantedTable& wanted) {
    const std::size_t free_rows = FreeRows(table);
    const std::size_t first = 1 + free_rows; // of the rows with data, counted from 0
    const std::size_t there = table.size() - first;
    std::vector<CellTexts> rows = wanted.rows;
    if (rows.empty() && free_rows == 0 && there > 0) {
        rows.emplace_back(); // what stays of the table beside its header
    }

    const CellRules rules(wanted, table, first);
    TableUpdate update;
    const std::size_t staying = std::min(there, rows.size());
    const std::size_t in_free_rows =
        std::min({EmptyRowsAtTheEnd(rows), free_rows, rows.size() - staying});
    update.added_rows.reserve(rows.size() - in_free_rows - staying);
    for (std::size_t row = staying; row < rows.size() - in_free_rows; ++row) {
        update.added_rows.push_back(WrittenRow(rules, rows[row]));
    }
    for (std::size_t row = 0; row < staying; ++row) {
        const std::size_t place = table.size() - 1 - row;
        AddDifferences(update.cells, rules, table[place], rows[row],
                       static_cast<int>(place + update.added_rows.size()) + 1);
    }
    // The highest one last: as long as it stands there, no empty row below it becomes a free one.
    for (std::size_t row = there; row > staying; --row) {
        update.removed_rows.push_back(static_cast<int>(first + row - staying));
    }
    update.new_row = static_cast<int>(first) + 1;
    update.row_beside = static_cast<int>(there > 0 ? first + 1 : first);
    return update;
}

} // namespace tables
