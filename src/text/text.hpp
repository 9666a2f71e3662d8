// The text rules that every part of the program shares. All texts are UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace text {

// The pieces of `whole` between the occurrences of `separator` (which is not empty), empty pieces
// included. The empty text gives one empty piece.
std::vector<std::string_view> Split(std::string_view whole, std::string_view separator);

// The lines of a text file: each ends with CR LF, or with LF alone in a file that has no CR LF; the
// last one may also end with the file. Every other CR and LF belongs to its line. An empty file has
// no line.
std::vector<std::string_view> Lines(std::string_view file);

// `whole` with every CR LF, and further CRs before it, become LF: what a field can hold that is
// saved in such a file.
std::string WithLineFeeds(std::string_view whole);

// `whole` as one field of a line whose fields are separated by tabs: line feeds, carriage returns,
// tabs and backslashes stand as "\n", "\r", "\t" and "\\".
std::string Escaped(std::string_view whole);
// What was escaped.
std::string Unescaped(std::string_view escaped);

// `whole` without the blanks (only U+0020) at both ends.
std::string_view TrimBlanks(std::string_view whole);

// `whole` from its second character on; a character may be several bytes.
std::string_view WithoutFirstCharacter(std::string_view whole);

// The number at the beginning of `whole`: an optional sign, digits with an optional "." among them,
// an optional exponent. Leading blanks are skipped and whatever follows the number is ignored; "."
// is the decimal separator in every locale. 0 where there is no number, and where the number is
// beyond what a double holds.
double LeadingNumber(std::string_view whole);

// `whole`, blanks at its ends aside, read as one number of the form that LeadingNumber takes;
// nothing where it is anything else.
std::optional<double> Number(std::string_view whole);

// `number` in the pattern "000#": at least four digits, leading zeros. 12345 is "12345".
std::string FourDigits(std::size_t number);

// `number` in plain decimal form, never with an exponent: "7", "1.5", "-0.25". 15 significant
// digits, which spare it the noise of binary fractions. `number` is finite.
std::string PlainDecimal(double number);

// `number` with so many digits behind the point: "0.044".
std::string FixedDecimal(double number, int digits);

// Whether `whole` contains `part`, which is ASCII, without regard to the case of ASCII letters.
bool ContainsIgnoringCase(std::string_view whole, std::string_view part);

// Whether the texts are the same, compared like ContainsIgnoringCase.
bool EqualsIgnoringCase(std::string_view left, std::string_view right);

// Whether `whole` begins with `part`, compared like ContainsIgnoringCase.
bool StartsWithIgnoringCase(std::string_view whole, std::string_view part);

// `whole` with the capital letters of the Latin languages made small ones; an accent stays with its
// letter.
std::string WithSmallLetters(std::string_view whole);

// The path of the program that a command line starts: between quotes where it begins with one, else
// up to its ".exe", blanks included.
std::string_view ProgramOf(std::string_view command_line);
// Whether the argument stands among those of a command line, whose first word is the program.
// Blanks between quotes part no words.
bool HasArgument(std::string_view command_line, std::string_view argument);

} // namespace text
