// What is known of parts from lists that were saved, exported or closed with: the material, the
// size and the note that a part of that name had last. They stand in a small file in the data
// folder, which is read when it is needed and written when there is something new.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/form1.hpp"

namespace partslist {

inline constexpr std::size_t kMostKnownParts = 20'000;

struct KnownPart {
    std::string name;
    std::string material = {};
    std::string size = {};
    std::string note = {};
    friend bool operator==(const KnownPart&, const KnownPart&) = default;
};

// Each name once, the part that goes first in front.
using KnownParts = std::vector<KnownPart>;

// Takes over what is there of each part; where a name comes twice, the later one counts. What is
// blank leaves what is known. Whether that changed anything: then these parts are the youngest, and
// of more than kMostKnownParts the oldest are gone.
bool Learn(KnownParts& known, const std::vector<KnownPart>& parts);

// What a row of the parts list says of its part.
KnownPart PartOf(const controls::ListRow& row);

struct FilledCell {
    std::size_t row = 0; // counted from 1
    std::size_t field = 0;
    std::string text;
    friend bool operator==(const FilledCell&, const FilledCell&) = default;
};
// What goes into the empty cells of the rows' materials, sizes and notes.
std::vector<FilledCell> KnownCells(const KnownParts& known,
                                   const std::vector<controls::ListRow>& rows);

// The file: a line each, name, material, size and note separated by tabs, the part that goes first
// in the first line. What is no such line is passed over.
struct ReadKnownParts {
    KnownParts parts;
    bool passed_over = false; // whether there was such a line
};
std::string WriteKnownParts(const KnownParts& known);
ReadKnownParts ParseKnownParts(std::string_view file);

// Remembers the parts in the file. What fails there is explained, and fails nothing else.
void LearnParts(controls::Form1& form, const std::vector<KnownPart>& parts);
// Those of the list as it stands.
void LearnParts(controls::Form1& form);
// Those of a list that an action has written into a drawing: rows of texts, the name, then the
// fields by their numbers.
void LearnExported(controls::Form1& form, const std::vector<std::vector<std::string>>& rows);

} // namespace partslist
