// The driver's side of the comparison with another client: polls once per line of its input.

#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "DriverPoll.h"
#include "Frames.h"

int main(int argc, char** argv) {
    unsigned short port = 0;
    int objects = 1000;
    CLI::App app("Polls once per line of its input; prints the microseconds per object.", "bench-poll");
    app.add_option("--port", port, "The responder's UDP port on 127.0.0.1")->required();
    app.add_option("--objects", objects, "Objects per poll")
        ->check(CLI::Range(1, bench::MostObjects))
        ->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    try {
        bench::DriverPoll driver(port, objects);
        for (std::string line; std::getline(std::cin, line);) {
            std::cout << driver.Round() << std::endl;
        }
    } catch (std::exception const& failure) {
        std::cerr << "bench-poll: " << failure.what() << '\n';
        return 1;
    }
    return 0;
}
