#pragma once

namespace workbench {

// Takes over the signals that end, stop or resize a program in a terminal, and gives them back at its end. A
// second SIGINT, SIGTERM or SIGHUP does not wait: it calls the emergency function and ends the process with
// exit code 130. One object at a time.
class Signals {
public:
    // The emergency function may only do what a signal handler may; null for none.
    explicit Signals(void (*emergencyFunction)());
    Signals(Signals const&) = delete;
    Signals& operator=(Signals const&) = delete;
    ~Signals();

    // SIGINT, SIGTERM or SIGHUP has come.
    bool IsStopRequested() const;
    // True once for every change of the window (SIGWINCH).
    bool TakeResized();
    // True once for every SIGTSTP; the process is to be suspended with Suspend.
    bool TakeSuspendRequest();
    static void Suspend();
};

}  // namespace workbench
