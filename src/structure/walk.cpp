#include "catia/session.hpp"
#include "shell/explanations.hpp"
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
    form.walked_text.clear();
    form.PocetSestav = 0;
    form.PocetPartu = 0;

    const catia::Document document = shell::WaitForCatia(form).ActiveDocument();
    const std::string name = document.Name();
    shell::NoteDocument(form, name);
    if (!text::ContainsIgnoringCase(name, ".CATProduct")) {
        shell::SetMousePointer(form, controls::MousePointer::kDefault);
        shell::Refuse(form, "Neni aktivni CATProduct");
        return;
    }

    const catia::Product top = catia::ProductDocument(document).Product();
    const std::string part_number = top.PartNumber();
    zapsat(form, TopLine(part_number));
    OtevreniStromu(form, top, part_number, part_number);
    if (form.Text1.Text() != form.walked_text) { // the person has typed into it meanwhile
        form.Text1.SetText(form.walked_text);
    }

    shell::stat(form, "Sestav: " + std::to_string(form.PocetSestav) +
                          " Partu: " + std::to_string(form.PocetPartu));
    const SkippedLines skipped = FillTree(form);
    if (skipped.count > 0) {
        shell::Explain(form, shell::LinesSkipped(skipped.count, skipped.first));
    }
    shell::SetMousePointer(form, controls::MousePointer::kDefault);
}

Children ReadChildren(const catia::Product& product) {
    const catia::Products products = product.Products();
    return {products, products.Count()};
}

} // namespace

void Command3_Click(Form1& form) {
    shell::Trap([&form] { WalkActiveProduct(form); },
                [&form](const automation::RunTimeError& error) {
                    shell::SetMousePointer(form, controls::MousePointer::kDefault);
                    shell::ShowError(form, error);
                });
}

void OtevreniStromu(Form1& form, const catia::Product& stromProductTMP,
                    const std::string& part_number, const std::string& otec,
                    const std::optional<Children>& known_children) {
    const std::string announcement = "Product: " + part_number + " Part: ";
    // Uroven is lowered at the end and nowhere else: a walk that an error ended leaves it raised.
    ++form.Uroven;
    shell::DoEvents(form);
    ++form.PocetSestav;
    const Children children = known_children ? *known_children : ReadChildren(stromProductTMP);
    for (int i = 1; i <= children.count; ++i) {
        const catia::Product child = children.products.Item(i);
        const std::string child_number = child.PartNumber();
        const Children grandchildren = ReadChildren(child);
        shell::ShowPassing(form, announcement + child_number);
        if (grandchildren.count == 0) {
            ++form.PocetPartu;
            zapsat(form, LeafLine(form.Uroven, child_number, otec));
        } else {
            const std::string path = InstancePath(otec, child_number, form.PocetSestav);
            zapsat(form, AssemblyLine(form.Uroven, child_number, otec, path));
            OtevreniStromu(form, child, child_number, path, grandchildren);
        }
    }
    --form.Uroven;
}

void zapsat(Form1& form, const std::string& t) {
    form.Text1.Append("\r\n" + t);
    form.walked_text += "\r\n" + t;
}

} // namespace structure
