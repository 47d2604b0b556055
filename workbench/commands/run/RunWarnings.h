#pragma once

#include <ostream>
#include <string>

#include "LoadedProject.h"
#include "LogBuffer.h"

namespace workbench {

// Says before a run which writes go elsewhere or are refused, and which params the project does not use. The
// warnings are lines on err, or of the log if that is for programs.
void Warn(LoadedProject const& project, LogFormat format, LogBuffer& log, std::ostream& err);

// A single warning, without "warning: " and without its end.
void Warn(std::string const& warning, LogFormat format, LogBuffer& log, std::ostream& err);

}  // namespace workbench
