// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Cost of a notification of each view, which reads the bound lists and feeds its diagram, beside a
// walk over the same lists. "allocations" counts those of a notification once all is warm.
#include "Allocations.h"
#include "platform/values/Tree.h"
#include "platform/values/Values.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <memory>
#include <random>
#include <type_traits>

namespace {

constexpr int warmCount = 210; // notifications until each record has been used twice

template<class View>
struct Bound
{
    static constexpr bool isIq = std::is_same_v<View, VCGLIQDiagram>;

    explicit Bound(std::size_t count)
    {
        std::mt19937 generator(1);
        std::normal_distribution<double> noise;
        for (std::size_t i = 0; i < count; ++i) {
            first.GetList().push_back(noise(generator));
            second.GetList().push_back(isIq ? noise(generator) : 0.0);
        }
        if (!isIq)
            second.GetList().front() = static_cast<double>(count);
        view->SetData1_ValuePath(first.GetPathName());
        if constexpr (isIq)
            view->SetData2_ValuePath(second.GetPathName());
        else
            view->SetBaudrateData_ValuePath(second.GetPathName());
        view->SetHasChangedTrigger_ValuePath(trigger.GetPathName());
    }
    ~Bound()
    {
        view.reset();
        for (const char* path : {"Bench/First", "Bench/Second", "Bench/Trigger"})
            values::Tree::Instance().Remove(path);
    }

    template<class T>
    static T& create(const char* path)
    {
        return *values::Tree::Instance().Create<T>(path);
    }
    values::ValueList<double>& first = create<values::ValueList<double>>("Bench/First");
    values::ValueList<double>& second = create<values::ValueList<double>>("Bench/Second");
    values::Value<bool>& trigger = create<values::Value<bool>>("Bench/Trigger");
    std::unique_ptr<View> view = std::make_unique<View>();
};

template<class View>
void notify(benchmark::State& state)
{
    Bound<View> bound(static_cast<std::size_t>(state.range(0)));
    for (int i = 0; i < warmCount; ++i)
        bound.trigger.SetValue(true);
    const std::size_t before = allocationCount();
    bound.trigger.SetValue(true);
    state.counters["allocations"] = static_cast<double>(allocationCount() - before);
    for ([[maybe_unused]] auto _ : state)
        bound.trigger.SetValue(true);
}

template<class View>
void walk(benchmark::State& state)
{
    const Bound<View> bound(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        double sum = 0.0;
        for (const auto* list : {&bound.first, &bound.second})
            for (const double value : list->GetList())
                sum += value;
        benchmark::DoNotOptimize(sum);
    }
}

void perNotification(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(1'000)->Arg(100'000)->MeasureProcessCPUTime();
}
BENCHMARK_TEMPLATE(notify, VCGLTimeDiagram)
    ->Name("time view notified/ours")
    ->Apply(perNotification);
BENCHMARK_TEMPLATE(walk, VCGLTimeDiagram)->Name("time view notified/floor")->Apply(perNotification);
BENCHMARK_TEMPLATE(notify, VCGLEyeDiagram)->Name("eye view notified/ours")->Apply(perNotification);
BENCHMARK_TEMPLATE(walk, VCGLEyeDiagram)->Name("eye view notified/floor")->Apply(perNotification);
BENCHMARK_TEMPLATE(notify, VCGLIQDiagram)->Name("IQ view notified/ours")->Apply(perNotification);
BENCHMARK_TEMPLATE(walk, VCGLIQDiagram)->Name("IQ view notified/floor")->Apply(perNotification);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
