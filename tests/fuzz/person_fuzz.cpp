// A person who does anything at any time: the bytes are what is done.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "tests/support/person.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    testing_support::Person person({data, size});
    try {
        person.Live();
    } catch (const testing_support::Broken& broken) {
        for (const std::string& step : person.Steps()) {
            static_cast<void>(std::fprintf(stderr, "%s\n", step.c_str()));
        }
        static_cast<void>(std::fprintf(stderr, "%s\n", broken.what()));
        std::abort();
    }
    return 0;
}
