#pragma once

#include <string>

#include "Device.h"
#include "Refusal.h"
#include "Standard.h"
#include "WriteRequest.h"

namespace simulator {

// Reports one write to an observer, in one line:
// write analog_value 1 present_value = Real 21.5, priority 8: done
// write analog_input 1 present_value[2] = Null: refused, write-access-denied
// write: rejected, missing-required-parameter
class WriteLog {
public:
    // An empty observer gets no reports. It must outlive the log.
    explicit WriteLog(Device::WriteObserver const& writeObserver) : observer(writeObserver) {}

    void Asked(WriteRequest const& request);
    void Done() { Tell("done"); }
    void Refused(ErrorCode code);
    void Rejected(RejectReason reason);

private:
    void Tell(std::string const& outcome);

    Device::WriteObserver const& observer;
    std::string what = "write";
};

}  // namespace simulator
