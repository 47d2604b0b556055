#include "DriverPoll.h"

#include <algorithm>

#include "BlockAddress.h"
#include "PointFacts.h"
#include "Snapshot.h"
#include "dorvel/ScadaProtocol.h"

namespace workbench {

namespace {

// Every object can take all its attempts of one second each, and two more for the end of a segmented answer.
std::chrono::seconds LimitOf(BlockConfig const& block) {
    auto const objects = static_cast<long long>(PolledObjects(block).size());
    long long const attempts = NumberField(block, "CountRepeat", 3);
    return std::chrono::seconds(std::min((attempts + 2) * objects, 600 + 2 * objects) + 10);
}

std::string EndedAt(BlockConfig const& block, std::optional<standard::ObjectId> const& object) {
    for (VariableConfig const& variable : block.variables) {
        if (object && variable.objectType->bacnetNumber == object->type &&
            static_cast<std::uint32_t>(variable.objectNumber) == object->instance) {
            return ObjectText(variable);
        }
    }
    return {};
}

}  // namespace

void DriverPoll::Forget(BlockConfig const& block) {
    for (VariableConfig const& variable : block.variables) {
        store.Write(variable.readId, "", OpcUa_VariantHlp(), 0);
    }
}

void DriverPoll::Skip(BlockConfig const& block, std::string const& reason) {
    Forget(block);
    outcome = {};
    outcome.fault = true;
    outcome.faultText = reason;
}

void DriverPoll::Cycle(BlockConfig const& block) {
    Forget(block);
    std::chrono::seconds const limit = LimitOf(block);
    guard.BeginCycle(limit);
    block.protocol->Cycle();
    BlockSnapshot const snapshot = TakeSnapshot(block, 1, store);
    outcome = {};
    outcome.fault = IsFault(snapshot);
    if (outcome.fault) {
        outcome.pollEndedAt = EndedAt(block, guard.LastObject());
        outcome.faultText = FaultText(snapshot);
        if (!snapshot.isReported && !log.Lines().empty()) {
            outcome.faultText += " (" + log.Lines().back() + ")";
        }
        if (guard.IsOver()) {
            outcome.faultText += ", cut off after " + std::to_string(limit.count()) + " s";
        }
    }
}

DriverReading DriverPoll::Reading(VariableConfig const& variable) const {
    DriverReading reading = outcome;
    store.Read(variable.readId, "", reading.state);
    return reading;
}

}  // namespace workbench
