#include "tables/configuration.hpp"

#include <vector>

#include "automation/run_time_error.hpp"
#include "shell/explanations.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

using Fields = std::vector<std::string_view>;

automation::RunTimeError SubscriptOutOfRange(std::string reason) {
    return automation::WithReason(automation::SubscriptOutOfRange(), std::move(reason));
}

void FillSlots(Slots& slots, const Fields& fields, std::size_t line_number) {
    if (fields.size() - 1 > slots.size()) {
        throw SubscriptOutOfRange(
            shell::TooManyValues(line_number, fields.size() - 1, slots.size()));
    }
    for (std::size_t value = 1; value < fields.size(); ++value) {
        slots[value - 1] = fields[value];
    }
}

} // namespace

Configuration ParseConfiguration(std::string_view text, std::string_view widths_key) {
    Configuration configuration;
    std::size_t line_number = 0;
    for (const std::string_view line : text::Split(text, "\r\n")) {
        ++line_number;
        const Fields fields = text::Split(line, ";");
        if (fields.size() < 2) {
            continue;
        }
        const std::string_view key = fields[0];
        const std::string_view value = fields[1];
        if (key == "/razeni") {
            FillSlots(configuration.column_order, fields, line_number);
        } else if (key == "/vyska1") {
            configuration.header_row_height = value;
        } else if (key == "/vyska2") {
            configuration.body_row_height = value;
        } else if (key == widths_key) {
            FillSlots(configuration.widths, fields, line_number);
        } else if (key == "/hlavicka") {
            FillSlots(configuration.headers, fields, line_number);
        } else if (key == "/pozice") {
            if (fields.size() < 3) {
                throw SubscriptOutOfRange(shell::PositionWithoutY(line_number));
            }
            configuration.x = text::LeadingNumber(value);
            configuration.y = text::LeadingNumber(fields[2]);
        } else if (key == "/volny") {
            configuration.free_rows = text::LeadingNumber(value);
        } else if (key == "/fontname") {
            configuration.font_name = value;
        } else if (key == "/fontsize1") {
            configuration.header_font_size = text::LeadingNumber(value);
        } else if (key == "/fontsize2") {
            configuration.body_font_size = text::LeadingNumber(value);
        } else if (key == "/tlouska_cary") {
            configuration.line_thickness = text::LeadingNumber(value);
        } else if (key == "/AnchorPoint") {
            configuration.anchor_point = text::LeadingNumber(value);
        }
    }
    return configuration;
}

} // namespace tables
