// What is done to a long parts list at once: bringing it up to date, putting it in order, learning
// from it and filling in what is known. Without the disk.

#include <benchmark/benchmark.h>

#include <string>

#include "partslist/known_parts.hpp"
#include "partslist/list_update.hpp"
#include "partslist/ordering.hpp"

namespace {

std::string Name(std::size_t row) {
    return "Ozubené kolo M" + std::to_string(row * 7919 % 10'007) + "x20";
}

std::vector<controls::ListRow> Rows(std::size_t count) {
    std::vector<controls::ListRow> rows(count);
    for (std::size_t row = 0; row < count; ++row) {
        rows[row].text = Name(row);
        rows[row].sub_items = {std::to_string(row + 1),          "4",       "2",
                               "14 " + std::to_string(row % 40), "D110x28", "kalit a brousit"};
    }
    return rows;
}

std::vector<partslist::KnownPart> Parts(std::size_t count, const std::string& material) {
    std::vector<partslist::KnownPart> parts;
    parts.reserve(count);
    for (std::size_t part = 0; part < count; ++part) {
        parts.push_back(
            {"Ozubené kolo " + std::to_string(part), material, "D110x28", "kalit a brousit"});
    }
    return parts;
}

void Update(benchmark::State& state) {
    const auto rows = Rows(static_cast<std::size_t>(state.range(0)));
    structure::CountedTree tree;
    controls::NameSet before;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        before.insert(rows[row].text);
        tree.listed.push_back({Name(row + rows.size() / 2), row});
    }
    for (auto step : state) {
        benchmark::DoNotOptimize(partslist::UpdatedList(tree, &before, rows));
    }
}

void SortByName(benchmark::State& state) {
    const auto rows = Rows(static_cast<std::size_t>(state.range(0)));
    for (auto step : state) {
        benchmark::DoNotOptimize(partslist::OrderByName(rows));
    }
}

void SortByMaterial(benchmark::State& state) {
    const auto rows = Rows(static_cast<std::size_t>(state.range(0)));
    for (auto step : state) {
        benchmark::DoNotOptimize(partslist::OrderByMaterial(rows));
    }
}

// What closing with a list of that many rows costs beside the file's own reading, with a full
// memory in which they all are already.
void LearnNothingNew(benchmark::State& state) {
    const auto known = Parts(partslist::kMostKnownParts, "14 220");
    const std::string file = partslist::WriteKnownParts(known);
    const auto parts = Parts(static_cast<std::size_t>(state.range(0)), "14 220");
    for (auto step : state) {
        auto read = partslist::ParseKnownParts(file);
        benchmark::DoNotOptimize(partslist::Learn(read.parts, parts));
    }
}

// The same where every one of them has another material, the file's text included.
void LearnNews(benchmark::State& state) {
    const auto known = Parts(partslist::kMostKnownParts, "14 220");
    const std::string file = partslist::WriteKnownParts(known);
    const auto parts = Parts(static_cast<std::size_t>(state.range(0)), "S235");
    for (auto step : state) {
        auto read = partslist::ParseKnownParts(file);
        partslist::Learn(read.parts, parts);
        benchmark::DoNotOptimize(partslist::WriteKnownParts(read.parts));
    }
}

BENCHMARK(Update)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(SortByName)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(SortByMaterial)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(LearnNothingNew)->Arg(1'000)->Arg(20'000)->Unit(benchmark::kMillisecond);
BENCHMARK(LearnNews)->Arg(1'000)->Arg(20'000)->Unit(benchmark::kMillisecond);

} // namespace
