#pragma once

#include <string>
#include <vector>

#include "Finding.h"
#include "ProjectCheck.h"

namespace workbench {

// A finding for people: file:line: severity: what is wrong [code]; below it the effect, if that line does not
// state it, and what to do.
std::string FindingText(Finding const& finding, bool colours);

// A finding as a JSON object on one line. What a finding does not have is null.
std::string FindingJson(Finding const& finding);

// The last line about a project: its counts, or that there is no mistake.
std::string SummaryText(ProjectReport const& report);

struct FindingCounts {
    std::size_t errors = 0;
    std::size_t warnings = 0;
};
FindingCounts CountsOf(Findings const& findings);

// The last line about so many projects.
std::string CountsText(std::size_t projects, FindingCounts const& counts);

}  // namespace workbench
