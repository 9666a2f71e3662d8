#include "partslist/tree_names.hpp"

#include <cstdint>

#include "shell/shell.hpp"
#include "text/text.hpp"

namespace partslist {

namespace {

constexpr const char* kEnding = ".strom";
constexpr std::string_view kFirstField = "strom";

// Tells texts apart (FNV-1a).
std::string Fingerprint(std::string_view text) {
    constexpr std::uint64_t kStart = 0xcbf29ce484222325;
    constexpr std::uint64_t kFactor = 0x100000001b3;
    std::uint64_t hash = kStart;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * kFactor;
    }
    return std::to_string(hash);
}

// The file: this line, then a name a line.
std::string FirstLine(std::size_t names, std::string_view list_file) {
    return std::string(kFirstField) + "\t" + std::to_string(names) + "\t" + Fingerprint(list_file);
}

// Empty where the list itself has that ending.
std::string NamesFile(const std::string& path) {
    const std::string beside = WithEnding(path, kEnding);
    return text::EqualsIgnoringCase(beside, path) ? "" : beside;
}

} // namespace

std::string WithEnding(const std::string& path, const std::string& ending) {
    const std::size_t point = path.find_last_of('.');
    const std::size_t folder = path.find_last_of('\\');
    const bool has_ending =
        point != std::string::npos && (folder == std::string::npos || point > folder);
    return (has_ending ? path.substr(0, point) : path) + ending;
}

std::string WriteTreeNames(const controls::NameSet& names, std::string_view list_file) {
    std::string file = FirstLine(names.size(), list_file) + "\r\n";
    for (const std::string& name : names) {
        file += text::Escaped(name);
        file += "\r\n";
    }
    return file;
}

std::optional<controls::NameSet> ReadTreeNames(std::string_view file, std::string_view list_file) {
    const auto lines = text::Lines(file);
    if (lines.empty() || lines.front() != FirstLine(lines.size() - 1, list_file)) {
        return std::nullopt;
    }
    controls::NameSet names;
    for (std::size_t line = 1; line < lines.size(); ++line) {
        names.insert(text::Unescaped(lines[line]));
    }
    return names;
}

void KeepTreeNames(controls::Form1& form, const std::string& path, std::string_view list_file) {
    const std::string beside = NamesFile(path);
    if (beside.empty()) {
        return;
    }
    platform::Files& files = form.ports.files;
    const auto& names = form.ListView1.SourceNames();
    bool kept = false;
    if (names) {
        shell::TrapSilently([&] {
            files.Write(beside, WriteTreeNames(*names, list_file));
            kept = true;
        });
    }
    if (!kept) {
        files.Remove(beside);
    }
}

void TakeTreeNames(controls::Form1& form, const std::string& path, std::string_view list_file) {
    const std::string beside = NamesFile(path);
    if (beside.empty() || !form.ports.files.Exists(beside)) {
        return;
    }
    shell::TrapSilently([&] {
        if (auto names = ReadTreeNames(form.ports.files.Read(beside), list_file)) {
            form.ListView1.SetSourceNames(std::move(*names));
        }
    });
}

} // namespace partslist
