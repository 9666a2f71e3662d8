// Texts in double quotes, as the call log and the documents' files hold them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

std::string Quoted(std::string_view text);

// The character that a backslash and `letter` stand for between the quotes; nothing where they
// stand for none.
std::optional<char> Escaped(char letter);

} // namespace simulator
