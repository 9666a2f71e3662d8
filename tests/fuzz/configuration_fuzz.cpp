// The table configuration, which the user edits freely.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "automation/run_time_error.hpp"
#include "tables/configuration.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        const auto parsed = tables::ParseConfiguration(text, "/sirka");
        if (!std::isfinite(parsed.x) || !std::isfinite(parsed.free_rows)) {
            std::abort();
        }
    } catch (const automation::RunTimeError& error) {
        if (error.number != 9) {
            std::abort();
        }
    }
    return 0;
}
