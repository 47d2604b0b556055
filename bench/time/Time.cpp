// Times of polls, by workload and by the number of objects, clients and blocks. They include the network in
// memory, which only copies datagrams.

#include <benchmark/benchmark.h>

#include <string>

#include "Clients.h"
#include "HostedBlocks.h"

namespace {

void PollClients(benchmark::State& state, std::string const& subject, int objects, int count) {
    bench::Clients clients(subject, objects, count);
    clients.Poll();  // builds the tables of the first use
    for (auto const _ : state) {
        static_cast<void>(_);
        clients.Poll();
    }
    state.counters["objects"] = clients.Objects();
}

void RunBlocks(benchmark::State& state, std::string const& subject, int objects, int count) {
    bench::HostedBlocks blocks(subject, objects, count);
    blocks.Make();
    blocks.Init();
    blocks.RunOnce();
    for (auto const _ : state) {
        static_cast<void>(_);
        blocks.RunOnce();
    }
    state.counters["objects"] = blocks.Objects();
}

constexpr char const* Usual = "properties-3";

void Register(std::string const& family, int number,
              void (*run)(benchmark::State&, std::string const&, int, int), int objects, int count) {
    benchmark::RegisterBenchmark((family + "/" + std::to_string(number)).c_str(),
                                 [=](benchmark::State& state) { run(state, Usual, objects, count); })
        ->Unit(benchmark::kMicrosecond);
}

}  // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) {
        return 2;
    }
    bench::LoadAddin();
    for (char const* subject :
         {"properties-1", "properties-3", "properties-38", "segments-20", "schedule-10", "write-1"}) {
        benchmark::RegisterBenchmark((std::string("poll/") + subject).c_str(), [subject](
                                                                                   benchmark::State& state) {
            PollClients(state, subject, 100, 1);
        })->Unit(benchmark::kMicrosecond);
    }
    for (int const objects : {10, 100, 1000, 10000}) {
        Register("client-objects", objects, PollClients, objects, 1);
        Register("block-objects", objects, RunBlocks, objects, 1);
    }
    for (int const clients : {1, 10, 100, 1000}) {
        Register("clients", clients, PollClients, 10, clients);
        Register("blocks", clients, RunBlocks, 10, clients);
    }
    benchmark::RunSpecifiedBenchmarks();
}
