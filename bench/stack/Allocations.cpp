// Heap allocations of a poll, and memory held between polls, per object: a line of JSON for each workload
// named, as NAME, NAME:OBJECTS or NAME:OBJECTS:CLIENTS; by default 100 objects of one client.

#include <cstdio>
#include <exception>
#include <sstream>
#include <string>

#include "Clients.h"
#include "Heap.h"
#include "HostedBlocks.h"

namespace {

void Poll(bench::Clients& clients) {
    clients.Poll();
}
void Poll(bench::HostedBlocks& blocks) {
    blocks.RunOnce();
}

void SetUp(bench::Clients&) {}
void SetUp(bench::HostedBlocks& blocks) {
    blocks.Make();
    blocks.Init();
}

// Memory held without any client or block: the prepared answers, the host's runtime.
template <class Polled>
long long Surroundings(std::string const& workload) {
    long long const before = test::HeapOctets();
    Polled const none(workload, 0, 0);
    return test::HeapOctets() - before;
}

// The second poll is counted, since the first one also builds tables.
template <class Polled>
void Measure(std::string const& argument) {
    std::string workload;
    int objects = 100;
    int count = 1;
    char colon = 0;
    std::istringstream words(argument);
    std::getline(words, workload, ':');
    words >> objects >> colon >> count;

    {
        Polled first(workload, 1, 1);
        SetUp(first);
        Poll(first);
    }
    long long const without = test::HeapOctets() + Surroundings<Polled>(workload);
    Polled polled(workload, objects, count);
    SetUp(polled);
    Poll(polled);
    long long const held = test::HeapOctets() - without;
    test::ForgetHeapPeak();
    test::HeapTotals const before = test::HeapTotalsSoFar();
    Poll(polled);
    test::HeapTotals const after = test::HeapTotalsSoFar();

    auto const perObject = [&](long long number) {
        return static_cast<double>(number) / static_cast<double>(polled.Objects());
    };
    std::printf(
        "{\"workload\": \"%s\", \"allocations\": %.2f, \"octets\": %.1f, \"held\": %.1f, "
        "\"peak\": %.1f}\n",
        argument.c_str(), perObject(after.allocations - before.allocations),
        perObject(after.octets - before.octets), perObject(held), perObject(test::HeapPeak() - without));
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
