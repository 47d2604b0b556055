// Polls whose instructions are counted by callgrind or by the counter for the target.

#include <cstdio>
#include <exception>
#include <string>

#include "Clients.h"
#include "Counting.h"
#include "HostedBlocks.h"

namespace {

constexpr char Usage[] =
    "Usage: bench-stack WORKLOAD POLLS [OBJECTS [CLIENTS]]\n"
    "       bench-stack --hosted WORKLOAD CYCLES [OBJECTS [BLOCKS]]\n"
    "\n"
    "Polls CLIENTS device clients (1) of OBJECTS objects (100) each; or the add-in's blocks in the host's "
    "runtime.\n";

void PollClients(std::string const& workload, int polls, int objects, int count) {
    bench::Clients clients(workload, objects, count);
    clients.Poll();
    bench::isCountingAllowed = true;
    for (int poll = 0; poll < polls; ++poll) {
        clients.Poll();
    }
    bench::isCountingAllowed = false;
}

void RunBlocks(std::string const& workload, int cycles, int objects, int count) {
    bench::LoadAddin();
    bench::HostedBlocks blocks(workload, objects, count);
    blocks.Make();
    blocks.Init();
    blocks.RunOnce();
    bench::isCountingAllowed = true;
    for (int cycle = 0; cycle < cycles; ++cycle) {
        blocks.RunOnce();
    }
    bench::isCountingAllowed = false;
}

}  // namespace

int main(int count, char** arguments) {
    bool const isHosted = count > 1 && std::string(arguments[1]) == "--hosted";
    char** const words = arguments + (isHosted ? 2 : 1);
    int const given = count - (isHosted ? 2 : 1);
    if (given < 2 || given > 4) {
        std::fputs(Usage, stderr);
        return 2;
    }
    try {
        auto const number = [&](int index, int usual) {
            return index < given ? std::stoi(words[index]) : usual;
        };
        (isHosted ? RunBlocks : PollClients)(words[0], number(1, 1), number(2, 100), number(3, 1));
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "bench-stack: %s\n", failure.what());
        return 1;
    }
}
