// A person who does anything at any time, by chance. PERSON_COUNT asks for more of them than a test
// run has time for, PERSON_FIRST for others.

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <map>
#include <random>

#include "tests/support/person.hpp"

namespace {

constexpr unsigned kPersons = 300;
constexpr std::size_t kChoices = 700; // about 200 steps

std::vector<std::uint8_t> Choices(unsigned seed) {
    std::mt19937 random(seed);
    std::vector<std::uint8_t> choices(kChoices);
    for (std::uint8_t& choice : choices) {
        choice = static_cast<std::uint8_t>(random());
    }
    return choices;
}

unsigned Asked(const char* variable, unsigned otherwise) {
    const char* const value = std::getenv(variable);
    return value != nullptr ? static_cast<unsigned>(std::stoul(value)) : otherwise;
}

std::string Joined(const std::vector<std::string>& steps) {
    std::string lines;
    for (const std::string& step : steps) {
        lines += step + "\n";
    }
    return lines;
}

TEST(Person, FindsTheProgramRightWhateverIsDone) {
    const unsigned first = Asked("PERSON_FIRST", 1);
    const unsigned persons = Asked("PERSON_COUNT", kPersons);
    std::map<std::string, std::size_t> successes;
    std::size_t steps = 0;
    for (unsigned seed = first; seed < first + persons; ++seed) {
        const auto choices = Choices(seed);
        testing_support::Person person(choices);
        try {
            person.Live();
        } catch (const std::exception& broken) {
            FAIL() << broken.what() << "\nseed " << seed << ":\n" << Joined(person.Steps());
        }
        steps += person.Steps().size();
        for (const auto& [what, times] : person.Successes()) {
            successes[what] += times;
        }
    }
    std::cout << steps << " steps, among them\n";
    for (const auto& [what, times] : successes) {
        std::cout << times << " " << what << "\n";
    }
    // What must have come to its good end again and again for the run to mean anything.
    for (const char* const what : {"walk",
                                   "disturbed walk",
                                   "tree",
                                   "counted list",
                                   "drag",
                                   "added row",
                                   "updated list",
                                   "selected rows deleted",
                                   "sorted parts",
                                   "list from file",
                                   "list into file",
                                   "file there and back",
                                   "table there and back",
                                   "table",
                                   "disturbed table",
                                   "small table",
                                   "table without redrawing",
                                   "list into table",
                                   "disturbed list into table",
                                   "list from table",
                                   "disturbed list from table",
                                   "parameters",
                                   "sheets",
                                   "renamed sheets",
                                   "reordered sheets",
                                   "named sheets",
                                   "sheet drag",
                                   "row moved by key",
                                   "sheet moved by key",
                                   "row by key",
                                   "page by key",
                                   "restart"}) {
        EXPECT_GT(successes[what], 0U) << what;
    }
}

} // namespace
