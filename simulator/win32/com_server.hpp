// The session's objects as a COM server: each is an IDispatch, and the application object is
// registered like CATIA's.
#pragma once

#include <functional>
#include <string>

#include <windows.h>

#include <wrl/client.h>

#include "simulator/session.hpp"

namespace simulator {

// What serves a session's objects. One per process, on the thread that entered the apartment.
struct Server {
    Session& session;
    // Called when the armed failure ends the process, just before it does.
    std::function<void()> before_vanishing;
};

// The interface of `object`, which is one of the session's. `server` outlives it.
Microsoft::WRL::ComPtr<IDispatch> MakeDispatch(Server& server, automation::ObjectPtr object);

// Enters the application object under CATIA.Application in the registry, in the Running Object
// Table and among the running class objects, and takes back what it entered at the end. A CATIA
// that is installed keeps its registration; the session runs under its class then.
class ApplicationRegistration {
  public:
    explicit ApplicationRegistration(Server& server);
    ~ApplicationRegistration();
    ApplicationRegistration(const ApplicationRegistration&) = delete;
    ApplicationRegistration& operator=(const ApplicationRegistration&) = delete;

    // What was not possible; empty where everything was.
    [[nodiscard]] const std::string& problem() const { return problem_; }

  private:
    HKEY registry_root_ = nullptr; // where the class was entered; null where nothing was
    std::wstring class_id_text_;
    DWORD running_object_ = 0;
    DWORD class_object_ = 0;
    std::string problem_;
};

} // namespace simulator
