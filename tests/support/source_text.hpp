// The project's sources as texts, for tests of what stands in several of them.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

namespace testing_support {

inline std::string ReadSource(const std::string& path) {
    std::ifstream file(SOURCE_FOLDER "/" + path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::vector<std::smatch> Matches(const std::string& text, const std::regex& pattern) {
    return {std::sregex_iterator(text.begin(), text.end(), pattern), {}};
}

inline std::vector<std::string> QuotedTexts(const std::string& text) {
    std::vector<std::string> quoted;
    for (const auto& match : Matches(text, std::regex("\"([^\"]*)\""))) {
        quoted.push_back(match[1]);
    }
    return quoted;
}

} // namespace testing_support
