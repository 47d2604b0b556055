#include "BackgroundThread.h"

#include <pthread.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <utility>

namespace workbench {

namespace {

// About a third of the share of a thread of the cycles. Not less: it holds locks that cycles need, if only
// for some microseconds.
constexpr int LowerBy = 5;

// In Linux a thread has a priority of its own, which the threads that it starts inherit.
void LowerPriority() {
    auto const thread = static_cast<id_t>(syscall(SYS_gettid));
    setpriority(PRIO_PROCESS, thread, getpriority(PRIO_PROCESS, thread) + LowerBy);
}

// Blocks all signals for this thread until the end of the scope; a thread that starts meanwhile inherits
// that.
class BlockedSignals {
public:
    BlockedSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
    }
    BlockedSignals(BlockedSignals const&) = delete;
    BlockedSignals& operator=(BlockedSignals const&) = delete;
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }

private:
    sigset_t before{};
};

}  // namespace

std::thread StartBackgroundThread(std::function<void()> work) {
    BlockedSignals const blocked;
    return std::thread([work = std::move(work)] {
        LowerPriority();
        work();
    });
}

}  // namespace workbench
