#include <algorithm>
#include <cmath>

#include "sheets/sheet_action.hpp"
#include "sheets/sheet_names.hpp"
#include "sheets/sheets.hpp"
#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"

namespace sheets {

namespace {

using controls::kNewName;
using controls::ListView;

void ApplyNames(Form1& form) {
    const auto sheets = DrawingSheetsOf(form, shell::WaitForCatia(form).ActiveDocument());
    if (!sheets) {
        return;
    }
    shell::stat(form, "Prejmenovavam Sheets");
    const ListView& list = form.ListView3;
    int done = 0;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        shell::ShowProgress(form, static_cast<int>(row) - 1, static_cast<int>(list.Count()));
        const std::string& new_name = list.SubItem(row, kNewName);
        if (!list.Row(row).checked || new_name.empty()) {
            continue;
        }
        if (list.Row(row).text == kPlannedSheet) {
            static_cast<void>(sheets->Add(new_name));
        } else {
            sheets->Item(list.Row(row).text).SetName(new_name);
        }
        ++done;
    }
    shell::stat(form, "Prejmenovano: " + std::to_string(done));
}

// This action makes the stricter test of the document's name only, and does not announce the
// waiting.
void NumberRange(Form1& form) {
    const catia::Document document = shell::CatiaApplication(form).ActiveDocument();
    static_cast<void>(document.Selection());
    if (!IsDrawingExactly(form, document.Name())) {
        return;
    }
    const catia::DrawingSheets sheets = catia::DrawingDocument(document).Sheets();
    static_cast<void>(sheets.ActiveSheet());

    const std::string proposal = "1-" + std::to_string(CountRowsWithSheet(form.ListView1));
    const std::string answer =
        form.ports.message_boxes.AskText("Rozsah listu", form.Caption, proposal);
    if (answer.empty()) {
        form.StatusBar1.SetState(controls::ActionState::kNone); // there is nothing to do after all
        return;
    }
    const auto pieces = text::Split(answer, "-");
    if (pieces.size() != 2) {
        shell::Refuse(form, "Spatny pocet listu");
        return;
    }
    double number = text::LeadingNumber(pieces[0]);
    // The range says which numbers are written; it is always the first sheets that get them.
    const double steps = std::nearbyint(text::LeadingNumber(pieces[1]) - number + 1);
    const double sheets_there = sheets.Count();
    const int count = steps > 0 ? static_cast<int>(std::min(sheets_there, steps)) : 0;
    int done = 0;
    while (done < count) {
        shell::ShowProgress(form, done, count);
        sheets.Item(++done).SetName(text::PlainDecimal(number));
        ++number;
    }
    shell::Explain(form, shell::SheetsNumbered(done));
}

void NameDirectly(Form1& form) {
    const auto sheets = DrawingSheetsOf(form, shell::CatiaApplication(form).ActiveDocument());
    if (!sheets) {
        return;
    }
    const platform::Answer answer =
        form.ports.message_boxes.AskYesNoCancel("Je prvni sheet sestava?", form.Caption);
    if (answer == platform::Answer::kCancel) {
        return;
    }
    const NameTable names = NamesForTheDrawing(form.ListView1, answer == platform::Answer::kYes);
    const int count = std::min(static_cast<int>(names.names), sheets->Count());
    for (int sheet = 1; sheet <= count; ++sheet) {
        shell::ShowProgress(form, sheet - 1, count);
        sheets->Item(sheet).SetName(names.slots.at(static_cast<std::size_t>(sheet - 1)));
    }
    shell::ExplainDone(form, shell::SheetsNamed(count));
}

} // namespace

void Command20_Click(Form1& form) {
    ListView& list = form.ListView3;
    if (list.Count() == 0) {
        return;
    }
    double number = text::LeadingNumber(form.Text6.Text());
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        if (list.Row(row).checked) {
            list.SetSubItem(row, kNewName, text::PlainDecimal(number));
            ++number;
        }
    }
    shell::stat(form, "Ocislovano: " + text::PlainDecimal(number - 1));
}

void Text6_KeyPress(Form1& form, int key) {
    if (key == controls::kEnterKey) {
        Command20_Click(form);
    }
}

void Command22_Click(Form1& form) {
    ListView& list = form.ListView3;
    if (list.Count() == 0) {
        return;
    }
    const NameTable names = NamesForTheList(form.ListView1, form.Check1.Value() == 1);
    std::size_t ticked = 0;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        if (list.Row(row).checked) {
            if (ticked >= names.slots.size()) {
                throw automation::SubscriptOutOfRange();
            }
            list.SetSubItem(row, kNewName, names.slots[ticked]);
            ++ticked;
        }
    }
    shell::stat(form, "Pojmenovano: " + std::to_string(ticked));
}

void Command23_Click(Form1& form) {
    if (form.ListView3.Count() == 0 || !shell::Spusteni_Catie(form)) {
        return;
    }
    shell::TrapToStatus(form, [&form] { ApplyNames(form); });
}

void Command24_Click(Form1& form) {
    if (!shell::Spusteni_Catie(form)) {
        return;
    }
    shell::TrapToStatus(form, [&form] { NumberRange(form); });
}

void Command25_Click(Form1& form) {
    if (form.ListView1.Count() == 0) {
        return;
    }
    shell::TrapToStatus(form, [&form] { NameDirectly(form); });
}

} // namespace sheets
