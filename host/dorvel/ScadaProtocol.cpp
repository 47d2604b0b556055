#include "dorvel/ScadaProtocol.h"

#include <atomic>
#include <exception>
#include <lua.hpp>
#include <utility>

#include "LuaCall.h"
#include "RuntimeImpl.h"
#include "dorvelshare/NLSocket.h"
#include "dorvelshare/RTime.h"

namespace {

std::atomic<bool> standby{false};

constexpr long long TicksPerMillisecond = 10'000;

// True when the provider has the item and its value is true.
bool ReadFlag(LuaDataProvider const* provider, long long id) {
    OpcUa_VariantHlp value;
    bool flag = false;
    return provider &&
           provider->ReadValue(id, 0, std::string(), OpcUaType_Boolean, value, GetValueFlags::None) ==
               OpcUa_Good &&
           value.GetBool(flag) == OpcUa_Good && flag;
}

WriteDataRec FlagRecord(long long id, bool flag) {
    WriteDataRec record;
    record.Id = id;
    record.Value.SetBool(flag);
    return record;
}

WriteDataRec TextRecord(long long id, std::string const& text) {
    WriteDataRec record;
    record.Id = id;
    record.Value.SetUTF8String(text.data(), static_cast<int>(text.size()));
    return record;
}

}  // namespace

ScadaProtocol::ScadaProtocol() = default;

ScadaProtocol::~ScadaProtocol() {
    if (runtime) {
        runtime->impl->Forget(*this);
    }
}

void ScadaProtocol::InitedInternal(lua_State* L) {
    if (L && runtime) {
        SetDataProvider(runtime->impl->ProviderOf(*this));
    }
    for (Channel& channel : Vars) {
        AddChannel(&channel.Read, channel.Write ? &*channel.Write : nullptr, channel.Properties);
        channel.Properties.clear();
    }
    Inited();
}

void ScadaProtocol::BaseInitChannel(ReadChannel const* read, WriteChannel const* write,
                                    DriverVarDsc& descriptor) {
    if (read) {
        descriptor.ReadId = read->Id;
        descriptor.ReadField = read->Field;
        descriptor.ReadType = read->Type;
    }
    descriptor.IsWrite = write ? 1 : 0;
    if (write) {
        descriptor.WriteId = write->Id;
        descriptor.WriteField = write->Field;
        descriptor.WriteType = write->Type;
    }
}

int ScadaProtocol::CalcRecconectInterval() {
    return 0;
}

bool ScadaProtocol::MayExecute() {
    if (!provider || (dorvel::IsStandby() && !ExecuteOnSlave) ||
        (ExecuteItemId != 0 && !ReadFlag(provider, ExecuteItemId))) {
        return false;
    }
    if (faultTime == 0) {
        return true;
    }
    long long const passed = getRDateTime() - faultTime;
    // A clock that was set back must not extend the wait.
    return passed < 0 || passed >= CalcRecconectInterval() * TicksPerMillisecond;
}

bool ScadaProtocol::Cycle() {
    if (isInCycle.exchange(true)) {
        return false;
    }
    std::unique_ptr<std::atomic<bool>, void (*)(std::atomic<bool>*)> const leave(
        &isInCycle, [](std::atomic<bool>* mark) { *mark = false; });
    if (!MayExecute()) {
        return false;
    }
    NLBeginCycle(faultTime != 0);
    ExecuteGuarded();
    std::lock_guard<std::mutex> const lock(state.Mutex);
    faultTime = state.Fault ? getRDateTime() : 0;
    return true;
}

void ScadaProtocol::ExecuteGuarded() {
    try {
        Execute();
    } catch (std::exception const& failure) {
        UpdateFaultState(true, failure.what());
    } catch (...) {
        UpdateFaultState(true, "Unknown error");
    }
}

int ScadaProtocol::call(lua_State* L) {
    return dorvel::GuardLua(L, [&] {
        lua_pushboolean(L, Cycle());
        return 1;
    });
}

void ScadaProtocol::UpdateFaultState(bool fault, std::string const& text) {
    {
        std::lock_guard<std::mutex> const lock(state.Mutex);
        state.Finished = true;
        state.Fault = fault;
        state.ErrorText = text;
    }
    std::vector<WriteDataRec> records;
    if (FaultItemId != 0) {
        records.push_back(FlagRecord(FaultItemId, fault));
    }
    if (ErrorTextItemId != 0) {
        records.push_back(TextRecord(ErrorTextItemId, text));
    }
    if (ConnectItemId != 0) {
        records.push_back(FlagRecord(ConnectItemId, !fault));
    }
    if (provider) {
        provider->WriteValues(records);
    }
}

int ScadaProtocol::isWrite() {
    if (dorvel::IsStandby() && !WriteOnSlave) {
        return 0;
    }
    bool const isGate = WriteItemId != 0 && WriteCondition != ProtocolWriteCondition::OnTrigger;
    return !isGate || ReadFlag(provider, WriteItemId) ? 1 : 0;
}

bool ScadaProtocol::IsTriggered(DriverVarDsc& descriptor) {
    bool const now = ReadFlag(provider, WriteItemId);
    bool const before = std::exchange(descriptor.LastTrigger, now);
    return now && !before;
}

int ScadaProtocol::IsNeedWriteValue(OpcUa_VariantHlp const& value, DriverVarDsc& descriptor) {
    bool const isTriggered = WriteCondition == ProtocolWriteCondition::OnTrigger && IsTriggered(descriptor);
    OpcUa_VariantHlp bare = value;  // a new time alone is not a change
    bare.Normalize(nullptr, nullptr);
    if (bare.GetType() == OpcUaType_Null) {
        return 0;
    }
    bool const isFirst = descriptor.LastWritten.GetType() == OpcUaType_Null;
    bool needed = isTriggered;
    if (WriteCondition == ProtocolWriteCondition::Always) {
        needed = true;
    } else if (WriteCondition == ProtocolWriteCondition::OnChange) {
        bool const isRequested = runtime && runtime->impl->TakeWriteRequest(descriptor.WriteId);
        needed = isRequested || (!isFirst && bare != descriptor.LastWritten);
    }
    if (needed && runtime && runtime->impl->onWrite) {
        runtime->impl->onWrite(*this, descriptor.WriteId, bare);
    }
    if (needed || isFirst) {
        descriptor.LastWritten = std::move(bare);
    }
    return needed ? 1 : 0;
}

namespace dorvel {

void SetStandby(bool isStandby) {
    standby = isStandby;
}
bool IsStandby() {
    return standby;
}

}  // namespace dorvel
