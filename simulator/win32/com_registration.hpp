// The session registered as a running CATIA.
#pragma once

#include <string>

#include "com/trial.hpp"
#include "com_server.hpp"

namespace simulator {

// Enters the application object under CATIA.Application in the registry, in the Running Object
// Table and among the running class objects, and takes back what it entered at the end. A CATIA
// that is installed keeps its registration; the session runs under its class then. On trial the
// object stands in the Running Object Table alone, under the trial's class.
class ApplicationRegistration {
  public:
    ApplicationRegistration(Server& server, com::Purpose purpose);
    ~ApplicationRegistration();
    ApplicationRegistration(const ApplicationRegistration&) = delete;
    ApplicationRegistration& operator=(const ApplicationRegistration&) = delete;

    // What was not possible; empty where everything was.
    [[nodiscard]] const std::string& problem() const { return problem_; }

  private:
    // The class to run under; it is entered in the registry where no CATIA is.
    CLSID EnterInRegistry();

    HKEY registry_root_ = nullptr; // where the class was entered; null where nothing was
    std::wstring class_id_text_;
    DWORD running_object_ = 0;
    DWORD class_object_ = 0;
    std::string problem_;
};

// Removes from the registry what a session of this program has left there that could not end. False
// where that is not possible. Entries of a CATIA, or of this program in another folder, stay.
bool RemoveLeftRegistration();

} // namespace simulator
