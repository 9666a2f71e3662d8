#include "shell/shell.hpp"
#include "text/text.hpp"

namespace shell {

namespace {

constexpr const char* kSearching = "Zjistuju spusteni Catie";

} // namespace

bool IsCatiaTitle(std::string_view title) {
    return text::StartsWithIgnoringCase(title, "CATIASessionWnd") ||
           text::StartsWithIgnoringCase(title, "CATIA V5");
}

long Projdi_Okno(Form1& form, platform::WindowHandle window) {
    const std::string title = form.ports.desktop_windows.GetWindowTitle(window);
    if (!title.empty()) {
        form.List1.AddItem(title);
    }
    if (IsCatiaTitle(title)) {
        form.CatiaNalezena = true;
    }
    return 1;
}

bool Hledani_Catie(Form1& form) {
    form.List1.Clear();
    form.CatiaNalezena = false;
    form.ports.desktop_windows.EnumWindows(
        [&form](platform::WindowHandle window) { return Projdi_Okno(form, window); });
    return form.CatiaNalezena;
}

bool Spusteni_Catie(Form1& form) {
    stat(form, kSearching);
    const bool found = Hledani_Catie(form);
    if (form.Check2.Value() == 1) {
        Nastav_Navrch(form, form.hWnd);
    }
    if (!found) {
        form.StatusBar1.SetState(controls::ActionState::kNone);
    }
    return found;
}

void Command26_Click(Form1& form) {
    stat(form, kSearching);
    const bool found = Hledani_Catie(form);
    stat(form, std::string("Spusteni Catie = ") + (found ? "True" : "False"));
}

catia::Application CatiaApplication(Form1& form) {
    return catia::Application(form.ports.automation_servers.GetActiveObject("Catia.application"));
}

catia::Application WaitForCatia(Form1& form) {
    stat(form, "Cekam na Catii");
    return CatiaApplication(form);
}

bool IsDrawing(Form1& form, const std::string& document_name) {
    if (text::ContainsIgnoringCase(document_name, ".CATDrawing")) {
        return true;
    }
    SayThereIsNoDrawing(form);
    return false;
}

void SayThereIsNoDrawing(Form1& form) {
    Refuse(form, "Neni aktivni CATDrawing");
}

} // namespace shell
