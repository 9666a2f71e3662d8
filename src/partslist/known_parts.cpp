#include "partslist/known_parts.hpp"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "partslist/partslist.hpp"
#include "shell/data_files.hpp"
#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"

namespace partslist {

namespace {

constexpr const char* kKnownFile = "znama.txt";
constexpr const char* kKnownFileBefore = "znama.bak";

// What is known of a part, by the fields of the list.
struct KnownField {
    std::size_t field;
    std::string KnownPart::*text;
};
constexpr std::array kKnownFields{KnownField{kMaterial, &KnownPart::material},
                                  KnownField{kSize, &KnownPart::size},
                                  KnownField{kNote, &KnownPart::note}};

bool IsVoid(const std::string& text) {
    return text::TrimBlanks(text).empty();
}

// Whether there is nothing to be known from it.
bool SaysNothing(const KnownPart& part) {
    return part.name.empty() || std::ranges::all_of(kKnownFields, [&part](const auto& field) {
               return IsVoid(part.*field.text);
           });
}

using Places = std::unordered_map<std::string_view, std::size_t>;

Places PlacesOf(const KnownParts& parts) {
    Places places;
    places.reserve(parts.size());
    for (std::size_t place = 0; place < parts.size(); ++place) {
        places.emplace(parts[place].name, place);
    }
    return places;
}

// Each part of the list once, with what is known of it already.
KnownParts Merged(const KnownParts& known, const Places& places,
                  const std::vector<KnownPart>& parts) {
    KnownParts merged;
    merged.reserve(parts.size()); // the names stay where they are
    Places place_in_merged;
    for (const KnownPart& part : parts) {
        if (SaysNothing(part)) {
            continue;
        }
        const auto [place, is_new] = place_in_merged.try_emplace(part.name, merged.size());
        if (is_new) {
            const auto before = places.find(part.name);
            merged.push_back(before == places.end() ? KnownPart{.name = part.name}
                                                    : known[before->second]);
        }
        for (const KnownField& field : kKnownFields) {
            if (!IsVoid(part.*field.text)) {
                merged[place->second].*field.text = part.*field.text;
            }
        }
    }
    return merged;
}

ReadKnownParts LoadKnownParts(Form1& form) {
    platform::Files& files = form.ports.files;
    const std::string path = shell::NewestDataFile(form, kKnownFile);
    return files.Exists(path) ? ParseKnownParts(files.Read(path)) : ReadKnownParts{};
}

} // namespace

bool Learn(KnownParts& known, const std::vector<KnownPart>& parts) {
    const Places places = PlacesOf(known);
    KnownParts merged = Merged(known, places, parts);
    const bool is_news = std::ranges::any_of(merged, [&](const KnownPart& part) {
        const auto before = places.find(part.name);
        return before == places.end() || known[before->second] != part;
    });
    if (!is_news) {
        return false;
    }
    const Places youngest = PlacesOf(merged);
    std::erase_if(known,
                  [&youngest](const KnownPart& part) { return youngest.contains(part.name); });
    std::ranges::move(merged, std::back_inserter(known));
    if (known.size() > kMostKnownParts) {
        known.erase(known.begin(), known.end() - static_cast<std::ptrdiff_t>(kMostKnownParts));
    }
    return true;
}

KnownPart PartOf(const controls::ListRow& row) {
    return {.name = row.text,
            .material = controls::SubItemOf(row, kMaterial),
            .size = controls::SubItemOf(row, kSize),
            .note = controls::SubItemOf(row, kNote)};
}

std::vector<FilledCell> KnownCells(const KnownParts& known,
                                   const std::vector<controls::ListRow>& rows) {
    const Places places = PlacesOf(known);
    std::vector<FilledCell> cells;
    for (std::size_t row = 1; row <= rows.size(); ++row) {
        const auto found = places.find(rows[row - 1].text);
        if (found == places.end()) {
            continue;
        }
        const KnownPart& part = known[found->second];
        for (const KnownField& field : kKnownFields) {
            if (controls::SubItemOf(rows[row - 1], field.field).empty() &&
                !(part.*field.text).empty()) {
                cells.push_back({row, field.field, part.*field.text});
            }
        }
    }
    return cells;
}

std::string WriteKnownParts(const KnownParts& known) {
    std::string file;
    for (const KnownPart& part : known) {
        file += text::Escaped(part.name);
        for (const KnownField& field : kKnownFields) {
            file += '\t';
            file += text::Escaped(part.*field.text);
        }
        file += "\r\n";
    }
    return file;
}

ReadKnownParts ParseKnownParts(std::string_view file) {
    ReadKnownParts read;
    std::vector<KnownPart> parts;
    for (const std::string_view line : text::Lines(file)) {
        const auto fields = text::Split(line, "\t");
        if (fields.size() != 1 + kKnownFields.size() || fields[0].empty()) {
            read.passed_over = true;
            continue;
        }
        parts.push_back({.name = text::Unescaped(fields[0])});
        std::size_t place = 0;
        for (const KnownField& field : kKnownFields) {
            parts.back().*field.text = text::Unescaped(fields[++place]);
        }
    }
    Learn(read.parts, parts);
    return read;
}

void LearnParts(Form1& form, const std::vector<KnownPart>& parts) {
    if (std::ranges::all_of(parts, SaysNothing)) {
        return;
    }
    shell::Trap(
        [&] {
            ReadKnownParts known = LoadKnownParts(form);
            if (!Learn(known.parts, parts)) {
                return;
            }
            form.ports.files.Write(
                shell::DataFile(form, kKnownFile), WriteKnownParts(known.parts),
                {.keep_before_as = known.passed_over ? shell::DataFile(form, kKnownFileBefore) : "",
                 .patient = form.closing});
        },
        [&form](const automation::RunTimeError& error) {
            shell::Explain(form, shell::PartsNotRemembered(error));
        });
}

void LearnParts(Form1& form) {
    std::vector<KnownPart> parts;
    parts.reserve(form.ListView1.Count());
    for (const controls::ListRow& row : form.ListView1.Rows()) {
        parts.push_back(PartOf(row));
    }
    LearnParts(form, parts);
}

void LearnExported(Form1& form, const std::vector<std::vector<std::string>>& rows) {
    std::vector<KnownPart> parts;
    parts.reserve(rows.size());
    for (const std::vector<std::string>& texts : rows) {
        KnownPart part{.name = texts.at(0)};
        for (const KnownField& field : kKnownFields) {
            part.*field.text = texts.at(field.field);
        }
        parts.push_back(std::move(part));
    }
    LearnParts(form, parts);
}

void m_Doplnit_zname_Click(Form1& form) {
    controls::ListView& list = form.ListView1;
    if (list.Count() == 0) {
        return;
    }
    shell::Trap(
        [&] {
            const auto cells = KnownCells(LoadKnownParts(form).parts, list.Rows());
            for (const FilledCell& cell : cells) {
                list.SetSubItem(cell.row, cell.field, cell.text);
            }
            ListView1_Click(form);
            shell::stat(form, "Doplneno bunek: " + std::to_string(cells.size()));
        },
        [&form](const automation::RunTimeError& error) {
            shell::ShowError(form, error, "Nacteni Error ");
        });
}

} // namespace partslist
