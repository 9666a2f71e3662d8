#include <limits>

#include "sheets/sheet_action.hpp"
#include "sheets/sheets.hpp"
#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"

namespace sheets {

namespace {

std::size_t CountTicked(const controls::ListView& list) {
    std::size_t count = 0;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        count += list.Row(row).checked ? 1 : 0;
    }
    return count;
}

} // namespace

void Command33_Click(Form1& form) {
    if (form.ListView3.Count() == 0 || form.ListView1.Count() == 0) {
        return;
    }
    const std::size_t listed = CountRowsWithSheet(form.ListView1);
    const std::size_t present = CountTicked(form.ListView3);
    const bool with_assembly = form.Check1.Value() == 1;
    const std::size_t needed = listed + (with_assembly ? 1 : 0);
    form.Text7.SetText(
        text::PlainDecimal(static_cast<double>(needed) - static_cast<double>(present)));
    shell::stat(form, "Schazi:   listu " + std::to_string(listed) +
                          (with_assembly ? " + sestava " : "") + " - catie " +
                          std::to_string(present));
}

void Command32_Click(Form1& form) {
    const double rows = text::LeadingNumber(form.Text7.Text());
    if (rows > std::numeric_limits<std::int16_t>::max()) {
        throw automation::Overflow(); // a slip of the keyboard, not a drawing
    }
    for (int i = 1; i <= rows; ++i) {
        AddPlannedSheet(form);
    }
}

void Text7_KeyPress(Form1& form, int key) {
    if (key == controls::kEnterKey) {
        Command32_Click(form);
    }
}

void Command31_Click(Form1& form) {
    shell::TrapToStatus(form, [&form] {
        if (const auto drawing = DrawingOf(form, shell::CatiaApplication(form).ActiveDocument())) {
            static_cast<void>(drawing->Sheets().Add(form.ports.clock.SecondsSinceMidnight()));
            shell::ExplainDone(form, shell::SheetCreated());
        }
    });
}

} // namespace sheets
