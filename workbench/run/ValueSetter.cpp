#include "ValueSetter.h"

#include "ValueText.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

// Real properties have 32 bits, whatever the variable's type is.
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

}  // namespace

ValueSetter::ValueSetter(dorvel::Runtime& blockRuntime, LogBuffer& runtimeLog)
    : runtime(blockRuntime), log(runtimeLog) {
    runtime.SetWriteObserver([this](ScadaProtocol&, long long id, OpcUa_Variant const&) { Taken(id); });
    log.SetListener([this](std::string const& line) { Logged(line); });
}

ValueSetter::~ValueSetter() {
    runtime.SetWriteObserver({});
    log.SetListener({});
}

void ValueSetter::Set(SetRequest const& request) {
    std::lock_guard<std::mutex> const lock(mutex);
    Entry& entry = entries[request.Variable->WriteId];
    entry = {request.Block, request.Variable, {WriteStage::Pending, request.Value, {}}, true};
}

void ValueSetter::Taken(long long id) {
    std::lock_guard<std::mutex> const lock(mutex);
    beingWritten.erase(std::this_thread::get_id());
    auto const found = entries.find(id);
    if (found == entries.end() || found->second.Queued) {
        return;  // with a value queued, the one that goes out now is not it
    }
    Entry& entry = found->second;
    beingWritten[std::this_thread::get_id()] = &entry;
    if (!entry.InFlight) {
        entry.InFlight = entry.Fresh = true;
        if (entry.State.Stage == WriteStage::Refused) {
            entry.State.Stage = WriteStage::Pending;
            entry.State.Reason.clear();
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
    if (entry.InFlight) {
        entry.InFlight = false;
        entry.State.Stage = WriteStage::Refused;
        entry.State.Reason = line;
    }
}

void ValueSetter::AfterCycle(BlockConfig const& block, bool fault) {
    std::lock_guard<std::mutex> const lock(mutex);
    beingWritten.erase(std::this_thread::get_id());
    for (auto& entry : entries) {
        if (entry.second.Block == &block && entry.second.InFlight) {
            Confirm(entry.second, fault);
        }
    }
    if (!fault) {
        Apply(block);
    }
}

void ValueSetter::Confirm(Entry& entry, bool fault) {
    if (entry.Fresh) {
        entry.Fresh = false;  // what this cycle read is older than its write
        return;
    }
    if (fault) {
        return;
    }
    VariableState read;
    runtime.Variables().Read(entry.Variable->ReadId, "", read);
    bool const same = SameValue(entry.State.Value, read.Value);
    entry.InFlight = !same;
    entry.State.Stage = same ? WriteStage::Written : WriteStage::Unconfirmed;
    entry.State.Reason =
        same ? std::string() : "reads back " + ValueText(read.Value, dorvel::Environment().LocalTimeDiff());
}

void ValueSetter::Apply(BlockConfig const& block) {
    bool const byTrigger = block.WriteCondition == ProtocolWriteCondition::OnTrigger;
    if (byTrigger && triggered.erase(&block) > 0) {
        SetTrigger(block, false);
        return;  // the driver has to see it off once
    }
    bool applied = false;
    for (auto& [id, entry] : entries) {
        if (entry.Block != &block || !entry.Queued) {
            continue;
        }
        entry.Queued = false;
        applied = true;
        runtime.Variables().Write(id, "", entry.State.Value, dorvel::Environment().Now());
        if (block.WriteCondition == ProtocolWriteCondition::OnChange) {
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
    runtime.Variables().Write(block.WriteItemId, "", value, dorvel::Environment().Now());
}

void ValueSetter::Show(BlockSnapshot& block) const {
    std::lock_guard<std::mutex> const lock(mutex);
    for (VariableSnapshot& variable : block.Variables) {
        auto const found = entries.find(variable.Config->WriteId);
        if (found != entries.end()) {
            variable.Write = found->second.State;
        }
    }
}

}  // namespace workbench
