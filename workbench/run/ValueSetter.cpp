#include "ValueSetter.h"

#include <algorithm>

#include "ShownValue.h"
#include "Whereabouts.h"
#include "WriteCheck.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

// A Real property has 32 bits, whatever the variable's type.
bool SameValue(OpcUa_VariantHlp const& set, OpcUa_VariantHlp read) {
    if (read.ChangeType(set.GetType()) != OpcUa_Good) {
        return false;
    }
    if (set == read) {
        return true;
    }
    return set.GetType() == OpcUaType_Double &&
           static_cast<float>(set.Value.Double) == static_cast<float>(read.Value.Double);
}

bool IsHeldBack(BlockConfig const& block) {
    return dorvel::IsStandby() && block.protocol && !block.protocol->WriteOnSlave;
}

// The driver writes many properties to the present value.
bool IsReadBack(PointWrite const& write, VariableConfig const& variable) {
    return write.property == static_cast<std::uint32_t>(variable.property->bacnetNumber);
}

}  // namespace

ValueSetter::ValueSetter(dorvel::Runtime& blockRuntime, LogBuffer& runtimeLog, Observation const* datagrams)
    : runtime(blockRuntime), log(runtimeLog), observation(datagrams) {
    runtime.SetWriteObserver([this](ScadaProtocol&, long long id, OpcUa_Variant const&) { Taken(id); });
    log.SetListener([this](std::string const& line) { Logged(line); });
}

ValueSetter::~ValueSetter() {
    runtime.SetWriteObserver({});
    log.SetListener({});
}

void ValueSetter::Set(SetRequest const& request) {
    std::lock_guard<std::mutex> const lock(mutex);
    Entry& entry = entries[request.variable->writeId];
    entry = {request.block, request.variable, {WriteStage::Pending, request.value, {}, {}}, true};
}

void ValueSetter::Taken(long long id) {
    std::lock_guard<std::mutex> const lock(mutex);
    beingWritten.erase(std::this_thread::get_id());
    auto const found = entries.find(id);
    if (found != entries.end() && Here().block == found->second.block) {
        Here().object = Here().variable = found->second.variable;
    }
    if (found == entries.end() || found->second.queued) {
        return;  // the value that is written now is older than the queued one
    }
    Entry& entry = found->second;
    beingWritten[std::this_thread::get_id()] = &entry;
    PointTable const* const points = PointsOf(entry);
    entry.before = points ? points->WriteOf(*entry.variable).number : 0;
    entry.isTaken = true;
    entry.inDoubt = false;
    if (!entry.inFlight) {
        entry.inFlight = entry.fresh = true;
        if (entry.state.stage == WriteStage::Refused) {
            entry.state.stage = WriteStage::Pending;
            entry.state.reason.clear();
        }
    }
}

void ValueSetter::Logged(std::string const& line) {
    std::lock_guard<std::mutex> const lock(mutex);
    auto const found = beingWritten.find(std::this_thread::get_id());
    if (found == beingWritten.end()) {
        return;
    }
    Entry& entry = *found->second;
    beingWritten.erase(found);
    if (entry.inFlight) {
        entry.inFlight = false;
        entry.state.stage = WriteStage::Refused;
        entry.state.reason = line;
    }
}

void ValueSetter::AfterCycle(BlockConfig const& block, bool fault) {
    std::lock_guard<std::mutex> const lock(mutex);
    beingWritten.erase(std::this_thread::get_id());
    for (auto& entry : entries) {
        if (entry.second.block == &block) {
            Examine(entry.second);
            Confirm(entry.second, fault);
            Reconsider(entry.second, fault);
            entry.second.isTaken = false;
        }
    }
    if (!fault) {
        Apply(block);
    }
}

// Adds what the datagrams of this cycle show of a write. The driver logs no Abort, and no line that says that
// there was no answer.
void ValueSetter::Examine(Entry& entry) const {
    PointTable const* const points = PointsOf(entry);
    if (!points) {
        return;
    }
    PointWrite const& write = points->WriteOf(*entry.variable);
    if (entry.isTaken) {
        ExamineTaken(entry, write);
    } else if (entry.inDoubt && !write.failure.empty()) {
        entry.inDoubt = false;  // the answer is late
        entry.state.reason = write.failure;
    }
}

void ValueSetter::ExamineTaken(Entry& entry, PointWrite const& write) const {
    bool const isSent = write.number != entry.before;
    entry.cyclesSent = std::min(entry.cyclesSent + (isSent ? 1U : 0U), 2U);
    if (entry.inFlight && isSent && !write.failure.empty()) {
        entry.inFlight = false;
        entry.state.stage = WriteStage::Refused;
        entry.state.reason = write.failure;
    } else if (!entry.inFlight && entry.state.stage == WriteStage::Refused && write.failure.empty() &&
               isSent) {
        entry.inDoubt = true;
        entry.state.reason += write.isAcknowledged ? "" : "; the device has not answered the write";
    }
    entry.fresh = entry.fresh && entry.inFlight;
}

void ValueSetter::Confirm(Entry& entry, bool fault) {
    if (!entry.inFlight) {
        return;
    }
    if (entry.fresh) {
        entry.fresh = false;  // this cycle has read before it has written
        return;
    }
    if (!fault) {
        entry.state = Judge(entry);
        entry.inFlight = entry.state.stage != WriteStage::Written;
    }
}

// A write without an answer may have reached the device.
void ValueSetter::Reconsider(Entry& entry, bool fault) const {
    PointTable const* const points = PointsOf(entry);
    // A cycle reads before it writes.
    bool const isReadSince = !entry.isTaken || entry.cyclesSent > 1;
    if (!entry.inDoubt || !isReadSince || fault || !points) {
        return;
    }
    WriteState const state = Judge(entry);
    bool const isAcknowledged = points->WriteOf(*entry.variable).isAcknowledged;
    if (isAcknowledged || state.stage != WriteStage::Unconfirmed) {
        entry.state = state;
        entry.inDoubt = false;
        entry.inFlight = state.stage != WriteStage::Written;
    }
}

WriteState ValueSetter::Judge(Entry const& entry) const {
    OpcUa_VariantHlp const& meant = entry.state.value;
    PointTable const* const points = PointsOf(entry);
    if (points && IsReadBack(points->WriteOf(*entry.variable), *entry.variable)) {
        auto const state =
            CheckWrite(meant, points->WriteOf(*entry.variable), points->StateOf(*entry.variable));
        if (state) {
            return *state;
        }
    }
    VariableState read;
    runtime.Variables().Read(entry.variable->readId, "", read);
    if (SameValue(meant, read.Value)) {
        return {WriteStage::Written, meant, {}, {}};
    }
    return {WriteStage::Unconfirmed,
            meant,
            "reads back " + ShownValue(*entry.variable, read.Value, dorvel::Environment().LocalTimeDiff()),
            {}};
}

PointTable const* ValueSetter::PointsOf(Entry const& entry) const {
    BlockObserver const* const observer = observation ? observation->Of(*entry.block) : nullptr;
    return observer ? &observer->Points() : nullptr;
}

void ValueSetter::Apply(BlockConfig const& block) {
    bool const byTrigger = block.writeCondition == ProtocolWriteCondition::OnTrigger;
    if (byTrigger && triggered.erase(&block) > 0) {
        SetTrigger(block, false);
        return;  // the driver must see the trigger off once
    }
    bool applied = false;
    for (auto& [id, entry] : entries) {
        if (entry.block != &block || !entry.queued) {
            continue;
        }
        entry.queued = false;
        applied = true;
        runtime.Variables().Write(id, "", entry.state.value, dorvel::Environment().Now());
        if (block.writeCondition == ProtocolWriteCondition::OnChange) {
            runtime.RequestWrite(id);
        }
    }
    if (byTrigger && applied) {
        triggered.insert(&block);
        SetTrigger(block, true);
    }
}

void ValueSetter::SetTrigger(BlockConfig const& block, bool on) {
    OpcUa_VariantHlp value;
    value.SetBool(on);
    runtime.Variables().Write(block.writeItemId, "", value, dorvel::Environment().Now());
}

// Without the lock.
WriteState ValueSetter::Current(BlockConfig const& block, VariableConfig const& variable) const {
    auto const found = entries.find(variable.writeId);
    if (found == entries.end()) {
        return {};
    }
    WriteState state = found->second.state;
    if (state.stage == WriteStage::Pending && IsHeldBack(block)) {
        state.reason = "this host is the standby, and WriteOnSlave is not set";
    }
    return state;
}

void ValueSetter::Show(BlockSnapshot& block) const {
    std::lock_guard<std::mutex> const lock(mutex);
    if (entries.empty()) {
        return;
    }
    for (VariableSnapshot& variable : block.variables) {
        WriteState state = Current(*block.config, *variable.config);
        if (state.stage != WriteStage::None) {
            variable.write = std::move(state);
        }
    }
}

std::map<VariableConfig const*, WriteState> ValueSetter::States() const {
    std::lock_guard<std::mutex> const lock(mutex);
    std::map<VariableConfig const*, WriteState> states;
    for (auto const& [id, entry] : entries) {
        states[entry.variable] = Current(*entry.block, *entry.variable);
    }
    return states;
}

WriteState ValueSetter::StateOf(BlockConfig const& block, VariableConfig const& variable) const {
    std::lock_guard<std::mutex> const lock(mutex);
    return Current(block, variable);
}

}  // namespace workbench
