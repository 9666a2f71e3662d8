// The session's objects as a COM server: each is an IDispatch.
#pragma once

#include <functional>

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

} // namespace simulator
