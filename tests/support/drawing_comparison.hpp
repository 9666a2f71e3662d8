// Holds the simulated drawing against the lists of the form: every action that says it has brought
// them together is looked after, from what stood in the lists when its button was pressed. What
// should be in the drawing is put together here, from the lists and the texts of the form alone.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "simulator/quoted.hpp"
#include "tests/support/headless_form.hpp"

namespace testing_support {

using Strings = std::vector<std::string>;

// A drawing's tables, each as the cells of its rows from the top; a row is its cells in double
// quotes, a blank between them.
inline std::vector<Strings> Tables(std::string_view drawing) {
    constexpr std::string_view kCells = " cells ";
    std::vector<Strings> tables;
    for (const std::string_view line : text::Lines(drawing)) {
        const std::string_view statement = text::TrimBlanks(line);
        if (statement.starts_with("table ")) {
            tables.emplace_back();
        } else if (statement.starts_with("row ") && !tables.empty()) {
            tables.back().emplace_back(line.substr(line.find(kCells) + kCells.size()));
        }
    }
    return tables;
}

// The tables that were not there before, or not with these texts.
inline std::vector<Strings> NewTables(std::vector<Strings> before,
                                      const std::vector<Strings>& after) {
    std::vector<Strings> added;
    for (const Strings& table : after) {
        if (const auto known = std::ranges::find(before, table); known != before.end()) {
            before.erase(known);
        } else {
            added.push_back(table);
        }
    }
    return added;
}

// The names of a drawing's sheets in their order, in double quotes.
inline Strings QuotedSheetNames(std::string_view drawing) {
    constexpr std::string_view kSheet = "sheet ";
    Strings names;
    for (const std::string_view line : text::Lines(drawing)) {
        if (line.starts_with(kSheet)) {
            names.emplace_back(
                line.substr(kSheet.size(), line.rfind("\" size ") + 1 - kSheet.size()));
        }
    }
    return names;
}

inline Strings Quoted(const Strings& texts) {
    Strings quoted;
    std::ranges::transform(texts, std::back_inserter(quoted), simulator::Quoted);
    return quoted;
}

inline std::string RowOfCells(const Strings& texts) {
    std::string row;
    for (const std::string& cell : Quoted(texts)) {
        row += (row.empty() ? "" : " ") + cell;
    }
    return row;
}

// The values of the lines of a configuration with that key; nothing where there is not exactly one.
inline std::optional<Strings> OnlyLine(std::string_view configuration, std::string_view key) {
    std::optional<Strings> values;
    for (const std::string_view line : text::Split(configuration, "\r\n")) {
        const auto fields = text::Split(line, ";");
        if (fields[0] != key) {
            continue;
        }
        if (values) {
            return std::nullopt;
        }
        values.emplace(fields.begin() + 1, fields.end());
    }
    return values;
}

// What a position is in its cell, a number: nothing where it is more than some digits, which may
// read in several ways.
inline std::optional<std::string> PositionInItsCell(const std::string& position) {
    constexpr std::size_t kMostDigits = 9;
    const std::size_t digits = std::min(position.find_first_not_of("0123456789"), position.size());
    const std::string after = position.substr(digits, 1);
    if (digits == 0) {
        return position.find_first_of(" +-.") == 0 ? std::nullopt : std::optional("0");
    }
    if (digits > kMostDigits || after == "." || after == "e" || after == "E") {
        return std::nullopt;
    }
    return std::to_string(std::stoul(position.substr(0, digits)));
}

// Whether a row of a table has these texts; any position where there is none to expect.
inline bool IsRowOf(const std::string& drawn, Strings texts,
                    const std::optional<std::string>& position) {
    if (position) {
        return drawn == RowOfCells(texts);
    }
    texts.erase(texts.begin());
    return drawn.ends_with(" " + RowOfCells(texts));
}

// The fields of a parts-list row in the order of a table's columns: position, name, quantity, size,
// material, note, sheet.
inline Strings InColumnOrder(const Strings& part) {
    Strings ordered;
    for (const std::size_t field : {1U, 0U, 2U, 5U, 4U, 6U, 3U}) {
        ordered.push_back(part.at(field));
    }
    return ordered;
}

// A parts list as it should stand in a table: the header, empty rows, and the list from the bottom
// up. Says what differs; empty where nothing does. Without a header, any is right.
inline std::string TableDifference(const Strings& drawn, const std::optional<Strings>& header,
                                   const std::vector<Strings>& parts) {
    const auto differs = [](std::size_t row, const std::string& is, const std::string& should_be) {
        return "row " + std::to_string(row) + " of the table is\n  " + is + "\nand should be\n  " +
               should_be;
    };
    if (drawn.size() < parts.size() + 1) {
        return "the table has " + std::to_string(drawn.size()) + " rows, the list has " +
               std::to_string(parts.size());
    }
    if (header && drawn.front() != RowOfCells(*header)) {
        return differs(1, drawn.front(), RowOfCells(*header));
    }
    const std::string empty = RowOfCells(Strings(7));
    for (std::size_t row = 2; row <= drawn.size() - parts.size(); ++row) {
        if (drawn[row - 1] != empty) {
            return differs(row, drawn[row - 1], empty);
        }
    }
    for (std::size_t part = 1; part <= parts.size(); ++part) {
        const std::size_t row = drawn.size() + 1 - part;
        Strings texts = InColumnOrder(parts[part - 1]);
        const auto position = PositionInItsCell(texts[0]);
        texts[0] = position.value_or(texts[0]);
        if (!IsRowOf(drawn[row - 1], texts, position)) {
            return differs(row, drawn[row - 1], RowOfCells(texts));
        }
    }
    return {};
}

// A drawing's sheets after the ticked rows with a new name have given it to theirs: the planned
// ones are new sheets at the end.
struct SheetPlan {
    std::string name;
    std::string new_name;
    bool ticked = false;
};
inline Strings RenamedSheets(Strings quoted_names, const std::vector<SheetPlan>& plans) {
    for (const SheetPlan& plan : plans) {
        if (!plan.ticked || plan.new_name.empty()) {
            continue;
        }
        const std::string new_name = simulator::Quoted(plan.new_name);
        const auto sheet = std::ranges::find(quoted_names, simulator::Quoted(plan.name));
        if (plan.name == "Nový" || sheet == quoted_names.end()) {
            quoted_names.push_back(new_name);
        } else {
            *sheet = new_name;
        }
    }
    return quoted_names;
}

namespace comparison {

inline std::vector<Strings> Rows(const controls::ListView& list) {
    std::vector<Strings> rows;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        rows.push_back(RowTexts(list, row));
    }
    return rows;
}

// What is compared after an action; made before it, with what stands in the form then.
using Check = std::function<void(const std::string& drawing)>;

inline Check CreatedTable(HeadlessForm& headless, const std::string& drawing, bool whole_list) {
    const std::string& configuration = headless.form.Text2.Text();
    if (configuration.find("/volny;-") != std::string::npos) {
        return {}; // the list stands over the header
    }
    auto header = OnlyLine(configuration, "/hlavicka");
    if (header) {
        header->resize(7);
    }
    std::vector<Strings> parts = Rows(headless.form.ListView1);
    if (whole_list) {
        if (OnlyLine(configuration, "/razeni") != Strings{"1", "0", "2", "5", "4", "6", "3"}) {
            return {};
        }
    } else {
        const std::size_t current = headless.form.ListView1.CurrentRow().value_or(1);
        parts = {parts.at(current - 1)};
        parts.front().at(controls::kSheet).clear();
    }
    return [=, before = Tables(drawing)](const std::string& after) {
        std::string differences;
        for (const Strings& table : NewTables(before, Tables(after))) {
            const std::string difference = TableDifference(table, header, parts);
            if (difference.empty() && (whole_list || table.size() == 2)) {
                return;
            }
            differences += difference + "\n";
        }
        ADD_FAILURE() << "The drawing has no new table of the parts list:\n"
                      << differences << after;
    };
}

inline Check RenamedFromTheList(HeadlessForm& headless, const std::string& drawing) {
    const controls::ListView& list = headless.form.ListView3;
    std::vector<SheetPlan> plans;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        plans.push_back({.name = list.Row(row).text,
                         .new_name = list.SubItem(row, controls::kNewName),
                         .ticked = list.Row(row).checked});
    }
    return [expected = RenamedSheets(QuotedSheetNames(drawing), plans)](const std::string& after) {
        EXPECT_EQ(QuotedSheetNames(after), expected) << "The drawing's sheets are not as planned.";
    };
}

inline Check LoadedSheets(HeadlessForm& headless) {
    return [&headless](const std::string& after) {
        EXPECT_EQ(Quoted(Column(headless.form.ListView3, 0)), QuotedSheetNames(after))
            << "The sheet list is not what the drawing holds.";
    };
}

inline Check OrderedFromTheList(HeadlessForm& headless) {
    return [loaded = LoadedSheets(headless),
            order = Quoted(Column(headless.form.ListView3, 0))](const std::string& after) {
        EXPECT_EQ(QuotedSheetNames(after), order)
            << "The drawing's sheets are not in the order that the list had.";
        loaded(after);
    };
}

// Has `prepare` look at the form before each run of an action, and runs what it returns where the
// action has ended with its success text.
inline void
Watch(HeadlessForm& headless, controls::Event<>& click, const std::string& success,
      const std::function<Check(HeadlessForm& headless, const std::string& drawing)>& prepare) {
    click = [&headless, success, prepare, action = std::move(click)] {
        const simulator::Session* session = headless.servers.session;
        if (session == nullptr) {
            action();
            return;
        }
        const std::string document = session->ActiveDocumentName();
        const Check check = headless.form.ListView1.Count() + headless.form.ListView3.Count() > 0
                                ? prepare(headless, session->DrawingAsText(document))
                                : Check();
        const std::size_t announced = headless.messages.size();
        action();
        // An action with nothing to do leaves the status line as it is.
        if (check && headless.messages.size() > announced &&
            headless.Status().starts_with(success)) {
            check(session->DrawingAsText(document));
        }
    };
}

} // namespace comparison

// From now on the actions of `headless` are looked after.
inline void CompareWithDrawing(HeadlessForm& headless) {
    using namespace comparison;
    controls::Form1& form = headless.form;
    for (const auto& [click, whole_list] : {std::pair{&form.Command11.Click, true},
                                            {&form.Command7.Click, false},
                                            {&form.m_poslat_jako_tabulku.Click, false}}) {
        Watch(headless, *click, "Tabulka vytvorena Ok ",
              [whole = whole_list](HeadlessForm& pressed, const std::string& drawing) -> Check {
                  return pressed.form.ListView1.Count() == 0
                             ? Check()
                             : CreatedTable(pressed, drawing, whole);
              });
    }
    Watch(headless, form.Command23.Click, "Prejmenovano: ", RenamedFromTheList);
    Watch(headless, form.Command21.Click, "Sheets nacteny: ",
          [](HeadlessForm& pressed, const std::string&) { return LoadedSheets(pressed); });
    Watch(headless, form.Command34.Click, "Sheets nacteny: ",
          [](HeadlessForm& pressed, const std::string&) { return OrderedFromTheList(pressed); });
}

} // namespace testing_support
