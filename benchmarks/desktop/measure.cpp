// Measure MACRO.vbs [PAIRS] [SECTION...]: the program in its real window against what does the same
// otherwise. Prints a table in Markdown for each section, or for those that are named.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "measuring.hpp"
#include "sections.hpp"

namespace {

struct Section {
    const char* name;
    void (*measure)(const measuring::Options& options);
};
constexpr auto kSections = std::to_array<Section>({
    {"start", measuring::StartOfTheProgram},
    {"walk", measuring::Walk},
    {"table", measuring::Table},
    {"read", measuring::ReadBack},
    {"update", measuring::Update},
    {"sheets", measuring::Sheets},
    {"macro", measuring::Macro},
    {"lists", measuring::Lists},
    {"preview", measuring::Preview},
    {"trees", measuring::Trees},
    {"large", measuring::LargeWalk},
});

// Each section runs, also where one before it fails.
int MeasureAll(const measuring::Options& options, const std::vector<std::string>& wanted) {
    int result = 0;
    for (const auto& section : kSections) {
        if (!wanted.empty() &&
            std::find(wanted.begin(), wanted.end(), section.name) == wanted.end()) {
            continue;
        }
        try {
            section.measure(options);
        } catch (const std::exception& failure) {
            std::cout << "\nMeasure: " << section.name << ": " << failure.what() << std::endl;
            result = 1;
        }
    }
    return result;
}

bool IsSection(const std::string& name) {
    return std::any_of(std::begin(kSections), std::end(kSections),
                       [&](const auto& section) { return name == section.name; });
}

} // namespace

int main(int argc, char** argv) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    measuring::Options options;
    std::vector<std::string> wanted;
    int result = 0;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word.ends_with(".vbs")) {
            options.macro = word;
        } else if (const int pairs = std::atoi(argv[i]); pairs > 0) {
            options.pairs = pairs;
        } else if (IsSection(word)) {
            wanted.push_back(word);
        } else {
            std::cout << "Measure: there is no section " << word << std::endl;
            result = 2;
        }
    }
    if (result == 0) {
        const driver::SettingKeeper setting;
        result = MeasureAll(options, wanted);
    }
    driver::LeaveResult(result);
    return result;
}
