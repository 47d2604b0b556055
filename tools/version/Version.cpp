#include "Version.h"

namespace tools {

char const* Version() {
    return DORVEL_VERSION;
}

std::string VersionText(std::string const& program) {
    std::string const commit = Commit();
    std::string const origin = commit == "unknown" ? "unknown commit" : "commit " + commit;
    return program + " " + Version() + " (" + origin + ")";
}

}  // namespace tools
