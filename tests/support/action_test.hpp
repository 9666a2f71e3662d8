// The base of the action tests: the program without a window beside a simulated session.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/drawing_comparison.hpp"
#include "tests/support/drawing_text.hpp"
#include "tests/support/headless_form.hpp"

namespace testing_support {

struct ActionTest : testing::Test, HeadlessForm {
    simulator::Session session;

    ActionTest() { CompareWithDrawing(*this); }

    // Opens a document in the session, which the program then finds.
    void Open(std::string_view document) {
        session.LoadDocument("document", document);
        Connect(session);
    }
    [[nodiscard]] bool Called(const std::string& call) const {
        return std::ranges::find(session.Log(), call) != session.Log().end();
    }
    // Of the active drawing.
    [[nodiscard]] std::vector<std::string> DrawnSheets() const {
        return SheetNames(session.DrawingAsText());
    }
    [[nodiscard]] std::vector<std::string> DrawnRows() const {
        return TableRows(session.DrawingAsText());
    }
};

} // namespace testing_support
