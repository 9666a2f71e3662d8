#include "catia/session.hpp"
#include "shell/shell.hpp"
#include "structure/structure.hpp"
#include "structure/structure_text.hpp"
#include "text/text.hpp"

namespace structure {

namespace {

void WalkActiveProduct(Form1& form) {
    if (!shell::Spusteni_Catie(form)) {
        return;
    }
    shell::SetMousePointer(form, controls::MousePointer::kHourglass);
    form.Text1.SetText("");
    form.PocetSestav = 0;
    form.PocetPartu = 0;

    const catia::Document document = shell::WaitForCatia(form).ActiveDocument();
    if (!text::ContainsIgnoringCase(document.Name(), ".CATProduct")) {
        shell::SetMousePointer(form, controls::MousePointer::kDefault);
        shell::stat(form, "Neni aktivni CATProduct");
        return;
    }

    const catia::Product top = catia::ProductDocument(document).Product();
    const std::string part_number = top.PartNumber();
    zapsat(form, TopLine(part_number));
    const catia::Products children = top.Products();
    OtevreniStromu(form, children, children.Count(), part_number, part_number);

    shell::stat(form, "Sestav: " + std::to_string(form.PocetSestav) +
                          " Partu: " + std::to_string(form.PocetPartu));
    Command5_Click(form);
    shell::SetMousePointer(form, controls::MousePointer::kDefault);
}

} // namespace

void Command3_Click(Form1& form) {
    shell::Trap([&form] { WalkActiveProduct(form); },
                [&form](const automation::RunTimeError& error) {
                    shell::SetMousePointer(form, controls::MousePointer::kDefault);
                    shell::stat(form, shell::ErrorText(error));
                });
}

void OtevreniStromu(Form1& form, const catia::Products& children, int count,
                    const std::string& part_number, const std::string& otec) {
    const std::string announcement = "Product: " + part_number + " Part: ";
    // Uroven is lowered at the end and nowhere else: a walk that an error ended leaves it raised.
    ++form.Uroven;
    shell::DoEvents(form);
    ++form.PocetSestav;
    for (int i = 1; i <= count; ++i) {
        const catia::Product child = children.Item(i);
        const std::string child_number = child.PartNumber();
        const catia::Products grandchildren = child.Products();
        const int grandchild_count = grandchildren.Count();
        shell::stat(form, announcement + child_number);
        if (grandchild_count == 0) {
            ++form.PocetPartu;
            zapsat(form, LeafLine(form.Uroven, child_number, otec));
        } else {
            const std::string path = InstancePath(otec, child_number, form.PocetSestav);
            zapsat(form, AssemblyLine(form.Uroven, child_number, otec, path));
            OtevreniStromu(form, grandchildren, grandchild_count, child_number, path);
        }
    }
    --form.Uroven;
}

void zapsat(Form1& form, const std::string& t) {
    form.Text1.Append("\r\n" + t);
}

} // namespace structure
