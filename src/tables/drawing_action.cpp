#include "tables/drawing_action.hpp"

#include "automation/run_time_error.hpp"
#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

using enum controls::PartField;

constexpr unsigned char kDiameterCode = 248;

// Of a table's ComputeMode.
constexpr int kOff = 0;
constexpr int kOn = 1;

// Whether the table took the mode.
bool TrySetComputeMode(const catia::DrawingTable& table, int mode) {
    try {
        table.SetComputeMode(mode);
        return true;
    } catch (const automation::RunTimeError&) {
        return false; // the action goes on, or has an error already
    }
}

} // namespace

std::optional<OpenDrawing> OpenActiveDrawing(controls::Form1& form) {
    const catia::Application application = shell::WaitForCatia(form);
    const catia::Document document = application.ActiveDocument();
    if (!shell::IsDrawing(form, document.Name())) {
        return std::nullopt;
    }
    const catia::Selection selection = document.Selection();
    return OpenDrawing{
        application, selection,
        catia::DrawingDocument(document).Sheets().ActiveSheet().Views().ActiveView()};
}

bool HasSelection(controls::Form1& form, const catia::Selection& selection) {
    if (selection.Count2() == 0) {
        shell::Refuse(form, "Nejsou vybrany zadny objekty");
        return false;
    }
    return true;
}

std::optional<catia::DrawingTable> SelectedTable(const catia::Selection& selection) {
    const catia::SelectedElement first = selection.Item2(1);
    if (first.Type() != "DrawingTable") {
        return std::nullopt;
    }
    return catia::DrawingTable(first.Value());
}

bool WantsNoRedrawing(const controls::Form1& form) {
    return form.Check3.Value() == 1;
}

WithoutRedrawing::WithoutRedrawing(controls::Form1& form, const catia::DrawingTable& table,
                                   bool wanted)
    : form_(form), table_(table), to_switch_on_(wanted) {
    if (wanted) {
        switched_off_ = TrySetComputeMode(table, kOff);
    }
}

WithoutRedrawing::~WithoutRedrawing() {
    SwitchOn();
    if (finished_ && to_switch_on_) {
        form_.StatusBar1.SetState(controls::ActionState::kFailed);
        form_.StatusBar1.SetExplanation({.text = shell::TableNotRedrawn(), .is_error = true});
    }
}

void WithoutRedrawing::Finish() {
    SwitchOn();
    finished_ = true;
}

void WithoutRedrawing::SwitchOn() {
    if (to_switch_on_) {
        // Also where the person has ended the action, and presses the key once more.
        const bool stopped = std::exchange(form_.stop_requested, false);
        form_.putting_back = true;
        to_switch_on_ = !TrySetComputeMode(table_, kOn) && switched_off_;
        form_.putting_back = false;
        form_.stop_requested = form_.stop_requested || stopped;
    }
}

Parts TakeParts(const controls::ListView& list) {
    Parts parts;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        PartTexts texts{list.Row(row).text};
        for (std::size_t field = 1; field < list.Columns().size(); ++field) {
            texts.push_back(list.SubItem(row, field));
        }
        parts.rows.push_back(std::move(texts));
    }
    if (list.CurrentRow()) {
        parts.current = *list.CurrentRow() - 1;
    }
    return parts;
}

const PartTexts& CurrentPart(const Parts& parts) {
    if (!parts.current) {
        throw automation::WithReason(automation::ObjectVariableNotSet(), shell::NoCurrentRow());
    }
    return parts.rows[*parts.current];
}

std::array<automation::Value, 6> PartValues(const PartTexts& part) {
    return {text::LeadingNumber(part[kPosition]),
            part[0],
            part[kQuantity],
            part[kSize],
            part[kMaterial],
            part[kNote]};
}

std::string Progress(int done, int total) {
    return std::to_string(done) + "/" + std::to_string(total);
}

std::string WithDiameterSign(const std::string& size, const std::string& diameter_sign) {
    if (!text::ContainsIgnoringCase(size, "D")) {
        return size;
    }
    return diameter_sign + std::string(text::WithoutFirstCharacter(size));
}

std::string DiameterSign(controls::Form1& form) {
    return form.ports.code_page.Character(kDiameterCode);
}

} // namespace tables
