// CatiaSim.exe [--log FILE] [--detail-as-number] [DOCUMENT...]
//
// Opens the documents, the first one being active; without one, those of the samples folder beside
// the program or further up. With --log the calls are written to FILE at the end.
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
#include "com/utf.hpp"
#include "com_registration.hpp"
#include "files.hpp"
#include "remote_control.hpp"
#include "session_window.hpp"
#include "simulator/session.hpp"

namespace {

struct Options {
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

int Run() {
    Options options = ReadCommandLine();
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
    simulator::SessionWindow window(GetModuleHandleW(nullptr), session);
    for (const std::string& document : options.documents) {
        window.Open(document);
    }
    if (const auto names = session.DocumentNames(); !names.empty()) {
        session.Activate(names.front());
    }
    simulator::ShareCallTimes();
    simulator::Server server{session, write_log};
    const simulator::ApplicationRegistration registration(server);
    if (!registration.problem().empty()) {
        throw std::runtime_error(registration.problem());
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
                        MB_OK | MB_ICONERROR);
        }
        OleUninitialize();
    }
    return result;
}
