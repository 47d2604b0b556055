#include "Signals.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <iterator>

#include "ExitCode.h"

namespace workbench {

namespace {

constexpr int Handled[] = {SIGINT, SIGTERM, SIGHUP, SIGWINCH, SIGTSTP};
// They end the program by themselves.
constexpr int Crashes[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGQUIT};

// Lock-free, so that handlers may use them.
std::atomic<bool> stopping{false};
std::atomic<bool> resized{false};
std::atomic<bool> suspends{false};
void (*emergency)() = nullptr;
struct sigaction before[std::size(Handled)];
struct sigaction beforeCrash[std::size(Crashes)];

void RestoreCrashes() {
    for (std::size_t i = 0; i < std::size(Crashes); ++i) {
        sigaction(Crashes[i], &beforeCrash[i], nullptr);
    }
}

// The signal comes again when the handler returns, and finds the handlers from before.
void HandleCrash(int number) {
    if (emergency) {
        emergency();
    }
    RestoreCrashes();
    raise(number);
}

void Handle(int number) {
    if (number == SIGWINCH) {
        resized = true;
    } else if (number == SIGTSTP) {
        suspends = true;
    } else if (stopping.exchange(true)) {
        if (emergency) {
            emergency();
        }
        _exit(tools::WorkbenchExit::Killed);
    }
}

}  // namespace

Signals::Signals(void (*emergencyFunction)()) {
    emergency = emergencyFunction;
    stopping = resized = suspends = false;
    struct sigaction action {};
    action.sa_handler = Handle;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < std::size(Handled); ++i) {
        sigaction(Handled[i], &action, &before[i]);
    }
    action.sa_handler = HandleCrash;
    for (std::size_t i = 0; i < std::size(Crashes); ++i) {
        sigaction(Crashes[i], &action, &beforeCrash[i]);
    }
}

Signals::~Signals() {
    for (std::size_t i = 0; i < std::size(Handled); ++i) {
        sigaction(Handled[i], &before[i], nullptr);
    }
    RestoreCrashes();
    emergency = nullptr;
}

bool Signals::IsStopRequested() const {
    return stopping;
}

bool Signals::TakeResized() {
    return resized.exchange(false);
}

bool Signals::TakeSuspendRequest() {
    return suspends.exchange(false);
}

void Signals::Suspend() {
    raise(SIGSTOP);
}

}  // namespace workbench
