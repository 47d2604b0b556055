// How long it takes to load the add-in, to set up a block of so many objects with one variable each, and to
// let it go, as a line of JSON. Milliseconds, of one run each: it takes a process for every one.

#include <chrono>
#include <cstdio>
#include <exception>
#include <ratio>
#include <string>

#include "HostedBlocks.h"

namespace {

template <class Body>
double Milliseconds(Body const& body) {
    auto const begin = std::chrono::steady_clock::now();
    body();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

void Measure(int variables) {
    bench::LoadTimes const load = bench::LoadAddin();
    bench::HostedBlocks blocks("properties-1", variables, 1);
    double const script = Milliseconds([&] { blocks.Make(); });
    double const inited = Milliseconds([&] { blocks.Init(); });
    blocks.RunOnce();
    blocks.LetGo();
    double const collected = Milliseconds([&] { blocks.Collect(); });
    std::printf(
        "{\"variables\": %d, \"load\": %.4f, \"InitAddin\": %.4f, \"script\": %.3f, \"Inited\": %.3f, "
        "\"__gc\": %.3f}\n",
        variables, load.load, load.init, script, inited, collected);
}

}  // namespace

int main(int count, char** arguments) {
    try {
        Measure(count > 1 ? std::stoi(arguments[1]) : 10000);
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "bench-start: %s\n", failure.what());
        return 1;
    }
}
