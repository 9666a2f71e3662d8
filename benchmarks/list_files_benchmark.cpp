// How saving and loading the parts list grow with its rows, without the disk. The counter "per_row"
// is the time divided by the rows.

#include <benchmark/benchmark.h>

#include <string>

#include "partslist/list_file.hpp"

namespace {

void Fill(controls::ListView& list, std::size_t rows) {
    for (std::size_t row = 1; row <= rows; ++row) {
        list.Add("Ozubené kolo " + std::to_string(row));
        list.SetChecked(row, row % 2 == 0);
        const std::string fields[] = {std::to_string(row), "4", "2", "14 220", "D110x28",
                                      "kalit a brousit"};
        for (std::size_t field = 0; field < std::size(fields); ++field) {
            list.SetSubItem(row, field + 1, fields[field]);
        }
    }
}

controls::ListView EmptyList() {
    return controls::ListView(
        {"Jmeno", "Poz.", "kusů", "List", "Material", "Velikost", "Poznámka"});
}

void Count(benchmark::State& state) {
    state.counters["per_row"] = benchmark::Counter(static_cast<double>(state.range(0)),
                                                   benchmark::Counter::kIsIterationInvariantRate |
                                                       benchmark::Counter::kInvert);
}

void SaveList(benchmark::State& state) {
    controls::ListView list = EmptyList();
    Fill(list, static_cast<std::size_t>(state.range(0)));
    for (auto step : state) {
        benchmark::DoNotOptimize(partslist::WriteListFile(list));
    }
    Count(state);
}

void LoadList(benchmark::State& state) {
    controls::ListView list = EmptyList();
    Fill(list, static_cast<std::size_t>(state.range(0)));
    const std::string file = partslist::WriteListFile(list);
    for (auto step : state) {
        list.Clear();
        partslist::ReadListFile(file, list);
    }
    Count(state);
}

BENCHMARK(SaveList)->Arg(10'000)->Arg(100'000);
BENCHMARK(LoadList)->Arg(10'000)->Arg(100'000);

} // namespace
