#include "Project.h"

namespace workbench {

std::string Prefix(Place const& place) {
    if (place.File.empty()) {
        return {};
    }
    return place.File + (place.Line > 0 ? ":" + std::to_string(place.Line) : "") + ": ";
}

}  // namespace workbench
