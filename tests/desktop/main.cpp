// Runs the desktop tests.
#include <gtest/gtest.h>

#include <iostream>

#include "programs.hpp"

int main(int argc, char** argv) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    testing::InitGoogleTest(&argc, argv);
    driver::KeepLogsApart();
    int result = RUN_ALL_TESTS();
    if (testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
        std::cout << "no test of that name\n";
        result = 1;
    }
    std::cout.flush();
    driver::LeaveResult(result);
    return result;
}
