// Heap allocations of a poll, and memory held between polls, per object: a line of JSON for each workload
// named, as NAME, NAME:OBJECTS or NAME:OBJECTS:CLIENTS; by default 100 objects of one client.

#include <cstdio>
#include <exception>
#include <sstream>
#include <string>

#include "Clients.h"
#include "HeapUse.h"
#include "HostedBlocks.h"

namespace {

template <class Polled>
void Measure(std::string const& argument) {
    std::string workload;
    int objects = 100;
    int count = 1;
    char colon = 0;
    std::istringstream words(argument);
    std::getline(words, workload, ':');
    words >> objects >> colon >> count;

    bench::HeapUse const use = bench::HeapUseOf<Polled>(workload, objects, count);
    std::printf(
        "{\"workload\": \"%s\", \"allocations\": %.2f, \"octets\": %.1f, \"held\": %.1f, "
        "\"peak\": %.1f}\n",
        argument.c_str(), use.allocations, use.octets, use.held, use.peak);
}

}  // namespace

int main(int count, char** arguments) {
    bool const isHosted = count > 1 && std::string(arguments[1]) == "--hosted";
    try {
        if (isHosted) {
            bench::LoadAddin();
        }
        for (int index = isHosted ? 2 : 1; index < count; ++index) {
            (isHosted ? Measure<bench::HostedBlocks> : Measure<bench::Clients>)(arguments[index]);
        }
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "bench-allocations: %s\n", failure.what());
        return 1;
    }
}
