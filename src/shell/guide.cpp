#include "shell/guide.hpp"

#include "shell/explanations.hpp"
#include "shell/shell.hpp"

namespace shell {

void ShowGuide(controls::Form1& form, std::size_t page) {
    Trap([&] { form.ports.guide.Show(kGuidePages.at(page)); },
         [&form](const automation::RunTimeError& error) {
             if (error.number == automation::FileNotFound().number) {
                 Refuse(form, "Prirucka neni vedle programu");
                 Explain(form, GuideIsMissing());
             } else {
                 ShowError(form, error);
             }
         });
}

} // namespace shell
