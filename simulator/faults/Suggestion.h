#pragma once

#include <string>
#include <vector>

namespace simulator {

// "; did you mean "NAME"?" with the name that is most like what was written; nothing if none is like it.
std::string Suggestion(std::string const& written, std::vector<std::string> const& names);

}  // namespace simulator
