#include "Cause.h"

#include <cstddef>
#include <iterator>

namespace workbench {

namespace {

// In the order of CauseKind.
constexpr char const* Names[] = {
    "endless-segments", "silent",         "late",         "other-station",    "error",
    "reject",           "abort",          "bad-frame",    "network-message",  "bad-answer",
    "other-invoke-id",  "earlier-answer", "duplicate",    "missing-segment",  "segment-order",
    "repeated-segment", "long-answer",    "other-object", "unasked-property", "missing-property",
    "property-error",   "not-taken"};

static_assert(std::size(Names) == static_cast<std::size_t>(CauseKind::NotTaken) + 1);

}  // namespace

char const* CauseName(CauseKind kind) {
    return Names[static_cast<std::size_t>(kind)];
}

std::string WhyText(std::vector<Cause> const& causes) {
    std::string text;
    for (Cause const& cause : causes) {
        text += (text.empty() ? "" : "; ") + cause.text;
    }
    return text;
}

}  // namespace workbench
