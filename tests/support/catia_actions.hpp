// Every action that talks to CATIA, each with a document and a form that it finds its work in, and
// what a run of it leaves behind.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "simulator/model.hpp"
#include "tests/support/headless_form.hpp"

namespace testing_support {

struct CatiaAction {
    const char* name;
    controls::Button controls::Form1::*button;
    const char* document;
    bool shows_error; // on the status line; it keeps the last announcement where not
    bool stays_busy;  // after an error
};

inline void PrintTo(const CatiaAction& action, std::ostream* out) {
    *out << action.name;
}

inline constexpr const char* kActionsProduct =
    "ProductDocument P.CATProduct\n"
    "product Sestava\n child Díl times 2\n child Skupina\n"
    "product Skupina\n child Šroub\n";
// A table as "Vytvorení" makes it, selected, with what the person made of it, and a detail sheet.
inline constexpr const char* kActionsDrawing = R"(DrawingDocument D.CATDrawing
sheet "Sheet.1" active
  view "Main View" active
    table at 30 40.5 anchor 2 weight 3 selected columns 13.88 43.67 15.76 37.51 34.61 31.53 14.68
      row 4.9 font 2.5 Arial cells Pozice "nazev\ndílu" Kusu "Ciste rozmery" Material Poznamka List
      row 6.8 font 3 Arial cells "" "" "" "" "" "" ""
      row 6.8 font 3 Arial cells "2" "Kolo\nozubené" "1" "D80" "C45" "" ""
      row 6.8 font 3 Arial cells "1" "Hřídel" "2" "D25x120" "S235" "kalit\nbrousit" "2"
    text "Main" at 1 2
  view "Background View"
sheet "Sheet.2"
sheet "Detail" detail
)";
inline constexpr const char* kActionsSmallTable = R"(DrawingDocument D.CATDrawing
sheet "Sheet.1" active
  view "Main View" active
    table at 30 40.5 selected columns 13.88 43.67 15.76 37.51 34.61 31.53
      row 4.9 cells Pozice nazev Kusu "Ciste rozmery" Material Poznamka
      row 6.8
    text "Main" at 1 2
  view "Background View"
)";
inline constexpr const char* kActionsTwoSheets = "DrawingDocument D.CATDrawing\n"
                                                 "sheet \"Sheet.1\"\nsheet \"Sheet.2\"\n";

inline std::vector<CatiaAction> CatiaActions() {
    using controls::Form1;
    return {
        {"walk", &Form1::Command3, kActionsProduct, true, false},
        {"parameters", &Form1::Command10, kActionsDrawing, false, false},
        {"read", &Form1::Command9, kActionsDrawing, false, false},
        {"create", &Form1::Command11, kActionsDrawing, false, true},
        {"create_row", &Form1::Command7, kActionsDrawing, false, true},
        {"small_table", &Form1::Command16, kActionsSmallTable, false, false},
        {"whole_table", &Form1::Command30, kActionsDrawing, false, false},
        {"update_table", &Form1::Command37, kActionsDrawing, false, false},
        {"texts", &Form1::Command6, kActionsDrawing, false, false},
        {"trial_text", &Form1::Command8, kActionsDrawing, false, false},
        {"load_sheets", &Form1::Command21, kActionsDrawing, true, false},
        {"rename_sheets", &Form1::Command23, kActionsDrawing, true, false},
        {"number_range", &Form1::Command24, kActionsDrawing, true, false},
        {"name_directly", &Form1::Command25, kActionsDrawing, true, false},
        {"order_sheets", &Form1::Command34, kActionsDrawing, true, false},
        {"swap_sheets", &Form1::Command29, kActionsTwoSheets, true, false},
        {"create_sheet", &Form1::Command31, kActionsDrawing, true, false},
    };
}

// A run of an action on its document.
struct ActionRun {
    // `change` makes of the open document and the session what the run is to find.
    explicit ActionRun(
        const CatiaAction& which,
        const std::function<void(simulator::Session&)>& change = [](simulator::Session&) {})
        : action(which) {
        headless.clock.seconds = 45296; // a whole number is the same in every language
        headless.message_boxes.text_answer = "1-2";
        headless.message_boxes.three_way_answer = platform::Answer::kYes;
        Open(change);
    }

    // Opens the document anew and puts into the form what the action works on.
    void Open(const std::function<void(simulator::Session&)>& change) {
        session.Arm({});
        session.CloseAllDocuments();
        session.LoadDocument(action.name, action.document);
        change(session);
        session.ClearLog();
        headless.Connect(session);
        controls::Form1& form = headless.form;
        form.Uroven = 0; // a walk that fails leaves it as it is
        form.ListView1.Clear();
        form.ListView3.Clear();
        AddRow(form.ListView1, {"Hřídel", "0001", "2", "2", "S235", "D25x120", "kalit"});
        AddRow(form.ListView1, {"Kolo", "0002", "1", "3", "C45", "D80", ""});
        form.ListView1.SetCurrentRow(1);
        const auto& sheets = session.ActiveDocument()->sheets;
        if (action.button == &controls::Form1::Command23) {
            AddSheet(sheets[0]->name, "1.Sestava");
            AddSheet("Nový", "3.Kolo");
            AddSheet(sheets[1]->name, "2.Hřídel");
        } else if (action.button == &controls::Form1::Command34) {
            AddSheet(sheets[1]->name, "");
            AddSheet(sheets[0]->name, "");
            AddSheet(sheets[2]->name, "");
        }
        headless.messages.clear();
        form.StatusBar1.SetPanelText(1, "");
    }

    void Press() { (headless.form.*action.button).Click(); }

    // What the run has left: the status text, whether it is busy, the lists and texts of the form,
    // and the drawing.
    [[nodiscard]] std::string Left() const {
        const controls::Form1& form = headless.form;
        std::string left = headless.Status() + (headless.Busy() ? " busy\n" : "\n") +
                           headless.RowCount() + "\n" + form.Text1.Text() + "\n" +
                           form.Text3.Text() + "\n";
        for (const controls::ListView* list : {&form.ListView1, &form.ListView3}) {
            for (std::size_t row = 1; row <= list->Count(); ++row) {
                for (const std::string& text : RowTexts(*list, row)) {
                    left += text + "|";
                }
                left += list->Row(row).tag + (list->Row(row).checked ? "ticked\n" : "\n");
            }
        }
        return left + session.DrawingAsText();
    }

    CatiaAction action;
    simulator::Session session;
    HeadlessForm headless;

  private:
    void AddSheet(const std::string& name, const std::string& new_name) {
        AddRow(headless.form.ListView3, {name, new_name}, true);
    }
};

} // namespace testing_support
