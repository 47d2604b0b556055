// The block type in scripts, with a real Lua state.

#include <chrono>
#include <stdexcept>

#include "ScriptFixture.h"
#include "dorvel/Runtime.h"
#include "dorvelshare/VariableStore.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

class Script : public ScriptFixture {};

TEST_F(Script, MetadataTextIsExact) {
    EXPECT_EQ(BACnetScript::MetaTable(),
              "TYPES.StandardFB.BACnet= FBMetadata({ Name = 'BACnet', Hash = 1001, Vars = { \n"
              "\tFaultItemId = { Hash = 0,Type = TYPES.Elementary.LINT,Retain = false },\n"
              "\tErrorTextItemId = { Hash = 1,Type = TYPES.Elementary.LINT,Retain = false },\n"
              "\tExecuteItemId = { Hash = 2,Type = TYPES.Elementary.LINT,Retain = false },\n"
              "\tConnectItemId = { Hash = 3,Type = TYPES.Elementary.LINT,Retain = false },\n"
              "\tWriteItemId = { Hash = 4,Type = TYPES.Elementary.LINT,Retain = false },\n"
              "\tWriteCondition = { Hash = 5,Type = TYPES.Elementary.DINT,Retain = false },\n"
              "\tExecuteOnSlave = { Hash = 6,Type = TYPES.Elementary.BOOL,Retain = false },\n"
              "\tWriteOnSlave = { Hash = 7,Type = TYPES.Elementary.BOOL,Retain = false },\n"
              "\tAddress = { Hash = 8,Type = TYPES.Elementary.STRING,Retain = false },\n"
              "\tMAC = { Hash = 9,Type = TYPES.Elementary.STRING,Retain = false },\n"
              "\tTimeout = { Hash = 10,Type = TYPES.Elementary.DINT,Retain = false },\n"
              "\tCountRepeat = { Hash = 11,Type = TYPES.Elementary.DINT,Retain = false },\n"
              "\tAddressNumber = { Hash = 12,Type = TYPES.Elementary.DINT,Retain = false },\n"
              "\tNetworkNumber = { Hash = 13,Type = TYPES.Elementary.DINT,Retain = false },\n"
              "\tPriority = { Hash = 14,Type = TYPES.Elementary.DINT,Retain = false },\n"
              "}})\n");
}

TEST_F(Script, MetadataIsEnteredUnderTheFullName) {
    EXPECT_EQ(Run("return TYPES.StandardFB.BACnet.Name .. TYPES.StandardFB.BACnet.Hash .. "
                  "TYPES.StandardFB.BACnet.Vars.Timeout.Type"),
              "BACnet1001DINT");
}

TEST_F(Script, LengthCounts16FieldsWhileTheMetadataLists15) {
    EXPECT_EQ(Run("return #BACnet.new{}"), "16");
    EXPECT_EQ(Run("local n = 0; for _ in pairs(TYPES.StandardFB.BACnet.Vars) do n = n + 1 end; return n"),
              "15");
}

TEST_F(Script, FieldTableHasNamesTypesAndOrder) {
    struct Row {
        char const* name;
        char const* type;
    };
    Row const rows[] = {{"FaultItemId", "TYPES.Elementary.LINT"},
                        {"ErrorTextItemId", "TYPES.Elementary.LINT"},
                        {"ExecuteItemId", "TYPES.Elementary.LINT"},
                        {"ConnectItemId", "TYPES.Elementary.LINT"},
                        {"WriteItemId", "TYPES.Elementary.LINT"},
                        {"WriteCondition", "TYPES.Elementary.DINT"},
                        {"ExecuteOnSlave", "TYPES.Elementary.BOOL"},
                        {"WriteOnSlave", "TYPES.Elementary.BOOL"},
                        {"Vars", nullptr},
                        {"Address", "TYPES.Elementary.STRING"},
                        {"MAC", "TYPES.Elementary.STRING"},
                        {"Timeout", "TYPES.Elementary.DINT"},
                        {"CountRepeat", "TYPES.Elementary.DINT"},
                        {"AddressNumber", "TYPES.Elementary.DINT"},
                        {"NetworkNumber", "TYPES.Elementary.DINT"},
                        {"Priority", "TYPES.Elementary.DINT"}};
    auto const& fields = BACnetScript::fields.fields();
    ASSERT_EQ(fields.size(), 16u);
    for (std::size_t index = 0; index < 16; ++index) {
        EXPECT_EQ(fields[index]->name, rows[index].name);
        EXPECT_STREQ(fields[index]->lua_type(), rows[index].type);
        EXPECT_FALSE(fields[index]->retain);
    }
}

TEST_F(Script, SecondStateOfTheProcessHasTheSameFields) {
    std::unique_ptr<lua_State, void (*)(lua_State*)> other(luaL_newstate(), lua_close);
    ASSERT_EQ(luaL_dostring(other.get(),
                            "TYPES = {StandardFB = {}, Elementary = {}} "
                            "function FBMetadata(t) return t end"),
              LUA_OK);
    EXPECT_EQ(BACnetScript::RegFBType(other.get()), 1);
    EXPECT_EQ(BACnetScript::fields.size(), 16u);
}

TEST_F(Script, RefusedMetadataIsLoggedAndGivesMinus1) {
    std::unique_ptr<lua_State, void (*)(lua_State*)> other(luaL_newstate(), lua_close);
    EXPECT_EQ(BACnetScript::RegFBType(other.get()), -1);
    EXPECT_EQ(lua_gettop(other.get()), 0);
    EXPECT_EQ(log.Text(), "[string \"BACnet\"]:1: attempt to index a nil value (global 'TYPES')\n")
        << "the chunk has the name of the type";
}

TEST_F(Script, RefusalWithoutATextIsLoggedAsAnEmptyLine) {
    std::unique_ptr<lua_State, void (*)(lua_State*)> other(luaL_newstate(), lua_close);
    luaL_openlibs(other.get());
    ASSERT_EQ(luaL_dostring(other.get(), "TYPES = {Elementary = {}} function FBMetadata() error({}) end"),
              LUA_OK);
    EXPECT_EQ(BACnetScript::RegFBType(other.get()), -1);
    EXPECT_EQ(log.Text(), "\n");
}

TEST_F(Script, NewMakesABlockWithTheFieldsOfTheTable) {
    EXPECT_EQ(Run("block = BACnet.new{ Address = '10.0.0.1:1', MAC = '5', Timeout = 7, CountRepeat = 8, "
                  "AddressNumber = 9, NetworkNumber = 10, Priority = 11, WriteCondition = 2, "
                  "ExecuteOnSlave = true, FaultItemId = 1 << 40 }"),
              "");
    BACnetProtocol const& block = Block();
    EXPECT_EQ(block.Address, "10.0.0.1:1");
    EXPECT_EQ(block.MAC, "5");
    EXPECT_EQ(block.Timeout, 7);
    EXPECT_EQ(block.CountRepeat, 8);
    EXPECT_EQ(block.AddressNumber, 9);
    EXPECT_EQ(block.NetworkNumber, 10);
    EXPECT_EQ(block.Priority, 11);
    EXPECT_EQ(block.WriteCondition, ProtocolWriteCondition::OnTrigger);
    EXPECT_TRUE(block.ExecuteOnSlave);
    EXPECT_FALSE(block.WriteOnSlave);
    EXPECT_EQ(block.FaultItemId, 1LL << 40);
}

TEST_F(Script, NewUsesTheLastArgumentAsTheTable) {
    EXPECT_EQ(Run("return BACnet.new('ignored', {Timeout = 5}).Timeout"), "5");
}

TEST_F(Script, NewWithoutATableIsAnError) {
    EXPECT_EQ(Run("BACnet.new()"), "error: bad argument #1 to 'new' (table expected, got no value)");
    EXPECT_EQ(Run("BACnet.new({}, 5)"), "error: bad argument #2 to 'new' (table expected, got number)");
}

TEST_F(Script, NewWithoutAStateGivesNothing) {
    EXPECT_EQ(BACnetScript::New(nullptr), 0);
}

TEST_F(Script, EveryFieldIsReadBackAsItIsSet) {
    EXPECT_EQ(Run("block = BACnet.new{}\n"
                  "block.Address = 'a:b'; block.Timeout = -3; block.WriteItemId = -1 << 40\n"
                  "block.WriteOnSlave = 1; block.WriteCondition = 1; block.MAC = 'a\\0b'"),
              "");
    EXPECT_EQ(Block().Timeout, -3);
    EXPECT_EQ(Run("return block.Address"), "a:b");
    EXPECT_EQ(Run("return block.Timeout"), "-3");
    EXPECT_EQ(Run("return block.WriteItemId == -1 << 40"), "true");
    EXPECT_EQ(Run("return block.WriteOnSlave"), "true");
    EXPECT_EQ(Run("return block.WriteCondition"), "1");
    EXPECT_EQ(Run("return #block.MAC"), "3");
    EXPECT_EQ(Run("return block.CountRepeat"), "3");
}

TEST_F(Script, TimeoutFromANumberWithAFractionIs0) {
    EXPECT_EQ(Run("block = BACnet.new{Timeout = 1.5}; return block.Timeout"), "0");
    EXPECT_EQ(Run("block.Timeout = 7; block.Timeout = 2.25; return block.Timeout"), "0");
}

TEST_F(Script, ValuesOfAnotherKindReadAsLuaConvertsThem) {
    EXPECT_EQ(Run("block = BACnet.new{Timeout = 3.0}; return block.Timeout"), "3");
    EXPECT_EQ(Run("block.Timeout = '12'; return block.Timeout"), "12");
    EXPECT_EQ(Run("block.Timeout = (1 << 32) + 5; return block.Timeout"), "5");
    EXPECT_EQ(Run("block.Timeout = {}; return block.Timeout"), "0");
    EXPECT_EQ(Run("block.MAC = 5; return block.MAC"), "5");
    EXPECT_EQ(Run("block.MAC = {}; return block.MAC"), "");
    EXPECT_EQ(Run("block.ExecuteOnSlave = nil; return block.ExecuteOnSlave"), "false");
}

TEST_F(Script, KeyThatIsNotATextReturnsTheTopOfTheStack) {
    EXPECT_EQ(Run("block = BACnet.new{}; return block[true]"), "true");
    EXPECT_EQ(Run("local key = {}; return block[key] == key"), "true");
    EXPECT_EQ(Run("block[true] = 5; return block.Timeout"), "1000");
}

TEST_F(Script, ReadingAnUnknownKeyIsNilAndSettingItIsAnError) {
    EXPECT_EQ(Run("block = BACnet.new{}; return block.Unknown"), "nil");
    EXPECT_EQ(Run("return block[1]"), "nil");
    EXPECT_EQ(Run("return block.Vars"), "nil");
    EXPECT_NE(Run("block.Unknown = 1").find("error: "), std::string::npos);
}

TEST_F(Script, HostServesItsOwnKeys) {
    EXPECT_EQ(Run("block = BACnet.new{}; return block.Fault"), "nil");
    EXPECT_EQ(Run("return block.ErrorText"), "");
}

TEST_F(Script, LibraryFunctionsDoWhatTheMetatableDoes) {
    EXPECT_EQ(Run("block = BACnet.new{}; BACnet.set(block, 'MAC', '7'); return BACnet.get(block, 'MAC')"),
              "7");
    EXPECT_EQ(Run("return BACnet.call(block)"), "false") << "no runtime, so no cycle";
    EXPECT_EQ(Run("return block()"), "false");
}

TEST_F(Script, CallRunsOneCycle) {
    auto const store = std::make_shared<VariableStore>();
    LuaDataProvider const storeProvider(store, nullptr);
    LuaDataProvider provider = storeProvider;
    Run("block = BACnet.new{}");
    Block().SetDataProvider(&provider);
    Block().Inited();
    EXPECT_EQ(Run("return block()"), "true");
    EXPECT_EQ(Run("return block.Fault"), "false");
    EXPECT_EQ(log.Text(), "");
}

TEST_F(Script, CloneIsATableOfTheFields) {
    EXPECT_EQ(Run("block = BACnet.new{Timeout = 6, MAC = '9'}\n"
                  "copy = block.__clone(block)\n"
                  "return type(copy) .. copy.Timeout .. copy.MAC .. tostring(copy.Vars)"),
              "table69nil");
    EXPECT_EQ(Run("return BACnet.new(block:__clone()).Timeout"), "6");
}

TEST_F(Script, WrongFirstArgumentIsAnArgumentError) {
    EXPECT_EQ(Run("BACnet.get(5, 'MAC')"), "error: bad argument #1 to 'get' (BACnet expected, got number)");
    EXPECT_EQ(Run("BACnet.set({}, 'MAC', 1)"),
              "error: bad argument #1 to 'set' (BACnet expected, got table)");
    EXPECT_EQ(Run("BACnet.call()"), "error: bad argument #1 to 'call' (BACnet expected, got no value)");
    EXPECT_EQ(Run("BACnet.new{}.__clone(io.stdout)"),
              "error: bad argument #1 to '__clone' (BACnet expected, got FILE*)");
}

TEST_F(Script, SetWithoutAValueIsAnArgumentError) {
    EXPECT_EQ(Run("BACnet.set(BACnet.new{}, 'MAC')"), "error: bad argument #3 to 'set' (value expected)");
}

TEST_F(Script, CollectedBlockIsDestroyed) {
    Run("block = BACnet.new{Address = '127.0.0.1:1', MAC = '5', NetworkNumber = 5}");
    Block().Inited();
    ASSERT_EQ(network.OpenSockets(), 1);
    Run("block = nil; collectgarbage()");
    EXPECT_EQ(network.OpenSockets(), 0);
}

TEST_F(Script, BlockThatWasNeverInitialisedIsCollected) {
    Run("block = BACnet.new{Vars = {{ReadId = 1, Type = 11, ObjectType = 1}}}");
    EXPECT_EQ(Block().Vars.size(), 1u);
    EXPECT_EQ(Run("block = nil; collectgarbage(); return 1"), "1");
}

TEST_F(Script, ClosingTheStateDestroysItsBlocks) {
    Run("block = BACnet.new{Address = '127.0.0.1:1', MAC = '5', NetworkNumber = 5}");
    Block().Inited();
    state.reset();
    EXPECT_EQ(network.OpenSockets(), 0);
}

TEST_F(Script, BlockIsDestroyedOnlyOnceEvenByAScript) {
    EXPECT_EQ(Run("block = BACnet.new{}; getmetatable(block).__gc(block); return 1"), "1");
    EXPECT_EQ(Run("return BACnet.get(block, 'MAC')"),
              "error: bad argument #1 to 'get' (BACnet expected, got userdata)");
    EXPECT_EQ(Run("block = nil; collectgarbage(); return 1"), "1");
}

TEST_F(Script, FieldThatCannotBeReadIsAnErrorAndLeavesNothing) {
    EXPECT_NE(
        Run("block = BACnet.new{MAC = 'text beyond the room of a short string', Vars = {5}}").find("error: "),
        std::string::npos);
    EXPECT_EQ(Run("collectgarbage(); return block"), "nil");
}

TEST_F(Script, InitedThatThrowsReachesItsCallerAndBecomesALuaErrorInAScript) {
    Run("block = BACnet.new{Address = '127.0.0.1:port'}");
    EXPECT_THROW(Block().Inited(), std::invalid_argument);
    lua_pushcfunction(L, [](lua_State* called) {
        auto* block = static_cast<BACnetProtocol*>(luaL_checkudata(called, 1, "BACnet"));
        return SCADA_API::GuardLuaCall(called, [&] {
            block->InitedInternal(called);
            return 0;
        });
    });
    lua_setglobal(L, "init");
    EXPECT_EQ(Run("init(block)"), "error: stoul");
}

TEST_F(Script, NumberOfTheBlocksTaskIsPassedToItsSocketCalls) {
    dorvel::Runtime runtime(L);
    runtime.AddTask("first", std::chrono::milliseconds(100));
    STTask& second = runtime.AddTask("second", std::chrono::milliseconds(100));
    EXPECT_EQ(Run("block = BACnet.new{MAC = '5', Vars = {{ReadId = 1, Type = 11, ObjectType = 1}}}"), "");
    runtime.Assign(Block(), second);
    runtime.InitBlock(Block());
    log.EnableTrace();
    network.RefuseToSend();
    Block().Execute();
    EXPECT_NE(log.Text().find("task 2: "), std::string::npos) << log.Text();
}

// A type that throws in the operations that a test selects.
class Refusing : public BACnetProtocol {
public:
    static inline bool refusesConstruction = false;
    static inline bool refusesCheck = false;
    static inline int alive = 0;

    Refusing() {
        if (refusesConstruction) {
            throw std::runtime_error("no construction");
        }
        ++alive;
    }
    ~Refusing() override { --alive; }

    static char const* _ShortName() { return "Refusing"; }
    static char const* _FullName() { return "TYPES.StandardFB.Refusing"; }
    static void AddFields(ScadaFields&) {}  // these tests need none

    bool check(lua_State* caller, int index) override {
        if (refusesCheck) {
            throw std::runtime_error("no check");
        }
        return BACnetProtocol::check(caller, index);
    }
};

class RefusingScript : public ScriptFixture {
protected:
    RefusingScript() {
        Refusing::refusesConstruction = false;
        Refusing::refusesCheck = false;
        EXPECT_EQ(SCADA_API::ScadaObj<Refusing>::RegFBType(L), 1);
        lua_settop(L, 0);
    }
};

TEST_F(RefusingScript, ConstructorThatThrowsIsALuaErrorAndNothingIsCollected) {
    Refusing::refusesConstruction = true;
    EXPECT_EQ(Run("Refusing.new{}"), "error: no construction");
    EXPECT_EQ(Run("collectgarbage(); return 1"), "1");
    EXPECT_EQ(Refusing::alive, 0);
}

TEST_F(RefusingScript, OperationThatThrowsIsALuaErrorAndTheBlockLives) {
    Run("block = Refusing.new{}");
    Refusing::refusesCheck = true;
    EXPECT_EQ(Run("return block.MAC"), "error: no check");
    EXPECT_EQ(Run("block.MAC = 5"), "error: no check");
    EXPECT_EQ(Refusing::alive, 1);
    Run("block = nil; collectgarbage()");
    EXPECT_EQ(Refusing::alive, 0);
}

TEST_F(Script, BlockThatAScriptDestroysIsReleasedByItsRuntime) {
    dorvel::Runtime const runtime(L);
    EXPECT_EQ(Run("local weak = setmetatable({BACnet.new{}}, {__mode = 'v'})\n"
                  "getmetatable(weak[1]).__gc(weak[1])\n"
                  "collectgarbage() collectgarbage() return weak[1] == nil"),
              "true");
    EXPECT_TRUE(runtime.Blocks().empty());
}

TEST(LuaGuard, TextOfAnExceptionIsCutAt255Characters) {
    std::unique_ptr<lua_State, void (*)(lua_State*)> state(luaL_newstate(), lua_close);
    lua_pushcfunction(state.get(), [](lua_State* L) {
        return SCADA_API::GuardLuaCall(L, []() -> int { throw std::runtime_error(std::string(1000, 'x')); });
    });
    ASSERT_EQ(lua_pcall(state.get(), 0, 0, 0), LUA_ERRRUN);
    EXPECT_EQ(lua_tostring(state.get(), -1), std::string(255, 'x'));
}

// A Lua that is built as C++ throws its errors like this.
TEST(LuaGuard, ExceptionOfAnotherTypePasses) {
    struct ErrorOfLua {};
    std::unique_ptr<lua_State, void (*)(lua_State*)> state(luaL_newstate(), lua_close);
    auto const body = []() -> int { throw ErrorOfLua(); };
    EXPECT_THROW(SCADA_API::GuardLuaCall(state.get(), body), ErrorOfLua);
}

}  // namespace
