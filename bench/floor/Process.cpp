#include "Process.h"

#include <sched.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <csignal>

#include "Loopback.h"

namespace bench {

int LastCore() {
    cpu_set_t set;
    CPU_ZERO(&set);
    if (::sched_getaffinity(0, sizeof set, &set) != 0) {
        ThrowSystemError("sched_getaffinity");
    }
    int core = CPU_SETSIZE - 1;
    while (core > 0 && !CPU_ISSET(core, &set)) {
        --core;
    }
    return core;
}

void PinToCore(int core) {
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(core, &set);
    if (::sched_setaffinity(0, sizeof set, &set) != 0) {
        ThrowSystemError("sched_setaffinity");
    }
}

void EndWithParent() {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
}

ResponderProcess::ResponderProcess() : child(::fork()) {
    if (child < 0) {
        ThrowSystemError("fork");
    }
    if (child == 0) {
        EndWithParent();
        responder.Serve();
        ::_exit(1);
    }
}

ResponderProcess::~ResponderProcess() {
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

}  // namespace bench
