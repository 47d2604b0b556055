#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace workbench {

// The candidate that is most like the text, letter case aside, or an empty text when none is near: at most
// one letter in three may be wrong, missing, added or swapped with its neighbour.
std::string Nearest(std::string_view text, std::vector<std::string> const& candidates);

// Suggests the nearest candidate; an empty text when none is near.
std::string DidYouMean(std::string_view text, std::vector<std::string> const& candidates);

// " (did you mean \"...\"?)". The text may come from a project: it is shown as Describe shows it.
std::string Suggest(std::string const& text);

}  // namespace workbench
