#include "PriorityRelease.h"

#include <utility>

#include "Pace.h"

namespace workbench {

namespace {

using standard::Datum;
using standard::DatumKind;
using standard::Failure;
using standard::PropertyId;

constexpr char const* Names[] = {"commanded", "not-commanded", "not-readable",    "released", "refused",
                                 "confirmed", "not-confirmed", "still-commanded", "skipped"};

}  // namespace

char const* NameOf(ReleaseOutcome outcome) {
    return Names[static_cast<std::size_t>(outcome)];
}

PriorityRelease::PriorityRelease(standard::Link& network, BrowseSettings browseSettings,
                                 unsigned releasedPriority)
    : link(network),
      settings(std::move(browseSettings)),
      priority(releasedPriority),
      relinquisher(network, PacedClient(settings)) {}

ReleaseResult PriorityRelease::Look(ReleaseTarget const& target) {
    ReleaseResult result;
    result.target = target;
    result.before = Read(target);
    auto const array = result.before.properties.find(static_cast<std::uint32_t>(PropertyId::Priority_Array));
    if (array == result.before.properties.end()) {
        result.reason = ReaderOf(target.peer).End();
    } else if (array->second.failure) {
        result.reason = "its priority array cannot be read: " + FailureText(*array->second.failure);
    } else if (array->second.values.size() < priority) {
        result.reason = "its priority array has no priority " + std::to_string(priority);
    } else {
        result.outcome =
            IsCommanded(result.before) ? ReleaseOutcome::Commanded : ReleaseOutcome::NotCommanded;
    }
    return result;
}

void PriorityRelease::Release(ReleaseResult& result) {
    if (link.IsStopped()) {
        result.outcome = ReleaseOutcome::Skipped;
        result.reason = "it was ended before";
        return;
    }
    auto const failure = relinquisher.Relinquish(result.target.peer, result.target.object, priority);
    result.after = Read(result.target);
    bool const isStillCommanded = IsCommanded(result.after);
    bool const isKnown = result.after.Values(PropertyId::Priority_Array) != nullptr;
    if (failure) {
        bool const isAnswer = failure->kind == Failure::Kind::Error ||
                              failure->kind == Failure::Kind::Reject || failure->kind == Failure::Kind::Abort;
        result.reason = FailureText(*failure);
        result.outcome = isAnswer                       ? ReleaseOutcome::Refused
                         : isKnown && !isStillCommanded ? ReleaseOutcome::Released
                                                        : ReleaseOutcome::NotConfirmed;
    } else {
        result.outcome = isStillCommanded ? ReleaseOutcome::StillCommanded
                         : isKnown        ? ReleaseOutcome::Released
                                          : ReleaseOutcome::Confirmed;
    }
}

PatientReader& PriorityRelease::ReaderOf(standard::Peer const& peer) {
    for (auto const& reader : readers) {
        if (reader->Device() == peer) {
            return *reader;
        }
    }
    readers.push_back(std::make_unique<PatientReader>(link, peer, settings));
    return *readers.back();
}

ObjectRecord PriorityRelease::Read(ReleaseTarget const& target) {
    ObjectRecord object{target.object, {}, {}};
    std::vector<standard::PropertyReference> references;
    for (PropertyId const property : {PropertyId::Object_Name, PropertyId::Priority_Array}) {
        references.push_back({target.object, static_cast<std::uint32_t>(property), std::nullopt});
    }
    ReaderOf(target.peer).Read(references, [&](standard::ReadResult result) {
        object.properties[result.reference.property] = std::move(result);
    });
    return object;
}

bool PriorityRelease::IsCommanded(ObjectRecord const& object) const {
    std::vector<Datum> const* const levels = object.Values(PropertyId::Priority_Array);
    return levels && levels->size() >= priority && (*levels)[priority - 1].kind != DatumKind::Null;
}

}  // namespace workbench
