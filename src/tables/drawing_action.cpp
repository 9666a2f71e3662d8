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

bool Succeeds(const std::function<void()>& call) {
    try {
        call();
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

std::optional<catia::DrawingTable> TableToFill(controls::Form1& form,
                                               const catia::Selection& selection) {
    if (!HasSelection(form, selection)) {
        return std::nullopt;
    }
    auto table = SelectedTable(selection);
    if (!table) {
        shell::Refuse(form, "Spatny vyber");
    }
    return table;
}

bool WantsNoRedrawing(const controls::Form1& form) {
    return form.Check3.Value() == 1;
}

bool TryPuttingBack(controls::Form1& form, const std::function<void()>& call) {
    // The person may press the key once more meanwhile.
    const bool stopped = std::exchange(form.stop_requested, false);
    form.putting_back = true;
    const bool done = Succeeds(call);
    form.putting_back = false;
    form.stop_requested = form.stop_requested || stopped;
    return done;
}

WithoutRedrawing::WithoutRedrawing(controls::Form1& form, const catia::DrawingTable& table,
                                   bool wanted)
    : form_(form), table_(table), to_switch_on_(wanted) {
    if (wanted) {
        switched_off_ = Succeeds([&] { table.SetComputeMode(kOff); });
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
        to_switch_on_ =
            !TryPuttingBack(form_, [this] { table_.SetComputeMode(kOn); }) && switched_off_;
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
