// The structure text, which the user may edit or paste: the tree from it, its check boxes, and the
// list counted from it.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "tests/support/headless_form.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    testing_support::HeadlessForm headless;
    auto& form = headless.form;
    form.Text1.SetText(std::string(reinterpret_cast<const char*>(data), size));
    form.Command5.Click();
    const std::size_t nodes = form.TreeView1.Count();
    if (nodes > 0) {
        form.TreeView1.UserCheck(nodes / 2 + 1, false);
    }
    form.Command4.Click();
    if (!headless.message_boxes.shown.empty() || form.ListView1.Count() > nodes ||
        form.TreeView1.Count() != nodes) {
        std::abort();
    }
    return 0;
}
