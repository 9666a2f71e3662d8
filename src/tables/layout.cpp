#include "tables/layout.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "automation/run_time_error.hpp"
#include "shell/explanations.hpp"
#include "tables/table_rows.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

constexpr std::string_view kUsualFont = "Arial";
constexpr std::string_view kTrueType = " (TrueType)"; // what CATIA adds

// What a text has around it in its cell, on each side.
constexpr double kCellMargin = 0.5;
// From one line of a text to the next, as part of the height of its letters.
constexpr double kLinePitch = 1.6;
// Of texts whose size cannot be set.
constexpr double kUnsetFontSize = 3.5;
constexpr double kLengthOfARoundingError = 1e-9;
// Beyond this, larger is all the same, and sums of such sizes stay finite.
constexpr double kLargestSize = 1e9;

constexpr int kLastAnchorCode = 8;
constexpr int kThickestLineIndex = 63;

struct Character {
    char32_t code = 0;
    std::size_t bytes = 1;
};

// The character at the beginning of a text that is not empty; a byte that begins none is one.
Character FirstCharacter(std::string_view text) {
    const auto byte = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned char first = byte(0);
    struct Lead {
        unsigned char mask;
        unsigned char value;
    };
    constexpr std::array kLeads{Lead{0x80, 0x00}, Lead{0xE0, 0xC0}, Lead{0xF0, 0xE0},
                                Lead{0xF8, 0xF0}};
    constexpr unsigned kBitsOfARest = 6;
    constexpr unsigned char kRestMask = 0xC0;
    constexpr unsigned char kRest = 0x80;
    for (std::size_t rest = 0; rest < kLeads.size() && rest < text.size(); ++rest) {
        const Lead& lead = kLeads.at(rest);
        if ((first & lead.mask) != lead.value) {
            continue;
        }
        Character character{static_cast<char32_t>(first & ~lead.mask), rest + 1};
        for (std::size_t at = 1; at <= rest; ++at) {
            if ((byte(at) & kRestMask) != kRest) {
                return {first, 1};
            }
            character.code =
                character.code << kBitsOfARest | static_cast<char32_t>(byte(at) & ~kRestMask);
        }
        return character;
    }
    return {first, 1};
}

// Where a line ends: CR LF, CR or LF. The bytes that it takes; 0 elsewhere.
std::size_t LineBreakAt(std::string_view text, std::size_t at) {
    if (text[at] == '\n') {
        return 1;
    }
    return text[at] != '\r' ? 0 : text.substr(at + 1).starts_with('\n') ? 2 : 1;
}

// Only the first trouble is what the creation would end with.
void Note(TableLayout& layout, const std::string& trouble) {
    if (layout.trouble.empty()) {
        layout.trouble = trouble;
    }
}

// The reading of the values, in the order that the creation hands them to CATIA.
class Reading {
  public:
    explicit Reading(TableLayout& layout) : layout_(layout) {}

    // `instead` is what stands in the table where CATIA refuses the value.
    double Length(const std::string& sent, const std::string& name, double instead) {
        const auto length = LengthOf(sent);
        if (!length) {
            Note(layout_, name + ": „" + sent + "“ není číslo.");
        } else if (*length < 0) {
            Note(layout_, name + " nesmí být záporná.");
        }
        return length && *length >= 0 ? std::min(*length, kLargestSize) : instead;
    }
    double FontSize(double size, const std::string& name) {
        if (size > 0) {
            return std::min(size, kLargestSize);
        }
        Note(layout_, name + " musí být větší než 0.");
        return kUnsetFontSize;
    }
    // Where none is given, what a new table has.
    int Code(const std::optional<double>& code, int first, int last, const std::string& name) {
        const double whole = std::nearbyint(code.value_or(first));
        if (whole >= first && whole <= last) {
            return static_cast<int>(whole);
        }
        Note(layout_, name + " je " + std::to_string(first) + " až " + std::to_string(last) + ".");
        return first;
    }

  private:
    TableLayout& layout_;
};

// The part that a row shows; null where it shows none.
const PartTexts* PartOf(const TableLayout& layout, int row) {
    if (row < layout.first_row_with_part) {
        return nullptr;
    }
    const auto& rows = layout.parts->rows;
    if (layout.content == TableContent::kCurrentRow) {
        const auto current = layout.parts->current;
        return current && *current < rows.size() ? &rows[*current] : nullptr;
    }
    const auto part = static_cast<std::size_t>(layout.rows - row);
    return part < rows.size() ? &rows[part] : nullptr;
}

// The text of a cell, and whether it lives in the layout already.
std::string_view CellText(const TableLayout& layout, const PartTexts* part, int row, int column,
                          std::string& buffer) {
    const auto index = static_cast<std::size_t>(column - 1);
    if (part == nullptr) {
        return row == 1 ? std::string_view(layout.headers.at(index)) : std::string_view();
    }
    const auto field = layout.fields.at(index);
    if (!field) {
        return {};
    }
    if (*field != controls::kPosition) {
        return (*part)[*field];
    }
    buffer = TextInCell(FieldValue(*part, *field));
    return buffer;
}

double FontSizeOf(const TableLayout& layout, int row) {
    return row == 1 ? layout.header_font_size : layout.body_font_size;
}

double HeightOf(const TableLayout& layout, int row) {
    return row == 1 ? layout.header_height : layout.row_height;
}

bool Fits(const TableLayout& layout, std::string_view text, int row, int column) {
    if (text.empty()) {
        return true;
    }
    const double size = FontSizeOf(layout, row);
    const double room = layout.column_widths.at(static_cast<std::size_t>(column - 1)) -
                        2 * kCellMargin + kLengthOfARoundingError;
    return TextWidth(text, *layout.character_widths) * size <= room &&
           LinesHeight(LinesOf(text)) * size <= HeightOf(layout, row) + kLengthOfARoundingError;
}

// Calls `visit` with every cell that may have a text, from the last row up, with its part.
template <typename Visit>
void VisitTexts(const TableLayout& layout, const Visit& visit) {
    std::string buffer;
    const auto visit_row = [&](int row) {
        const PartTexts* const part = PartOf(layout, row);
        for (int column = 1; column <= kColumns; ++column) {
            visit(CellText(layout, part, row, column, buffer), row, column);
        }
    };
    if (layout.rows == 0) {
        return;
    }
    const int first = std::max(layout.first_row_with_part, 2);
    for (int row = layout.rows; row >= first; --row) {
        visit_row(row);
    }
    visit_row(1);
}

// Sizes of 0 follow the largest cell.
void FitAutomatic(TableLayout& layout) {
    const auto& widths = layout.column_widths;
    const auto automatic = [](double size) { return size == 0; };
    if (layout.header_height != 0 && std::ranges::none_of(widths, automatic)) {
        return;
    }
    std::array<double, kColumns> largest{};
    double highest = 0;
    VisitTexts(layout, [&](std::string_view text, int row, int column) {
        if (text.empty()) {
            return;
        }
        const double size = FontSizeOf(layout, row);
        double& width = largest.at(static_cast<std::size_t>(column - 1));
        width = std::max(width, TextWidth(text, *layout.character_widths) * size);
        if (row == 1) {
            highest = std::max(highest, LinesHeight(LinesOf(text)) * size);
        }
    });
    for (std::size_t column = 0; column < largest.size(); ++column) {
        if (automatic(layout.column_widths.at(column))) {
            layout.column_widths.at(column) = largest.at(column) + 2 * kCellMargin;
        }
    }
    if (automatic(layout.header_height)) {
        layout.header_height = std::max(highest, layout.header_font_size) + 2 * kCellMargin;
    }
}

void Count(TableLayout& layout) {
    VisitTexts(layout, [&layout](std::string_view text, int row, int column) {
        if (!Fits(layout, text, row, column)) {
            ++layout.texts_too_large;
        }
    });
    const auto count = [&layout](const PartTexts& part) {
        if (text::TrimBlanks(part[controls::kMaterial]).empty()) {
            ++layout.rows_without_material;
        }
    };
    if (layout.content == TableContent::kCurrentRow) {
        if (const PartTexts* const part = PartOf(layout, layout.rows)) {
            count(*part);
        }
    } else {
        std::ranges::for_each(layout.parts->rows, count);
    }
}

void Place(TableLayout& layout) {
    layout.width = 0;
    for (const double width : layout.column_widths) {
        layout.width += width;
    }
    layout.height = RowTop(layout, layout.rows + 1);
    constexpr int kInAColumn = 3;
    const int halves_left = layout.anchor_point / kInAColumn;
    const int halves_up = layout.anchor_point % kInAColumn;
    layout.left = layout.x - layout.width * halves_left / 2;
    layout.top = layout.y + layout.height * halves_up / 2;
}

// What "Export 1 tabulky" writes, whatever the column order: the last column stays empty.
constexpr std::array<std::optional<std::size_t>, kColumns> kFieldsOfTheCurrentRow{
    controls::kPosition, 0, controls::kQuantity, controls::kSize, controls::kMaterial,
    controls::kNote,     {}};

void ReadFields(TableLayout& layout, const Configuration& configuration) {
    if (layout.content == TableContent::kCurrentRow) {
        layout.fields = kFieldsOfTheCurrentRow;
        if (PartOf(layout, layout.rows) == nullptr) {
            Note(layout, shell::NoCurrentRow());
        }
        return;
    }
    for (std::size_t column = 0; column < layout.fields.size(); ++column) {
        try {
            layout.fields.at(column) = FieldOf(configuration.column_order.at(column));
        } catch (const automation::RunTimeError& error) {
            Note(layout, error.reason);
        }
    }
}

// How many rows the table has and from which one on they are the list's. Nothing where CATIA is
// not asked for a table.
bool ReadRows(TableLayout& layout, const Configuration& configuration) {
    constexpr const char* kTooMany = "Tabulka by měla příliš mnoho řádků.";
    if (layout.content == TableContent::kCurrentRow) {
        layout.rows = 2;
        layout.first_row_with_part = 2;
        return true;
    }
    try {
        layout.rows = RowsForTheList(*layout.parts, configuration);
        layout.first_row_with_part = std::max(WholeNumber(configuration.free_rows) + 2, 1);
    } catch (const automation::RunTimeError&) {
        Note(layout, kTooMany);
        return false;
    }
    if (layout.rows < 1) {
        layout.rows = 0;
        Note(layout, "Tabulka by neměla žádný řádek: /volny je menší než počet dílů.");
        return false;
    }
    return true;
}

void ReadHeights(TableLayout& layout, const Configuration& configuration, Reading& reading) {
    layout.header_height = reading.Length(configuration.header_row_height,
                                          "Výška záhlaví (/vyska1)", layout.row_height);
}

void ReadAnchor(TableLayout& layout, const Configuration& configuration, Reading& reading) {
    layout.anchor_point =
        reading.Code(configuration.anchor_point, 0, kLastAnchorCode, "Kód kotvy (/AnchorPoint)");
}

std::string WidthsKey(TableContent content) {
    return content == TableContent::kCurrentRow ? "/sirka1" : "/sirka";
}

// The steps of the creation in their order; false where it would end without a table.
bool ReadTableOf(TableLayout& layout, const Configuration& configuration) {
    Reading reading(layout);
    layout.x = configuration.x;
    layout.y = configuration.y;
    if (!ReadRows(layout, configuration)) {
        return false;
    }
    const auto row_height = LengthOf(configuration.body_row_height);
    if (!row_height || *row_height <= 0) {
        layout.rows = 0;
        Note(layout, row_height ? "Výška řádků (/vyska2) musí být větší než 0."
                                : "Výška řádků (/vyska2): „" + configuration.body_row_height +
                                      "“ není číslo.");
        return false;
    }
    layout.row_height = std::min(*row_height, kLargestSize);
    if (layout.content == TableContent::kCurrentRow) {
        ReadAnchor(layout, configuration, reading);
        ReadHeights(layout, configuration, reading);
    } else {
        ReadHeights(layout, configuration, reading);
        ReadAnchor(layout, configuration, reading);
    }
    for (std::size_t column = 0; column < layout.column_widths.size(); ++column) {
        layout.column_widths.at(column) = reading.Length(
            configuration.widths.at(column),
            "Šířka sloupce " + std::to_string(column + 1) + " (" + WidthsKey(layout.content) + ")",
            kColumnWidth);
    }
    layout.header_font_size =
        reading.FontSize(configuration.header_font_size, "Velikost písma záhlaví (/fontsize1)");
    layout.body_font_size = layout.rows > 1 ? reading.FontSize(configuration.body_font_size,
                                                               "Velikost písma řádků (/fontsize2)")
                                            : layout.header_font_size;
    for (std::size_t column = 0; column < layout.headers.size(); ++column) {
        layout.headers.at(column) = configuration.headers.at(column);
    }
    ReadFields(layout, configuration);
    if (layout.content == TableContent::kWholeList && WholeNumber(configuration.free_rows) < -1) {
        Note(layout, "Díly by se do tabulky nevešly: /volny je menší než -1.");
    }
    layout.line_thickness = reading.Code(configuration.line_thickness, 1, kThickestLineIndex,
                                         "Tloušťka čáry (/tlouska_cary)");
    return true;
}

std::string Rounded(double number) {
    constexpr double kHundredths = 100;
    return text::PlainDecimal(std::round(number * kHundredths) / kHundredths);
}

// The word that goes with a number of things: with 1, with 2 to 4, with any other.
struct Words {
    const char* one;
    const char* few;
    const char* many;
};
std::string CountOf(std::size_t count, const Words& words) {
    const char* few_or_many = count >= 2 && count <= 4 ? words.few : words.many;
    return std::to_string(count) + " " + (count == 1 ? words.one : few_or_many);
}

} // namespace

double TextWidth(std::string_view text, const CharacterWidths& widths) {
    double widest = 0;
    double line = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (const std::size_t line_break = LineBreakAt(text, at)) {
            widest = std::max(widest, line);
            line = 0;
            at += line_break;
            continue;
        }
        const Character character = FirstCharacter(text.substr(at));
        line +=
            character.code < widths.widths.size() ? widths.widths[character.code] : widths.other;
        at += character.bytes;
    }
    return std::max(widest, line);
}

int LinesOf(std::string_view text) {
    int lines = 1;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t line_break = LineBreakAt(text, at);
        lines += line_break > 0 ? 1 : 0;
        at += std::max<std::size_t>(line_break, 1);
    }
    return lines;
}

double LinesHeight(int lines) {
    return 1 + (lines - 1) * kLinePitch;
}

std::string FontFace(const TableSource& source) {
    std::string name;
    try {
        name = ParseConfiguration(source.configuration, WidthsKey(source.content))
                   .font_name.value_or("");
    } catch (const automation::RunTimeError&) {
        return std::string(kUsualFont); // there is no table either
    }
    if (name.ends_with(kTrueType)) {
        name.resize(name.size() - kTrueType.size());
    }
    return name.empty() ? std::string(kUsualFont) : name;
}

std::optional<double> LengthOf(std::string_view sent) {
    std::string digits;
    bool behind_point = false;
    for (const char c : text::TrimBlanks(sent)) {
        behind_point = behind_point || c == '.';
        const bool is_group = c == ',' && !behind_point && !digits.empty();
        if (!is_group) {
            digits += c;
        }
    }
    return text::Number(digits);
}

TableLayout LayOutTable(const TableSource& source,
                        std::shared_ptr<const CharacterWidths> character_widths) {
    TableLayout layout;
    layout.content = source.content;
    layout.parts = source.parts;
    layout.character_widths = std::move(character_widths);
    layout.font_face = FontFace(source);
    try {
        const Configuration configuration =
            ParseConfiguration(source.configuration, WidthsKey(source.content));
        if (layout.parts->rows.empty()) {
            Note(layout, "Seznam dílů je prázdný, tabulka by nevznikla.");
        }
        if (ReadTableOf(layout, configuration)) {
            FitAutomatic(layout);
            Place(layout);
            Count(layout);
        }
    } catch (const automation::RunTimeError& error) {
        Note(layout, error.reason);
    }
    return layout;
}

double RowTop(const TableLayout& layout, int row) {
    return row <= 1 ? 0 : layout.header_height + (static_cast<double>(row) - 2) * layout.row_height;
}

int RowAtHeight(const TableLayout& layout, double height) {
    if (height < layout.header_height || layout.row_height <= 0) {
        return 1;
    }
    const double row = 2 + std::floor((height - layout.header_height) / layout.row_height);
    return static_cast<int>(std::min<double>(row, layout.rows));
}

LaidOutCell CellAt(const TableLayout& layout, int row, int column) {
    LaidOutCell cell;
    for (int before = 1; before < column; ++before) {
        cell.box.left += layout.column_widths.at(static_cast<std::size_t>(before - 1));
    }
    cell.box.right = cell.box.left + layout.column_widths.at(static_cast<std::size_t>(column - 1));
    cell.box.top = RowTop(layout, row);
    cell.box.bottom = cell.box.top + HeightOf(layout, row);
    std::string buffer;
    const std::string_view text = CellText(layout, PartOf(layout, row), row, column, buffer);
    cell.fits = Fits(layout, text, row, column);
    cell.text = text;
    cell.font_size = FontSizeOf(layout, row);
    return cell;
}

std::string SizesAndCounts(const TableLayout& layout) {
    if (layout.rows == 0) {
        return "Bez tabulky";
    }
    std::string line = Rounded(layout.width) + " × " + Rounded(layout.height) + " mm, " +
                       CountOf(static_cast<std::size_t>(layout.rows), {"řádek", "řádky", "řádků"}) +
                       ", " + std::to_string(kColumns) + " sloupců, bez materiálu " +
                       CountOf(layout.rows_without_material, {"řádek", "řádky", "řádků"});
    if (layout.texts_too_large > 0) {
        line += ", asi " + CountOf(layout.texts_too_large,
                                   {"text se nevejde", "texty se nevejdou", "textů se nevejde"});
    }
    return line;
}

std::string AnchorAndPosition(const TableLayout& layout) {
    constexpr std::array kPlaces{"vlevo nahoře",     "vlevo uprostřed",  "vlevo dole",
                                 "nahoře uprostřed", "uprostřed",        "dole uprostřed",
                                 "vpravo nahoře",    "vpravo uprostřed", "vpravo dole"};
    return std::string("Kotva ") + kPlaces.at(static_cast<std::size_t>(layout.anchor_point)) +
           " na " + PositionText(layout);
}

std::string PositionText(const TableLayout& layout) {
    return Rounded(layout.x) + "; " + Rounded(layout.y);
}

} // namespace tables
