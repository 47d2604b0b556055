// Prints a line of JSON with the milliseconds for loading the add-in, for setting up a block of so many
// objects with one variable each (Lua compiles the script, then runs it, and the host calls Inited), and for
// destroying it. One sample each: every sample needs a new process.

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
    blocks.Declare();
    double const compiled = Milliseconds([&] { blocks.Compile(); });
    double const script = Milliseconds([&] { blocks.Run(); });
    blocks.Collect();  // what the script leaves
    double const inited = Milliseconds([&] { blocks.Init(); });
    blocks.RunOnce();
    blocks.Release();
    double const collected = Milliseconds([&] { blocks.Collect(); });
    std::printf(
        "{\"variables\": %d, \"load\": %.4f, \"InitAddin\": %.4f, \"compiled\": %.3f, \"script\": %.3f, "
        "\"Inited\": %.3f, "
        "\"__gc\": %.3f}\n",
        variables, load.load, load.init, compiled, script, inited, collected);
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
