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

// When a value is to be written to the device.
enum class ProtocolWriteCondition : int {
    OnChange = 0,  // it differs from the value that was written last; the first value is taken as written
    Always = 1,    // in every cycle
    OnTrigger = 2  // the item WriteItemId went from false to true
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

    // The end of configuration. What it throws reaches the caller.
    virtual void Inited() = 0;
    // Gives the block the data provider of its task, walks Vars through AddChannel, then calls Inited.
    virtual void InitedInternal(lua_State* L);
    // One variable; write is null for one that is only read.
    virtual void AddChannel(ReadChannel const* read, WriteChannel const* write,
                            std::map<std::string, OpcUa_VariantHlp> const& properties) = 0;
    // Fills the descriptor from the channels.
    virtual void BaseInitChannel(ReadChannel const* read, WriteChannel const* write,
                                 DriverVarDsc& descriptor);
    // Milliseconds to wait after a fault before the next cycle; 0, the cycle of the task decides.
    virtual int CalcRecconectInterval();
    // One cycle of the driver.
    virtual void Execute() = 0;

    // One cycle as the host runs it: nothing before there is a data provider, when ExecuteItemId names an
    // item that is not true, on the standby of a redundant pair without ExecuteOnSlave, within the pause of
    // CalcRecconectInterval, or while another cycle of this block is under way; else Execute. An exception of
    // the driver becomes a fault with its text. True when Execute ran.
    bool Cycle();
    // Cycle for a script: pushes whether the driver ran, gives 1.
    int call(lua_State* L);

    // The runtime side is set by InitedInternal, or by whoever has no Lua state.
    void SetDataProvider(LuaDataProvider* dataProvider) { provider = dataProvider; }
    LuaDataProvider* DataProvider() const { return provider; }

    long long FaultItemId = 0;      // Boolean: the last poll failed
    long long ErrorTextItemId = 0;  // String: why, empty when it did not
    long long ExecuteItemId = 0;    // Boolean, read: the block is polled while it is true
    long long ConnectItemId = 0;    // Boolean: the last poll reached the device
    long long WriteItemId = 0;  // Boolean, read: trigger of OnTrigger; else writes happen while it is true
    ProtocolWriteCondition WriteCondition = ProtocolWriteCondition::OnChange;
    bool ExecuteOnSlave = false;  // poll on the standby too
    bool WriteOnSlave = false;    // write on the standby too
    Channels Vars;

protected:
    // The outcome of a poll: kept for CheckIndexProlog, and written to the fault, error-text and connect
    // items.
    void UpdateFaultState(bool fault, std::string const& text);
    // Non-zero when this block may write in this cycle: not on the standby without WriteOnSlave, and not
    // while WriteItemId names an item that is false (with OnTrigger the item only triggers).
    int isWrite();
    // Non-zero when the write condition wants this value written; remembers it in the descriptor. A null
    // value is never written.
    int IsNeedWriteValue(OpcUa_VariantHlp const& value, DriverVarDsc& descriptor);

    LuaDataProvider* provider = nullptr;

private:
    friend class dorvel::Runtime;

    bool MayExecute();
    void ExecuteGuarded();
    bool IsTriggered(DriverVarDsc& descriptor);

    dorvel::Runtime* runtime = nullptr;  // that knows this block
    std::atomic<bool> isInCycle{false};
    long long faultTime = 0;  // when the last cycle ended in a fault, 0 after a good one
};

// Reads the table at the top of the stack into channels: a list of tables with ReadId, ReadField, Type
// (number of a built-in type), ElementType, WriteId (none or 0: only read), WriteField; all other text keys
// become properties. Type is required, and ElementType where Type is DataValue. What is no such table ends in
// a Lua error that names the place, and channels stays as it was.
DORVEL_HOST_API void get_lua_value(ScadaProtocol::Channels& channels, lua_State* L);

namespace dorvel {

// Whether this host is the standby of a redundant pair. False at start.
DORVEL_HOST_API void SetStandby(bool standby);
DORVEL_HOST_API bool IsStandby();

}  // namespace dorvel
