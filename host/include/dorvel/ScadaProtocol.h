#pragma once

#include <atomic>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "HostApi.h"
#include "dorvel/BaseLuaObj.h"
#include "dorvelshare/LuaDataProvider.h"

namespace dorvel {
class Runtime;
}

// When a value is written to the device.
enum class ProtocolWriteCondition : int {
    OnChange = 0,  // when it differs from the value written last; the first value counts as written
    Always = 1,    // in every cycle
    OnTrigger = 2  // when the item WriteItemId goes from false to true
};

// Base of all protocol drivers: the script-visible fields that every driver has, the cycle around Execute,
// and the items by which a block reports to the runtime. An item id of 0 means that there is no such item.
class DORVEL_HOST_API ScadaProtocol : public BaseLuaObj {
public:
    struct ReadChannel {
        long long Id = 0;
        std::string Field;
        OpcUa_BuiltInTypeHlp Type;
    };

    struct WriteChannel {
        long long Id = 0;
        std::string Field;
        OpcUa_BuiltInTypeHlp Type;
    };

    // One configured variable; every entry of its table that is not part of a channel is a property.
    struct Channel {
        ReadChannel Read;
        std::optional<WriteChannel> Write;
        std::map<std::string, OpcUa_VariantHlp> Properties;
    };

    using Channels = std::vector<Channel>;

    ScadaProtocol();
    ~ScadaProtocol() override;

    // Called at the end of configuration. Exceptions reach the caller.
    virtual void Inited() = 0;
    // Sets the data provider of the block's task, calls AddChannel for each of Vars and releases its
    // properties, and then calls Inited.
    virtual void InitedInternal(lua_State* L);
    // Adds one variable; write is null for a read-only one.
    virtual void AddChannel(ReadChannel const* read, WriteChannel const* write,
                            std::map<std::string, OpcUa_VariantHlp> const& properties) = 0;
    // Fills the descriptor from the channels.
    virtual void BaseInitChannel(ReadChannel const* read, WriteChannel const* write,
                                 DriverVarDsc& descriptor);
    // Milliseconds to wait after a fault before the next cycle; 0: no wait beyond the task's period.
    virtual int CalcRecconectInterval();
    // One cycle of the driver.
    virtual void Execute() = 0;

    // Runs one cycle: calls Execute and returns true, unless
    // - there is no data provider yet,
    // - ExecuteItemId names an item that is not true,
    // - the host is the standby of a redundant pair and ExecuteOnSlave is false,
    // - the wait of CalcRecconectInterval is not over, or
    // - another cycle of this block is running.
    // An exception of the driver becomes a fault with its text.
    bool Cycle();
    // Cycle for a script: pushes its result, returns 1.
    int call(lua_State* L);

    // Set by InitedInternal, or by a caller that has no Lua state.
    void SetDataProvider(LuaDataProvider* dataProvider) { provider = dataProvider; }
    LuaDataProvider* DataProvider() const { return provider; }

    long long FaultItemId = 0;      // Boolean: the last poll failed
    long long ErrorTextItemId = 0;  // String: why, empty when it did not
    long long ExecuteItemId = 0;    // Boolean, read: the block is polled while it is true
    long long ConnectItemId = 0;    // Boolean: the last poll reached the device
    long long WriteItemId = 0;      // Boolean, read: the trigger of OnTrigger, otherwise the enable of writes
    ProtocolWriteCondition WriteCondition = ProtocolWriteCondition::OnChange;
    bool ExecuteOnSlave = false;  // poll on the standby too
    bool WriteOnSlave = false;    // write on the standby too
    Channels Vars;

protected:
    // Reports the outcome of a poll: keeps it for CheckIndexProlog and writes it to the fault, error-text and
    // connect items.
    void UpdateFaultState(bool fault, std::string const& text);
    // Non-zero when this block may write in this cycle: not on the standby without WriteOnSlave, and not
    // while WriteItemId names an item that is false (with OnTrigger the item only triggers).
    int isWrite();
    // Non-zero when the write condition passes this value; null never passes. The descriptor keeps the last
    // value that passed, before that the first value.
    int IsNeedWriteValue(OpcUa_VariantHlp const& value, DriverVarDsc& descriptor);

    LuaDataProvider* provider = nullptr;

private:
    friend class dorvel::Runtime;

    bool MayExecute();
    void ExecuteGuarded();
    bool IsTriggered(DriverVarDsc& descriptor);

    dorvel::Runtime* runtime = nullptr;  // null for a block without a runtime
    std::atomic<bool> isInCycle{false};
    long long faultTime = 0;  // when the last cycle ended in a fault, 0 after a good one
};

// Reads the table at the top of the stack into channels: a list of tables with ReadId, ReadField, Type
// (number of a built-in type), ElementType, WriteId (absent or 0: read-only), WriteField; all other text keys
// become properties. Type is required, and ElementType where Type is DataValue. Any other table is a Lua
// error that names the entry, and channels is unchanged.
DORVEL_HOST_API void get_lua_value(ScadaProtocol::Channels& channels, lua_State* L);

namespace dorvel {

// Whether this host is the standby of a redundant pair. False at start.
DORVEL_HOST_API void SetStandby(bool standby);
DORVEL_HOST_API bool IsStandby();

}  // namespace dorvel
