#pragma once

#include <sys/types.h>

#include "Responder.h"

namespace bench {

// The highest core that this process may run on.
int LastCore();

// Binds this process, and the processes it forks afterwards, to one core. Throws std::system_error.
void PinToCore(int core);

// Makes the kernel end this process when its parent ends.
void EndWithParent();

// A responder in a child process, which ends with this object.
class ResponderProcess {
public:
    // Throws std::system_error.
    ResponderProcess();
    ~ResponderProcess();
    ResponderProcess(ResponderProcess const&) = delete;
    ResponderProcess& operator=(ResponderProcess const&) = delete;

    unsigned short Port() const { return responder.Port(); }

private:
    Responder responder;
    pid_t child;
};

}  // namespace bench
