#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"

namespace shell {

namespace {

constexpr const char* kSearching = "Zjistuju spusteni Catie";

// CATIA's windows as they are now, without what a search for a session shows.
std::vector<platform::WindowHandle> WindowsOfCatia(Form1& form) {
    platform::DesktopWindows& desktop = form.ports.desktop_windows;
    std::vector<platform::WindowHandle> windows;
    desktop.EnumWindows([&](platform::WindowHandle window) {
        if (IsWindowOfCatia(desktop, window, desktop.GetWindowTitle(window))) {
            windows.push_back(window);
        }
        return 1L;
    });
    return windows;
}

// Of several windows, one whose program could be reached speaks for all.
UnreachableCatia WhatKeepsCatiaApart(Form1& form,
                                     const std::vector<platform::WindowHandle>& windows) {
    platform::Programs& programs = form.ports.programs;
    UnreachableCatia found;
    found.registration = programs.RegisteredUnder(kCatia);
    for (const platform::WindowHandle window : windows) {
        const platform::Rights rights = programs.RightsOf(window);
        if (window == windows.front() || rights == platform::Rights::kSame) {
            found.rights = rights;
            found.program = programs.PathOf(window);
        }
        if (rights == platform::Rights::kSame) {
            break;
        }
    }
    return found;
}

} // namespace

bool IsWindowOfCatia(platform::DesktopWindows& desktop, platform::WindowHandle window,
                     std::string_view title) {
    return catia::IsSessionTitle(title) && desktop.MayBeOfCatia(window);
}

long Projdi_Okno(Form1& form, platform::WindowHandle window) {
    platform::DesktopWindows& desktop = form.ports.desktop_windows;
    const std::string title = desktop.GetWindowTitle(window);
    if (!title.empty()) {
        form.List1.AddItem(title);
    }
    if (IsWindowOfCatia(desktop, window, title)) {
        form.CatiaNalezena = true;
        form.catia_windows.push_back(window);
    }
    return 1;
}

bool Hledani_Catie(Form1& form) {
    form.List1.Clear();
    form.CatiaNalezena = false;
    form.catia_windows.clear();
    form.ports.desktop_windows.EnumWindows(
        [&form](platform::WindowHandle window) { return Projdi_Okno(form, window); });
    return form.CatiaNalezena;
}

bool Spusteni_Catie(Form1& form) {
    stat(form, kSearching);
    form.StatusBar1.SetTip({});
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
    try {
        return catia::Application(form.ports.automation_servers.GetActiveObject(kCatia));
    } catch (const automation::RunTimeError& error) {
        // Not every action searches first, and CATIA may have gone since.
        const auto windows = WindowsOfCatia(form);
        if (windows.empty()) {
            throw;
        }
        throw automation::WithReason(error, CatiaUnreachable(WhatKeepsCatiaApart(form, windows)));
    }
}

catia::Application WaitForCatia(Form1& form) {
    stat(form, "Cekam na Catii");
    return CatiaApplication(form);
}

void NoteDocument(Form1& form, const std::string& name) {
    form.document_worked_on = name;
    const std::size_t windows = form.catia_windows.size();
    form.StatusBar1.SetTip(windows > 1 ? WorkedOn(name, windows) : std::string());
}

bool IsDrawing(Form1& form, const std::string& document_name) {
    NoteDocument(form, document_name);
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
