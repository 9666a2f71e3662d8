// The table configuration, which the user edits freely: read, laid out, and looked through for
// hints.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "automation/run_time_error.hpp"
#include "tables/configuration.hpp"
#include "tables/hints.hpp"
#include "tables/layout.hpp"

namespace {

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

bool IsRead(std::string_view text, std::string_view widths_key) {
    try {
        const auto parsed = tables::ParseConfiguration(text, widths_key);
        Require(std::isfinite(parsed.x) && std::isfinite(parsed.free_rows));
        return true;
    } catch (const automation::RunTimeError& error) {
        Require(error.number == 9);
        return false;
    }
}

void LayOut(std::string_view text, tables::TableContent content, bool is_read) {
    static const auto parts = std::make_shared<const tables::Parts>(tables::Parts{
        .rows = {{"Hřídel", "1", "2", "", "S235", "D25", "a\nb"}, {"Kolo", "", "", "", "", "", ""}},
        .current = 0});
    static const auto widths = std::make_shared<const tables::CharacterWidths>();
    const auto layout =
        tables::LayOutTable({.configuration = text, .content = content, .parts = parts}, widths);
    Require(is_read || (layout.rows == 0 && !layout.trouble.empty()));
    Require(layout.rows > 0 || !layout.trouble.empty());
    for (const int row : {1, 2, layout.rows / 2, layout.rows}) {
        for (int column = 1; column <= tables::kColumns && row >= 1 && row <= layout.rows;
             ++column) {
            const auto cell = tables::CellAt(layout, row, column);
            Require(cell.box.left <= cell.box.right && cell.box.top <= cell.box.bottom);
            Require(cell.fits || !cell.text.empty());
        }
    }
    Require(!tables::SizesAndCounts(layout).empty() && !tables::AnchorAndPosition(layout).empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    LayOut(text, tables::TableContent::kWholeList, IsRead(text, "/sirka"));
    LayOut(text, tables::TableContent::kCurrentRow, IsRead(text, "/sirka1"));
    std::size_t last = 0;
    for (const tables::Hint& hint : tables::HintsFor(text)) {
        Require(hint.offset >= last && hint.offset + hint.length <= text.size());
        Require(hint.line >= 1 && !hint.sentence.empty());
        last = hint.offset;
    }
    return 0;
}
