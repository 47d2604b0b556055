#pragma once

#include <fstream>
#include <memory>
#include <string>

#include "LogBuffer.h"
#include "MeasuringEnvironment.h"
#include "RecordingEnvironment.h"

namespace workbench {

// Puts the workbench's observers into the host for the time of a run, and takes them out again at its end:
// figures and the capture file between the host and its environment, and the log's sink.
class HostScope {
public:
    // captureFile may be empty. std::runtime_error when it cannot be written. The log has to outlive the
    // scope.
    HostScope(LogBuffer& log, bool trace, std::string const& captureFile);
    HostScope(HostScope const&) = delete;
    HostScope& operator=(HostScope const&) = delete;
    ~HostScope();

    TrafficFigures Figures() const { return measuring.Figures(); }
    // Whether the capture file holds everything that it should.
    bool CaptureGood() const { return !recording || capture.good(); }

private:
    dorvel::HostEnvironment& before;
    MeasuringEnvironment measuring;
    std::ofstream capture;
    std::unique_ptr<RecordingEnvironment> recording;
};

}  // namespace workbench
