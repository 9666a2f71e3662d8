// The files that describe the simulated session's documents. A drawing that is read can be written
// and read again, with the same result.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "simulator/session.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    simulator::Session session;
    try {
        session.LoadDocument("fuzz", {reinterpret_cast<const char*>(data), size});
    } catch (const std::runtime_error&) {
        return 0; // malformed, and said so
    }
    if (session.DocumentNames().size() != 1) {
        std::abort();
    }
    const std::string written = session.DrawingAsText();
    if (!written.starts_with("DrawingDocument")) {
        return 0;
    }
    simulator::Session again;
    again.LoadDocument("written", written);
    if (again.DrawingAsText() != written) {
        std::abort();
    }
    return 0;
}
