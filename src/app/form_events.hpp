// What the window's own events do, and the way every handler runs.
#pragma once

#include <functional>

#include "controls/form1.hpp"

namespace app {

// Runs one event handler. An error that reaches here gets the default handling: a message box with
// its number and description; the program goes on. When the person closed the window while
// handlers ran, the outermost one closes the form at its end. What the handler changed in a list is
// one thing to be taken back, under the name `step`.
void Dispatch(controls::Form1& form, const std::function<void()>& handler,
              const std::string& step = {});

// Binds each control to its action.
void BindActions(controls::Form1& form);

// Start-up, in its order. `form` is bound to its actions, and its window exists, with hWnd, Width
// and Height set.
void Form_Load(controls::Form1& form);

// The window's size changed, or it was restored.
void Form_Resize(controls::Form1& form);

// The person closes the window: closes the form now, or, while handlers run, as soon as the
// outermost one has ended; what runs is stopped. form.unloaded is set once
// the closing steps are done, and the view then destroys the window.
void RequestClose(controls::Form1& form);

// The person wants everything that runs to end: it does so before its next call to CATIA and at its
// next yield, by the error 18. Does nothing where nothing runs.
void RequestStop(controls::Form1& form);

// Windows ends the session: the closing steps run now, even inside a running action, since the
// process may not get to do anything later.
void EndSession(controls::Form1& form);

} // namespace app
