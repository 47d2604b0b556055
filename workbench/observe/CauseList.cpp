#include "CauseList.h"

#include <algorithm>
#include <utility>

namespace workbench {

namespace {

Cause* Find(std::vector<Cause>& causes, CauseKind kind, std::string const& object) {
    auto const found = std::find_if(causes.begin(), causes.end(), [&](Cause const& cause) {
        return cause.kind == kind && cause.object == object;
    });
    return found == causes.end() ? nullptr : &*found;
}

}  // namespace

void CauseList::Add(CauseKind kind, std::string const& object, std::string text, long long time) {
    if (Cause* const known = Find(current, kind, object)) {
        ++known->count;
    } else if (current.size() < Most) {
        current.push_back({kind, object, std::move(text), 1, time, false});
    }
}

void CauseList::AddCounted(Cause cause) {
    if (current.size() < Most) {
        current.push_back(std::move(cause));
    }
}

std::vector<Cause> CauseList::Finish() {
    for (Cause& cause : current) {
        Cause const* const earlier = Find(before, cause.kind, cause.object);
        if (earlier && !cause.isDated) {
            cause.since = earlier->since;
        }
    }
    std::stable_sort(current.begin(), current.end(),
                     [](Cause const& left, Cause const& right) { return left.kind < right.kind; });
    before = std::exchange(current, {});
    return before;
}

}  // namespace workbench
