// Runs the desktop tests. A launcher that cannot see the exit code names a file for it in the
// environment variable RESULT_FILE.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <iostream>

int main(int argc, char** argv) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    testing::InitGoogleTest(&argc, argv);
    int result = RUN_ALL_TESTS();
    if (testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
        std::cout << "no test of that name\n";
        result = 1;
    }
    std::cout.flush();
    if (const char* result_file = std::getenv("RESULT_FILE")) {
        std::ofstream(result_file) << result;
    }
    return result;
}
