#include <sys/resource.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <iostream>
#include <system_error>

#include "DeviceFile.h"
#include "ExitCode.h"
#include "Mistake.h"
#include "Server.h"
#include "SystemClock.h"
#include "Version.h"

namespace {

// A handle that becomes readable on SIGINT and SIGTERM. The signals then do not end the program.
int CatchSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return signalfd(-1, &signals, SFD_CLOEXEC);
}

// A device has up to three sockets.
void AllowManyFiles() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0) {
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);
    }
}

int Run(simulator::CommandLine const& options) {
    AllowManyFiles();
    int const stopHandle = CatchSignals();
    std::signal(SIGPIPE, SIG_IGN);  // the answer to a command is lost if standard output is closed
    std::signal(SIGTTIN, SIG_IGN);  // in the background there are no commands
    simulator::SystemClock const clock;
    simulator::Server server(simulator::LoadDeviceFiles(options.deviceFiles, options.devices), options,
                             clock);
    server.Announce(std::cout);
    server.Run(stopHandle);
    close(stopHandle);
    return tools::SimulatorExit::Ok;
}

int Fail(tools::SimulatorExit::Code code, std::string const& message) {
    std::cerr << "bacnet-simulator: " << message << '\n';
    return code;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        auto const options = simulator::CommandLine::Parse({argv + 1, argv + argc});
        if (options.wantsHelp) {
            std::cout << simulator::CommandLine::Help();
            return tools::SimulatorExit::Ok;
        }
        if (options.wantsVersion) {
            std::cout << tools::VersionText("bacnet-simulator") << '\n';
            return tools::SimulatorExit::Ok;
        }
        return Run(options);
    } catch (std::invalid_argument const& error) {
        return Fail(tools::SimulatorExit::Usage, error.what());
    } catch (simulator::Mistake const& mistake) {
        return Fail(tools::SimulatorExit::DeviceFile, mistake.what());
    } catch (std::system_error const& error) {
        return Fail(tools::SimulatorExit::Socket, error.what());
    }
}
