#pragma once

namespace workbench {

// Handles the signals that end, suspend or resize a program in a terminal, until it is destroyed. A second
// SIGINT, SIGTERM or SIGHUP calls the emergency function and ends the process at once, with exit code 130. A
// signal of a crash, and SIGQUIT, call it too before they end the process as they would without this object.
// Only one object may exist at a time.
class Signals {
public:
    // The emergency function must be safe in a signal handler; null for none.
    explicit Signals(void (*emergencyFunction)());
    Signals(Signals const&) = delete;
    Signals& operator=(Signals const&) = delete;
    ~Signals();

    // True after SIGINT, SIGTERM or SIGHUP.
    bool IsStopRequested() const;
    // True once for every change of the window (SIGWINCH).
    bool TakeResized();
    // True once for every SIGTSTP; call Suspend then.
    bool TakeSuspendRequest();
    static void Suspend();
};

}  // namespace workbench
