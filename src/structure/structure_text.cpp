#include "structure/structure_text.hpp"

#include "structure/structure.hpp"

#include "text/text.hpp"

namespace structure {

StructureLine ParseStructureLine(std::string_view line) {
    const auto fields = text::Split(line, "\t");
    if (fields.size() < 2) {
        return {};
    }
    StructureLine parsed;
    parsed.part_number = fields[1];
    const auto depth = text::Number(fields[0]);
    if (depth == 0.0) {
        parsed.kind = LineKind::kTop;
        return parsed;
    }
    if (!depth || fields.size() == 2) {
        parsed.kind = LineKind::kMalformed;
        return parsed;
    }
    parsed.parent_path = fields[2];
    if (fields.size() == 4) {
        parsed.kind = LineKind::kAssembly;
        parsed.path = fields[3];
    } else {
        parsed.kind = LineKind::kLeaf;
    }
    return parsed;
}

std::string PastedLines(std::string_view pasted) {
    std::string lines;
    std::size_t start = 0;
    for (std::size_t end = pasted.find('\n'); end != std::string_view::npos;
         end = pasted.find('\n', start)) {
        std::string_view line = pasted.substr(start, end - start);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        line = line.substr(0, line.find_last_not_of('\t') + 1);
        lines += line;
        lines += "\r\n";
        start = end + 1;
    }
    lines += pasted.substr(start);
    return lines;
}

std::string TopLine(const std::string& part_number) {
    return "0\t" + part_number;
}

std::string LeafLine(int depth, const std::string& part_number, const std::string& parent_path) {
    return std::to_string(depth) + '\t' + part_number + '\t' + parent_path;
}

std::string AssemblyLine(int depth, const std::string& part_number, const std::string& parent_path,
                         const std::string& path) {
    return LeafLine(depth, part_number, parent_path) + '\t' + path;
}

std::string InstancePath(const std::string& parent_path, const std::string& part_number,
                         int ordinal) {
    return parent_path + "|||||" + part_number + '*' + std::to_string(ordinal) + '*';
}

} // namespace structure
