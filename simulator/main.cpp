#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <iostream>
#include <system_error>

#include "DeviceFile.h"
#include "Mistake.h"
#include "Server.h"
#include "SystemClock.h"

namespace {

// A handle that becomes readable on SIGINT and SIGTERM, which then no longer end the program by themselves.
int catchSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return signalfd(-1, &signals, SFD_CLOEXEC);
}

int run(simulator::CommandLine const& options) {
    int const stopHandle = catchSignals();
    std::signal(SIGPIPE, SIG_IGN);  // an answer to a command that nobody reads is lost
    std::signal(SIGTTIN, SIG_IGN);  // in the background there are no commands
    simulator::SystemClock const clock;
    simulator::Server server(simulator::loadDeviceFile(options.deviceFile), options, clock);
    server.announce(std::cout);
    server.run(stopHandle);
    close(stopHandle);
    return simulator::kSuccess;
}

int fail(int code, std::string const& message) {
    std::cerr << "bacnet-simulator: " << message << '\n';
    return code;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        auto const options = simulator::CommandLine::parse({argv + 1, argv + argc});
        if (options.wantsHelp) {
            std::cout << simulator::CommandLine::help();
            return simulator::kSuccess;
        }
        if (options.wantsVersion) {
            std::cout << "bacnet-simulator " SIMULATOR_VERSION "\n";
            return simulator::kSuccess;
        }
        return run(options);
    } catch (std::invalid_argument const& error) {
        return fail(simulator::kUsageError, error.what());
    } catch (simulator::Mistake const& mistake) {
        return fail(simulator::kDeviceFileError, mistake.what());
    } catch (std::system_error const& error) {
        return fail(simulator::kSocketError, error.what());
    }
}
