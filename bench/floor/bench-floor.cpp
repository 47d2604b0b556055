// Compares whole polls of the driver with the bare system calls for the same octets, round by round.

#include <CLI/CLI.hpp>
#include <iostream>

#include "DriverPoll.h"
#include "Process.h"
#include "RawExchange.h"
#include "Spread.h"

namespace {

struct Options {
    int objects = 1000;
    int rounds = 200;
    int core = bench::LastCore();
};

struct Samples {
    std::vector<double> floor;
    std::vector<double> read;
    std::vector<double> ratio;
};

// The two alternate in going first, so that neither always finds the caches as the other left them.
Samples Measure(Options const& options) {
    bench::ResponderProcess const responder;
    bench::RawExchange const raw(responder.Port(), options.objects);
    bench::DriverPoll driver(responder.Port(), options.objects);
    raw.Round();
    driver.Round();
    Samples samples;
    for (int round = 0; round < options.rounds; ++round) {
        bool const rawFirst = round % 2 == 0;
        double floor = rawFirst ? raw.Round() : 0;
        double const read = driver.Round();
        floor = rawFirst ? floor : raw.Round();
        samples.floor.push_back(floor);
        samples.read.push_back(read);
        samples.ratio.push_back(read / floor);
    }
    return samples;
}

void Print(Options const& options, Samples const& samples) {
    bench::Spread const floor = bench::SpreadOf(samples.floor);
    bench::Spread const read = bench::SpreadOf(samples.read);
    std::cout << "{\"benchmark\": \"floor\", \"objects\": " << options.objects
              << ", \"properties\": " << bench::Properties << ", \"rounds\": " << options.rounds
              << ", \"core\": " << options.core << ", \"floor_us\": " << ToJson(floor)
              << ", \"read_us\": " << ToJson(read) << ", \"ratio\": " << read.median / floor.median
              << ", \"ratio_of_pairs\": " << ToJson(bench::SpreadOf(samples.ratio)) << "}" << std::endl;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App app("Time per object of the driver's poll and of the bare system calls, in microseconds.",
                 "bench-floor");
    app.add_option("--objects", options.objects, "Objects per round")
        ->check(CLI::Range(1, bench::MostObjects))
        ->capture_default_str();
    app.add_option("--rounds", options.rounds, "Rounds of each")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    app.add_option("--core", options.core, "The core for client and responder")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    try {
        bench::PinToCore(options.core);
        Print(options, Measure(options));
    } catch (std::exception const& failure) {
        std::cerr << "bench-floor: " << failure.what() << '\n';
        return 1;
    }
    return 0;
}
