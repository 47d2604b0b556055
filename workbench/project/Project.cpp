#include "Project.h"

namespace workbench {

std::string Prefix(Place const& place) {
    if (place.file.empty()) {
        return {};
    }
    return place.file + (place.line > 0 ? ":" + std::to_string(place.line) : "") + ": ";
}

}  // namespace workbench
