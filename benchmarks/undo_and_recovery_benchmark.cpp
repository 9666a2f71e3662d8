// What undoing and recovery cost: one change in a list, without and with its step being kept, and
// the recovery file's text, which is made at rest. Without the disk.

#include <benchmark/benchmark.h>

#include "app/recovery.hpp"
#include "tests/support/headless_form.hpp"

namespace {

void Fill(controls::ListView& list, std::size_t rows) {
    for (std::size_t row = 1; row <= rows; ++row) {
        testing_support::AddRow(list, {"Ozubené kolo " + std::to_string(row), std::to_string(row),
                                       "4", "2", "14 220", "D110x28", "kalit a brousit"});
    }
}

std::size_t Rows(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

void ChangeAlone(benchmark::State& state) {
    testing_support::HeadlessForm headless;
    Fill(headless.form.ListView1, Rows(state));
    int change = 0;
    for (auto step : state) {
        headless.form.ListView1.SetSubItem(Rows(state) / 2, 4, std::to_string(++change));
    }
}

void ChangeAsAStep(benchmark::State& state) {
    testing_support::HeadlessForm headless;
    controls::ListView& list = headless.form.ListView1;
    Fill(list, Rows(state));
    headless.form.parts_history.Start();
    int change = 0;
    for (auto step : state) {
        app::Dispatch(headless.form,
                      [&] { list.SetSubItem(Rows(state) / 2, 4, std::to_string(++change)); });
        app::KeepRecovery(headless.form, change); // looks, and has no reason to write yet
    }
}

void KeepAtRest(benchmark::State& state) {
    testing_support::HeadlessForm headless;
    controls::ListView& list = headless.form.ListView1;
    app::OfferRecovery(headless.form);
    Fill(list, Rows(state));
    headless.form.parts_history.Start();
    int change = 0;
    for (auto step : state) {
        state.PauseTiming();
        app::Dispatch(headless.form,
                      [&] { list.SetSubItem(Rows(state) / 2, 4, std::to_string(++change)); });
        state.ResumeTiming();
        app::KeepRecoveryNow(headless.form);
    }
}

BENCHMARK(ChangeAlone)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(ChangeAsAStep)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(KeepAtRest)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
