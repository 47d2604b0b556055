#pragma once

namespace workbench {

// Wakes a thread that waits for a file handle. Any thread may notify.
class WakeEvent {
public:
    WakeEvent();
    WakeEvent(WakeEvent const&) = delete;
    WakeEvent& operator=(WakeEvent const&) = delete;
    ~WakeEvent();

    void Notify() const;
    // True if there were notifications since the last call.
    bool Take() const;
    // Can be read while there are notifications; -1 if the system has no handle left, and nobody is woken.
    int Handle() const { return handle; }

private:
    int handle;
};

}  // namespace workbench
