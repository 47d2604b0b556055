#include "FakeAddIn.h"

#include <cstddef>
#include <lua.hpp>
#include <new>
#include <string_view>

#include "dorvel/Registration.h"
#include "dorvelshare/HostEnvironment.h"

namespace test {

namespace {

FakeAddIn* current = nullptr;

int Collect(lua_State* L) {
    static_cast<FakeDriver*>(lua_touserdata(L, 1))->~FakeDriver();
    return 0;
}

void ReadField(lua_State* L, FakeDriver& driver) {
    char const* const name = lua_tostring(L, -2);
    if (std::string_view(name) == "Vars") {
        get_lua_value(driver.Vars, L);
    } else if (std::string_view(name) == "Address") {
        driver.address = lua_tostring(L, -1);
    } else if (lua_isinteger(L, -1)) {
        driver.numbers[name] = lua_tointeger(L, -1);
    } else if (lua_isboolean(L, -1)) {
        driver.numbers[name] = lua_toboolean(L, -1);
    }
}

int New(lua_State* L) {
    luaL_checktype(L, 1, LUA_TTABLE);
    auto* const driver = new (lua_newuserdatauv(L, sizeof(FakeDriver), 0)) FakeDriver();
    luaL_setmetatable(L, "BACnet");
    lua_pushnil(L);
    while (lua_next(L, 1)) {
        ReadField(L, *driver);
        lua_pop(L, 1);
    }
    driver->WriteCondition = static_cast<ProtocolWriteCondition>(driver->Number("WriteCondition"));
    driver->WriteItemId = driver->Number("WriteItemId");
    driver->ExecuteOnSlave = driver->Number("ExecuteOnSlave") != 0;
    driver->WriteOnSlave = driver->Number("WriteOnSlave") != 0;
    driver->Init(L);
    return 1;
}

int Open(lua_State* L) {
    luaL_newmetatable(L, "BACnet");
    lua_pushcfunction(L, Collect);
    lua_setfield(L, -2, "__gc");
    lua_createtable(L, 0, 1);
    lua_pushcfunction(L, New);
    lua_setfield(L, -2, "new");
    lua_setglobal(L, "BACnet");
    lua_pop(L, 1);
    return 0;
}

}  // namespace

void FakeDriver::Inited() {
    if (current && current->onInited) {
        current->onInited(*this);
    }
}

void FakeDriver::AddChannel(ReadChannel const* read, WriteChannel const* write,
                            std::map<std::string, OpcUa_VariantHlp> const& properties) {
    variables.push_back({{}, properties});
    BaseInitChannel(read, write, variables.back().descriptor);
}

void FakeDriver::Execute() {
    if (current && current->onCycle) {
        current->onCycle(*this);
    }
}

void FakeDriver::Deliver(std::size_t place, OpcUa_VariantHlp value, OpcUa_StatusCode status) {
    WriteDataRec record;
    record.Id = variables.at(place).descriptor.ReadId;
    record.Value.SetDataValue(value, dorvel::Environment().Now(), status);
    DataProvider()->WriteValues({record});
}

long long FakeDriver::Number(std::string const& name) const {
    auto const found = numbers.find(name);
    return found == numbers.end() ? 0 : found->second;
}

void FakeDriver::WritePhase(Write const& write) {
    for (std::size_t place = 0; place < variables.size() && isWrite(); ++place) {
        DriverVarDsc& descriptor = variables[place].descriptor;
        OpcUa_VariantHlp value;
        if (!descriptor.IsWrite) {
            continue;
        }
        DataProvider()->ReadValue(descriptor.WriteId, 0, "", descriptor.WriteType, value,
                                  GetValueFlags::None);
        if (IsNeedWriteValue(value, descriptor)) {
            value.Normalize(nullptr, nullptr);
            write(place, value);
        }
    }
}

FakeAddIn::FakeAddIn(FakeDriver::Behaviour cycle) : onCycle(std::move(cycle)) {
    static int const registered = RegisterExternalSTLib("BACnet", Open);
    (void)registered;
    current = this;
}

FakeAddIn::~FakeAddIn() {
    current = nullptr;
}

}  // namespace test
