// A person who does anything at any time: presses, types, ticks, drags and closes, at rest and
// whenever the program yields, while CATIA answers, fails, is switched to another document or goes
// away. Bytes choose what is done. After every step the program and the drawing are compared with
// what the step should have left, reckoned here and not by the program.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/headless_form.hpp"

namespace testing_support {

// A rule that a step has broken.
struct Broken : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Person {
  public:
    explicit Person(std::span<const std::uint8_t> choices);
    ~Person();
    Person(const Person&) = delete;
    Person& operator=(const Person&) = delete;

    // Lives until the bytes are spent. Throws Broken.
    void Live();

    // What was done, a line each; what was done at a yield is indented.
    [[nodiscard]] const std::vector<std::string>& Steps() const;

    // How often something came to its good end, so that a test can tell that it did not look at
    // failures alone.
    [[nodiscard]] const std::map<std::string, std::size_t>& Successes() const;

  private:
    class Life;
    std::unique_ptr<Life> life_;
};

} // namespace testing_support
