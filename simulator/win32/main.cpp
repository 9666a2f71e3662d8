// CatiaSim.exe [--zkouska] [--log FILE] [--detail-as-number] [DOCUMENT...]
// CatiaSim.exe --unregister
//
// Opens the documents, the first one being active; without one, those of the samples folder beside
// the program or further up. With --log the calls are written to FILE at the end. It does not start
// while a CATIA runs. With --zkouska it does: no program but a Dorvak that is started with the same
// switch meets it then, and that is started too. With --unregister it only removes from the
// registry what a session that could not end has left there.
#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <windows.h>

#include <commctrl.h>
#include <ole2.h>
#include <shellapi.h>

#include "call_clock.hpp"
#include "com/safety.hpp"
#include "com/trial.hpp"
#include "com/utf.hpp"
#include "com_registration.hpp"
#include "files.hpp"
#include "only_trial.hpp"
#include "other_sessions.hpp"
#include "remote_control.hpp"
#include "session_window.hpp"
#include "simulator/session.hpp"

namespace {

struct Options {
    bool unregister = false;
    com::Purpose purpose = com::Purpose::kWork;
    std::string log_path;
    bool detail_as_number = false;
    std::vector<std::string> documents;
};

Options ReadCommandLine() {
    Options options;
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i) {
        const std::string word = com::Narrow(words[i]);
        if (word == "--log" && i + 1 < count) {
            options.log_path = com::Narrow(words[++i]);
        } else if (word == "--detail-as-number") {
            options.detail_as_number = true;
        } else if (word == "--unregister") {
            options.unregister = true;
        } else if (word == com::kTrialSwitch) {
            options.purpose = com::Purpose::kTrial;
        } else if (!word.starts_with('-') && !word.starts_with('/')) {
            options.documents.push_back(word); // COM starts a server with -Embedding
        }
    }
    LocalFree(words);
    return options;
}

std::vector<std::string> SampleDocuments() {
    namespace fs = std::filesystem;
    std::vector<std::string> found;
    for (fs::path folder = fs::path(com::Widen(simulator::ProgramPath())).parent_path();;
         folder = folder.parent_path()) {
        std::error_code failure; // a folder that is not there ends the loop at once
        for (const auto& entry : fs::directory_iterator(folder / L"samples", failure)) {
            if (entry.path().extension() == L".txt") {
                found.push_back(com::Narrow(entry.path().wstring()));
            }
        }
        if (!found.empty() || folder == folder.parent_path()) {
            std::sort(found.begin(), found.end());
            return found;
        }
    }
}

void RefuseBesideAnother() {
    if (const std::string other = simulator::RunningCatia(); !other.empty()) {
        throw std::runtime_error("Simulace CATIE se nespustí, dokud běží CATIA:\n" + other +
                                 "\n\nJiné programy by simulaci považovaly za ni. Vedle CATIE se "
                                 "spouští jen „Dorvak na zkoušku“ z nabídky Start.");
    }
}

int Run() {
    Options options = ReadCommandLine();
    if (options.unregister) {
        return simulator::RemoveLeftRegistration() ? 0 : 1;
    }
    const bool on_trial = options.purpose == com::Purpose::kTrial;
    com::OwnedHandle only_one;
    if (on_trial) {
        only_one = simulator::TakeTrial();
        if (!only_one) {
            return 0; // the session that runs has been told to come forward
        }
    } else {
        RefuseBesideAnother();
    }
    if (options.documents.empty()) {
        options.documents = SampleDocuments();
    }
    simulator::Session session;
    session.detail_as_number = options.detail_as_number;
    const auto write_log = [&] {
        if (!options.log_path.empty()) {
            simulator::WriteWholeFile(options.log_path, simulator::LogAsText(session));
        }
    };
    simulator::SessionWindow window(GetModuleHandleW(nullptr), session, options.purpose);
    window.Open(options.documents);
    simulator::ShareCallTimes();
    simulator::Server server{session, write_log};
    const simulator::ApplicationRegistration registration(server, options.purpose);
    if (!registration.problem().empty()) {
        throw std::runtime_error(registration.problem());
    }
    if (on_trial) {
        window.StartCompanion();
    }
    const int result = window.Run();
    write_log();
    return result;
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    com::LoadLibrariesOfTheSystemOnly();
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_BAR_CLASSES};
    InitCommonControlsEx(&controls);
    int result = 1;
    if (SUCCEEDED(OleInitialize(nullptr))) {
        try {
            result = Run();
        } catch (const std::runtime_error& error) {
            MessageBoxW(nullptr, com::Widen(error.what()).c_str(), L"CatiaSim",
                        MB_OK | MB_ICONERROR | MB_SETFOREGROUND | MB_TOPMOST);
        }
        OleUninitialize();
    }
    return result;
}
