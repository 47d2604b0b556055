#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "Finding.h"
#include "LuaState.h"
#include "Project.h"

namespace workbench {

// All findings of a project, and its size. Needs no network and no add-in.
struct ProjectReport {
    std::string path;
    Findings findings;  // by file, in the order in which they were loaded, and line
    std::size_t blocks = 0;
    std::size_t variables = 0;
    std::size_t tasks = 0;
    std::vector<std::string> unusedParams;
};

// Reads the file and runs its script, within the limits. Functions of After are not called. A file that
// cannot be read is a finding.
ProjectReport CheckProject(std::string const& path, std::map<std::string, std::string> const& params,
                           tools::LuaLimits const& limits = {});
// The same for a text that stands for that file.
ProjectReport CheckProjectText(std::string const& path, std::string const& text,
                               std::map<std::string, std::string> const& params,
                               tools::LuaLimits const& limits = {});

// The findings about writes, of a project that runs.
Findings FindWritesOf(std::deque<BlockConfig> const& blocks);

}  // namespace workbench
