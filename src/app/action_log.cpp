#include "app/action_log.hpp"

#include "shell/explanations.hpp"
#include "text/text.hpp"

namespace app {

namespace {

// One line: the number says which of several runs inside one another ends.
void Write(controls::Form1& form, const std::string& step, const std::string& words) {
    form.ports.log.Write(form.ports.clock.Now() + " [" + std::to_string(form.innermost.number) +
                         "] " + (step.empty() ? "Událost" : step) + ": " + words);
}

} // namespace

BegunAction LogBegin(controls::Form1& form, const std::string& step) {
    if (!step.empty()) {
        Write(form, step, "začátek");
    }
    return {form.calls, form.ports.clock.Seconds()};
}

void LogEnd(controls::Form1& form, const std::string& step, const BegunAction& begun) {
    const auto& error = form.innermost.error;
    if (step.empty() && !error) {
        return;
    }
    Write(form, step,
          "volání " + std::to_string(form.calls - begun.calls) + ", " +
              text::FixedDecimal(form.ports.clock.Seconds() - begun.seconds, 3) + " s, " +
              (error ? shell::ErrorForLog(*error) : "konec"));
}

} // namespace app
