#pragma once

#include <fstream>
#include <memory>
#include <string>

#include "LogBuffer.h"
#include "MeasuringEnvironment.h"
#include "Observation.h"
#include "RecordingEnvironment.h"

namespace workbench {

// Installs the workbench's observers in the host for a run and removes them at its end: figures, the capture
// file and the observation of the datagrams between the host and its environment, and the sink of the log.
class HostScope {
public:
    // An empty captureFile means none; std::runtime_error when the file cannot be written. The log must
    // outlive the scope.
    HostScope(LogBuffer& log, bool trace, std::string const& captureFile);
    HostScope(HostScope const&) = delete;
    HostScope& operator=(HostScope const&) = delete;
    ~HostScope();

    Observation& Observed() { return observation; }
    TrafficFigures Figures() const { return measuring.Figures(); }
    // False when writing the capture file has failed.
    bool CaptureGood() const { return !recording || capture.good(); }

private:
    dorvel::HostEnvironment& before;
    Observation observation;
    MeasuringEnvironment measuring;
    std::ofstream capture;
    std::unique_ptr<RecordingEnvironment> recording;
};

}  // namespace workbench
