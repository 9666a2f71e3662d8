// What the preview costs at every change: the rows taken from the list, the table laid out and its
// texts counted that do not fit. The counter "per_row" is the time divided by the rows.

#include <benchmark/benchmark.h>

#include "tables/hints.hpp"
#include "tables/layout.hpp"

namespace {

controls::ListView ListOf(std::size_t rows) {
    controls::ListView list({"Jmeno", "Poz.", "kusů", "List", "Material", "Velikost", "Poznámka"});
    for (std::size_t row = 1; row <= rows; ++row) {
        list.Add("Ozubené kolo " + std::to_string(row));
        const std::string fields[] = {std::to_string(row), "4", "2", "14 220", "D110x28",
                                      "kalit a brousit"};
        for (std::size_t field = 0; field < std::size(fields); ++field) {
            list.SetSubItem(row, field + 1, fields[field]);
        }
    }
    return list;
}

std::shared_ptr<const tables::CharacterWidths> Widths() {
    constexpr std::size_t kCharacters = 0x250;
    constexpr float kWidth = 0.7F;
    return std::make_shared<const tables::CharacterWidths>(
        tables::CharacterWidths{.widths = std::vector<float>(kCharacters, kWidth), .other = 1});
}

void CountPerRow(benchmark::State& state) {
    state.counters["per_row"] = benchmark::Counter(static_cast<double>(state.range(0)),
                                                   benchmark::Counter::kIsIterationInvariantRate |
                                                       benchmark::Counter::kInvert);
}

// A letter typed into the configuration.
void AfterTyping(benchmark::State& state) {
    const controls::ListView list = ListOf(static_cast<std::size_t>(state.range(0)));
    const auto parts = std::make_shared<const tables::Parts>(tables::TakeParts(list));
    const auto widths = Widths();
    for (auto step : state) {
        benchmark::DoNotOptimize(tables::LayOutTable(
            {.configuration = controls::kDefaultConfiguration, .parts = parts}, widths));
        benchmark::DoNotOptimize(tables::HintsFor(controls::kDefaultConfiguration));
    }
    CountPerRow(state);
}

// A change in the list.
void AfterAListChange(benchmark::State& state) {
    const controls::ListView list = ListOf(static_cast<std::size_t>(state.range(0)));
    const auto widths = Widths();
    for (auto step : state) {
        const auto parts = std::make_shared<const tables::Parts>(tables::TakeParts(list));
        benchmark::DoNotOptimize(tables::LayOutTable(
            {.configuration = controls::kDefaultConfiguration, .parts = parts}, widths));
    }
    CountPerRow(state);
}

BENCHMARK(AfterTyping)->Arg(500)->Arg(10'000);
BENCHMARK(AfterAListChange)->Arg(500)->Arg(10'000);

} // namespace
