// Polls whose instructions are counted by callgrind or by the counter for the target.

#include <cstddef>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "Clients.h"
#include "Counting.h"
#include "HostedBlocks.h"

namespace {

constexpr char Usage[] =
    "Usage: bench-stack WORKLOAD POLLS [OBJECTS [CLIENTS]]\n"
    "       bench-stack --hosted WORKLOAD CYCLES [OBJECTS [BLOCKS]]\n"
    "       bench-stack --load script|Inited|__gc VARIABLES\n"
    "\n"
    "Polls CLIENTS device clients (1) of OBJECTS objects (100) each; or the add-in's blocks in the host's "
    "runtime.\n"
    "With --load: makes a block of so many variables and destroys it; only the named phase is counted.\n";

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

void LoadBlock(std::string const& counted, int variables) {
    bench::LoadAddin();
    bench::HostedBlocks blocks("properties-1", variables, 1);
    auto const phase = [&](char const* name, void (bench::HostedBlocks::*run)()) {
        bench::isCountingAllowed = name == counted;
        (blocks.*run)();
        bench::isCountingAllowed = false;
    };
    blocks.Declare();
    blocks.Compile();
    phase("script", &bench::HostedBlocks::Run);
    blocks.Collect();  // what the script leaves
    phase("Inited", &bench::HostedBlocks::Init);
    blocks.RunOnce();
    blocks.Release();
    phase("__gc", &bench::HostedBlocks::Collect);
}

}  // namespace

int main(int count, char** arguments) {
    std::vector<std::string> words(arguments + 1, arguments + count);
    std::string mode;
    if (!words.empty() && (words[0] == "--hosted" || words[0] == "--load")) {
        mode = words[0];
        words.erase(words.begin());
    }
    if (words.size() < 2 || words.size() > 4) {
        std::fputs(Usage, stderr);
        return 2;
    }
    try {
        auto const number = [&](std::size_t index, int usual) {
            return index < words.size() ? std::stoi(words[index]) : usual;
        };
        if (mode == "--load") {
            LoadBlock(words[0], number(1, 0));
        } else {
            (mode.empty() ? PollClients : RunBlocks)(words[0], number(1, 1), number(2, 100), number(3, 1));
        }
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "bench-stack: %s\n", failure.what());
        return 1;
    }
}
