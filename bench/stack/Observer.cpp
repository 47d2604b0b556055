// What the workbench's observer costs in an exchange: polls with and without it.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <deque>
#include <exception>
#include <string>
#include <vector>

#include "Clients.h"
#include "Counting.h"
#include "Observation.h"
#include "Subject.h"
#include "Whereabouts.h"

namespace {

constexpr char Usage[] =
    "Usage: bench-observer WORKLOAD ROUNDS           prints the microseconds of an exchange as JSON\n"
    "       bench-observer WORKLOAD with|without     polls once, for a counter of instructions\n";

constexpr int Objects = 200;

// A block whose variables are those that the device clients of a workload have.
workbench::BlockConfig BlockOf(bench::Subject const& subject) {
    workbench::BlockConfig block;
    for (int number = 1; number <= Objects; ++number) {
        for (bench::Subject::Variable const& variable : subject.variables) {
            workbench::VariableConfig config;
            config.objectType = workbench::ObjectTypes().FindCode(subject.objectType);
            config.property = workbench::Properties().FindCode(variable.property);
            config.objectNumber = number;
            block.variables.push_back(config);
        }
    }
    return block;
}

// Polls of device clients whose datagrams can be observed.
class Polls {
public:
    explicit Polls(std::string const& workload)
        : clients(workload, Objects), network(dorvel::Environment()), observation(network) {
        blocks.push_back(BlockOf(bench::SubjectNamed(workload)));
        observation.Watch(blocks);
    }
    ~Polls() { Observe(false); }
    Polls(Polls const&) = delete;
    Polls& operator=(Polls const&) = delete;

    void Observe(bool isOn) {
        dorvel::SetEnvironment(isOn ? static_cast<dorvel::HostEnvironment*>(&observation) : &network);
        workbench::Here().block = isOn ? &blocks.front() : nullptr;
    }
    void Poll() {
        observation.BeginCycle(blocks.front());
        clients.Poll();
        observation.EndCycle(blocks.front());
    }
    // Microseconds for each exchange.
    double Time() {
        auto const begin = std::chrono::steady_clock::now();
        Poll();
        return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count() /
               Objects;
    }

private:
    bench::Clients clients;
    dorvel::HostEnvironment& network;
    workbench::Observation observation;
    std::deque<workbench::BlockConfig> blocks;
};

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Measure(Polls& polls, int rounds) {
    std::vector<double> with;
    std::vector<double> without;
    for (int round = 0; round < rounds; ++round) {
        bool const isFirst = round % 2 == 0;
        for (bool const isOn : {isFirst, !isFirst}) {
            polls.Observe(isOn);
            (isOn ? with : without).push_back(polls.Time());
        }
    }
    std::printf("{\"without_us\": %.3f, \"with_us\": %.3f, \"observer_us\": %.3f}\n", Median(without),
                Median(with), Median(with) - Median(without));
}

void Count(Polls& polls, bool isOn) {
    polls.Observe(isOn);
    polls.Poll();
    bench::isCountingAllowed = true;
    polls.Poll();
    bench::isCountingAllowed = false;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fputs(Usage, stderr);
        return 2;
    }
    try {
        Polls polls(arguments[1]);
        std::string const mode = arguments[2];
        if (mode == "with" || mode == "without") {
            Count(polls, mode == "with");
        } else {
            Measure(polls, std::stoi(mode));
        }
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "bench-observer: %s\n", failure.what());
        return 1;
    }
}
