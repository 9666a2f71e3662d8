// How the steps from the structure text to the parts list grow with the number of nodes. The
// counter "per_node" is the time divided by the nodes.

#include <benchmark/benchmark.h>

#include <string>

#include "structure/structure.hpp"
#include "structure/structure_text.hpp"
#include "tests/support/headless_form.hpp"

namespace {

constexpr int kPartsPerAssembly = 20;
constexpr int kNodesPerPart = 10; // one distinct part in ten nodes

// A top product with assemblies of twenty parts each, in lines as the walk writes them.
void WriteStructure(controls::Form1& form, int nodes) {
    form.Text1.SetText("");
    structure::zapsat(form, structure::TopLine("Top"));
    int written = 1;
    for (int assembly = 1; written < nodes; ++assembly) {
        const std::string name = "Assembly " + std::to_string(assembly);
        const std::string path = structure::InstancePath("Top", name, assembly);
        structure::zapsat(form, structure::AssemblyLine(1, name, "Top", path));
        ++written;
        for (int part = 0; part < kPartsPerAssembly && written < nodes; ++part, ++written) {
            structure::zapsat(
                form,
                structure::LeafLine(2, "Part " + std::to_string(written / kNodesPerPart), path));
        }
    }
}

void Count(benchmark::State& state) {
    state.counters["per_node"] = benchmark::Counter(static_cast<double>(state.range(0)),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

void WriteStructureText(benchmark::State& state) {
    testing_support::HeadlessForm headless;
    for (auto step : state) {
        WriteStructure(headless.form, static_cast<int>(state.range(0)));
    }
    Count(state);
}

void BuildTree(benchmark::State& state) {
    testing_support::HeadlessForm headless;
    WriteStructure(headless.form, static_cast<int>(state.range(0)));
    for (auto step : state) {
        structure::Command5_Click(headless.form);
    }
    Count(state);
}

void CheckRoot(benchmark::State& state) {
    testing_support::HeadlessForm headless;
    WriteStructure(headless.form, static_cast<int>(state.range(0)));
    structure::Command5_Click(headless.form);
    bool checked = false;
    for (auto step : state) {
        headless.form.TreeView1.SetChecked(1, checked);
        structure::TreeView1_NodeCheck(headless.form, 1);
        checked = !checked;
    }
    Count(state);
}

void FillList(benchmark::State& state) {
    testing_support::HeadlessForm headless;
    WriteStructure(headless.form, static_cast<int>(state.range(0)));
    structure::Command5_Click(headless.form);
    for (auto step : state) {
        structure::Command4_Click(headless.form);
    }
    Count(state);
}

BENCHMARK(WriteStructureText)->RangeMultiplier(10)->Range(1'000, 100'000);
BENCHMARK(BuildTree)->RangeMultiplier(10)->Range(1'000, 100'000);
BENCHMARK(CheckRoot)->RangeMultiplier(10)->Range(1'000, 100'000);
BENCHMARK(FillList)->RangeMultiplier(10)->Range(1'000, 100'000);

} // namespace
