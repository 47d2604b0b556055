// Answers ReadPropertyMultiple requests with prepared octets until the program that started it ends.

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "Process.h"

int main(int argc, char** argv) {
    int core = -1;
    CLI::App app("Answers the requests of the benchmarks; prints \"ready PORT\".", "bench-responder");
    app.add_option("--core", core, "Runs on this core alone")->check(CLI::NonNegativeNumber);
    CLI11_PARSE(app, argc, argv);
    try {
        bench::EndWithParent();
        if (core >= 0) {
            bench::PinToCore(core);
        }
        bench::Responder const responder;
        std::cout << "ready " << responder.Port() << std::endl;
        responder.Serve();
    } catch (std::exception const& failure) {
        std::cerr << "bench-responder: " << failure.what() << '\n';
    }
    return 1;
}
