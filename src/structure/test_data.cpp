#include "shell/shell.hpp"
#include "structure/structure.hpp"
#include "text/text.hpp"

namespace structure {

void Command1_Click(Form1& form) {
    constexpr std::size_t kRows = 10;
    form.ListView1.Clear();
    for (std::size_t i = 1; i <= kRows; ++i) {
        const std::size_t row = form.ListView1.Add(std::string(1, static_cast<char>('@' + i)));
        form.ListView1.SetSubItem(row, controls::kPosition, text::FourDigits(i));
    }
}

void Command2_Click(Form1& form) {
    Command1_Click(form);
    shell::stat(form, "6");
    form.StatusBar1.SetPanelText(2, "3");
}

} // namespace structure
