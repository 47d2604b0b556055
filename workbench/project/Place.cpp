#include "Place.h"

#include <lua.hpp>

namespace workbench {

std::string ShortName(std::string const& path) {
    return path.size() < LUA_IDSIZE ? path : "..." + path.substr(path.size() - (LUA_IDSIZE - 4));
}

std::string Prefix(Place const& place) {
    if (place.file.empty()) {
        return {};
    }
    return ShortName(place.file) + (place.line > 0 ? ":" + std::to_string(place.line) : "") + ": ";
}

}  // namespace workbench
