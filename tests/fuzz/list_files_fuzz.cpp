// Parts-list files and value files, which others may have made. A list that was read is written and
// read again with the same rows, unless one of its fields holds what no field survives with.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "partslist/list_file.hpp"
#include "partslist/partslist.hpp"
#include "tests/support/headless_form.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string file(reinterpret_cast<const char*>(data), size);
    testing_support::HeadlessForm headless;
    headless.files.stored["C:\\Dorvak\\Material.txt"] = file;
    headless.files.stored["C:\\Dorvak\\list.txt"] = file;
    app::Form_Load(headless.form);
    if (!headless.message_boxes.shown.empty()) {
        std::abort();
    }
    if (!headless.Status().starts_with("Nacteni listu ok ")) {
        return 0;
    }
    const std::string written = partslist::WriteListFile(headless.form.ListView1);
    testing_support::HeadlessForm again;
    again.files.stored["C:\\Dorvak\\list.txt"] = written;
    app::Form_Load(again.form);
    const auto& before = headless.form.ListView1;
    const auto& after = again.form.ListView1;
    if (before.Count() != after.Count()) {
        std::abort();
    }
    for (std::size_t row = 1; row <= before.Count(); ++row) {
        const auto texts = testing_support::RowTexts(before, row);
        for (const std::string& text : texts) {
            // A field that ends in "@" runs into its separator.
            if (text.ends_with('@') || text.ends_with('\r')) {
                return 0;
            }
        }
        if (texts != testing_support::RowTexts(after, row) ||
            before.Row(row).checked != after.Row(row).checked) {
            std::abort();
        }
    }
    return 0;
}
