#pragma once

#include <string>
#include <string_view>

#include "VerifyReport.h"

namespace workbench {

// The page that is handed over at acceptance: HTML in one file, without scripts, and with nothing that is
// loaded from elsewhere. It has title, figures, findings, devices, all points by block, the legend of the
// verdicts and lines for signatures, and prints on A4.
std::string ReportPage(VerifyReport const& report);

// A text of a device or a project as HTML text: markup and control characters in it have no effect.
std::string HtmlText(std::string_view text);

// The style sheet of the page.
char const* ReportStyle();

}  // namespace workbench
