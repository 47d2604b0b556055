#include "HostScope.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "dorvelshare/Trace.h"

namespace workbench {

HostScope::HostScope(LogBuffer& log, bool trace, std::string const& captureFile)
    : before(dorvel::Environment()), observation(before), measuring(observation) {
    if (!captureFile.empty()) {
        capture.open(captureFile, std::ios::binary | std::ios::trunc);
        if (!capture) {
            throw std::runtime_error("the capture file " + captureFile +
                                     " cannot be written: " + std::strerror(errno));
        }
        recording = std::make_unique<RecordingEnvironment>(measuring, capture, RouteAddress);
    }
    dorvel::SetEnvironment(recording ? static_cast<dorvel::HostEnvironment*>(recording.get()) : &measuring);
    dorvel::SetLogSink([&log](std::string_view text) { log.Add(text); });
    dorvel::EnableUserTrace(trace);
}

HostScope::~HostScope() {
    dorvel::EnableUserTrace(false);
    dorvel::SetLogSink({});
    dorvel::SetEnvironment(&before);
}

}  // namespace workbench
