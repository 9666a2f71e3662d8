// The structure text: one line per instance, the lines separated by CR LF, the fields of a line by
// tabs.
//
//   top product   "0", part number
//   leaf          depth, part number, the parent's instance path
//   assembly      depth, part number, the parent's instance path, its own instance path
//
// An instance path of an assembly is its parent's path, "|||||", the part number, and an ordinal
// between asterisks, which tells instances of one assembly apart. The children of the top product
// have its part number as their parent's path.
#pragma once

#include <string>
#include <string_view>

namespace structure {

enum class LineKind {
    kNone,      // fewer than two fields: nothing to place
    kTop,       //
    kAssembly,  //
    kLeaf,      //
    kMalformed, // the first field is no number, or the parent is missing
};

struct StructureLine {
    LineKind kind = LineKind::kNone;
    std::string_view part_number;
    std::string_view parent_path;
    std::string_view path; // of an assembly
};

// Reads one line; the result refers to its text.
StructureLine ParseStructureLine(std::string_view line);

std::string TopLine(const std::string& part_number);
std::string LeafLine(int depth, const std::string& part_number, const std::string& parent_path);
std::string AssemblyLine(int depth, const std::string& part_number, const std::string& parent_path,
                         const std::string& path);
// The instance path of an assembly; `ordinal` is unique within one walk.
std::string InstancePath(const std::string& parent_path, const std::string& part_number,
                         int ordinal);

} // namespace structure
