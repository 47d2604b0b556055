#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tools {

// The candidate nearest to the text, ignoring letter case; empty when none is near. At most one letter in
// three may be wrong, missing, added or swapped with its neighbour.
std::string Nearest(std::string_view text, std::vector<std::string> const& candidates);

// Suggests the nearest candidate; empty when none is near.
std::string DidYouMean(std::string_view text, std::vector<std::string> const& candidates);

// " (did you mean \"...\"?)". The text may come from a project, so Quoted shows it.
std::string Suggest(std::string const& text);

}  // namespace tools
