#include "text/clipboard_cells.hpp"

#include "text/text.hpp"

namespace text {

namespace {

constexpr std::string_view kNeedsQuotes = "\t\r\n\"";

// Whether a cell can end at `at`.
bool EndsCell(std::string_view whole, std::size_t at) {
    return at >= whole.size() || whole[at] == '\t' || whole[at] == '\n' ||
           whole.substr(at, 2) == "\r\n";
}

struct ReadCell {
    std::string cell;
    std::size_t end = 0;
};

ReadCell ReadPlainCell(std::string_view whole, std::size_t begin) {
    std::size_t end = begin;
    while (!EndsCell(whole, end)) {
        ++end;
    }
    return {std::string(whole.substr(begin, end - begin)), end};
}

ReadCell ReadClipboardCell(std::string_view whole, std::size_t begin) {
    if (begin >= whole.size() || whole[begin] != '"') {
        return ReadPlainCell(whole, begin);
    }
    std::string cell;
    for (std::size_t at = begin + 1; at < whole.size(); ++at) {
        if (whole[at] != '"') {
            cell += whole[at];
        } else if (whole.substr(at, 2) == "\"\"") {
            cell += '"';
            ++at;
        } else if (EndsCell(whole, at + 1) &&
                   cell.find_first_of(kNeedsQuotes) != std::string::npos) {
            return {WithLineFeeds(cell), at + 1};
        } else {
            break;
        }
    }
    return ReadPlainCell(whole, begin);
}

// What is left of a text when blanks, quotes and the ends of cells and lines are gone.
std::string BareText(std::string whole) {
    std::erase_if(
        whole, [](char c) { return std::string_view(" \t\r\n\"").find(c) != std::string::npos; });
    return whole;
}

} // namespace

std::string ClipboardCell(std::string_view cell) {
    if (cell.find_first_of(kNeedsQuotes) == std::string_view::npos) {
        return std::string(cell);
    }
    std::string quoted = "\"";
    for (const char c : cell) {
        quoted.append(c == '"' ? 2 : 1, c);
    }
    return quoted + '"';
}

std::vector<std::vector<std::string>> ClipboardCells(std::string_view whole) {
    std::vector<std::vector<std::string>> rows;
    std::size_t at = 0;
    bool in_row = false;
    while (at < whole.size() || in_row) {
        if (!in_row) {
            rows.emplace_back();
        }
        ReadCell read = ReadClipboardCell(whole, at);
        rows.back().push_back(std::move(read.cell));
        at = read.end;
        in_row = at < whole.size() && whole[at] == '\t';
        if (in_row) {
            ++at;
        } else if (at < whole.size()) {
            at += whole[at] == '\r' ? 2 : 1;
        }
    }
    return rows;
}

std::string TextWithLineBreaks(std::string plain, std::string with_line_breaks) {
    return BareText(plain) == BareText(with_line_breaks) ? std::move(with_line_breaks)
                                                         : std::move(plain);
}

} // namespace text
