// The script binding of the block, called by the input as a script could call it: creating, setting, getting,
// cloning and collecting blocks, with any values, with and without a runtime, and with failures of any of
// Lua's allocations.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

#include "Addin.h"
#include "BlockModel.h"
#include "CountingAllocator.h"
#include "Input.h"
#include "Require.h"
#include "dorvel/Runtime.h"
#include "dorvelshare/Trace.h"

using dorvel::BACnet::BACnetProtocol;
using fuzz::BlockModel;
using fuzz::Input;
using fuzz::Require;

namespace {

constexpr unsigned SlotCount = 4;
constexpr int MostOperations = 64;
constexpr int MostDepth = 3;

int Index(lua_State* L) {
    lua_gettable(L, 1);
    return 1;
}

int NewIndex(lua_State* L) {
    lua_settable(L, 1);
    return 0;
}

int LengthOf(lua_State* L) {
    lua_len(L, 1);
    return 1;
}

// The Lua state of all executions. A collection removes everything that they leave in it.
class State {
public:
    State() : L(lua_newstate(fuzz::CountingAllocator::Allocate, &memory)) {
        Require(L != nullptr, "Lua gets a state");
        dorvel::BACnet::Init();
        dorvel::Runtime(L).OpenLibraries();
        lua_gc(L, LUA_GCSTOP);
        start = Collect();
    }

    // The octets that the libraries alone use.
    std::size_t Collect() {
        memory.FailNever();
        lua_settop(L, 0);
        lua_gc(L, LUA_GCCOLLECT);
        lua_gc(L, LUA_GCCOLLECT);
        return memory.Used();
    }

    void RequireNothingLeft() {
        constexpr std::size_t slack = 64 << 10;  // of the state's own tables, which grow by doubling
        Require(Collect() <= start + slack, "nothing is left in the Lua state");
    }

    fuzz::CountingAllocator memory;
    lua_State* const L;

private:
    std::size_t start = 0;
};

State& TheState() {
    static auto& state = *new State;
    return state;
}

// One script. Its blocks are at 1 to SlotCount on the stack.
class Script {
public:
    explicit Script(Input& played) : input(played), L(TheState().L) {
        if (input.Octet() % 2 != 0) {
            runtime = std::make_unique<dorvel::Runtime>(L);
        }
        lua_settop(L, SlotCount);
    }

    void Play() {
        for (int i = 0; i < MostOperations && !input.IsEmpty(); ++i) {
            Operate(input.Octet());
            Require(lua_gettop(L) == SlotCount, "the stack is balanced");
        }
        lua_settop(L, 0);
        runtime.reset();
    }

private:
    struct Slot {
        enum { Empty, Alive, Dead } state = Empty;
        BlockModel model;
    };

    // Bits 0 to 2: the operation; 4 and 5: the block; 6: an octet follows, after so many allocations they
    // fail.
    void Operate(unsigned operation) {
        slot = operation >> 4 & (SlotCount - 1);
        memoryEnds = (operation & 0x40) != 0;
        allocations = memoryEnds ? static_cast<int>(input.Below(64)) : 0;
        switch (operation & 7) {
            case 0:
                New();
                break;
            case 1:
            case 2:
                Set();
                break;
            case 3:
                Get();
                break;
            case 4:
                Clone();
                break;
            case 5:
                Ask();
                break;
            case 6:
                Destroy();
                break;
            default:
                CallLibrary();
        }
        lua_settop(L, SlotCount);
    }

    Slot& TheSlot() { return slots[slot]; }
    int Block() const { return static_cast<int>(slot) + 1; }

    // Calls the function below its arguments. Leaves the result or the error on top of the stack and returns
    // whether the call succeeded.
    bool Call(int arguments) {
        int const expected = lua_gettop(L) - arguments;
        if (memoryEnds) {
            TheState().memory.FailAfter(allocations);
        }
        int const status = lua_pcall(L, arguments, 1, 0);
        TheState().memory.FailNever();
        Require(lua_gettop(L) == expected, "a call leaves one value");
        Require(status == LUA_OK || status == LUA_ERRRUN || (memoryEnds && status == LUA_ERRMEM),
                "a call succeeds or ends in a Lua error");
        Require(status == LUA_OK || lua_type(L, -1) == LUA_TSTRING, "an error is a text");
        outOfMemory = status == LUA_ERRMEM;
        return status == LUA_OK;
    }

    void PushLibrary(char const* name) {
        lua_getglobal(L, "BACnet");
        lua_getfield(L, -1, name);
        lua_remove(L, -2);
    }

    void New() {
        PushLibrary("new");
        PushFields();
        BlockModel model;
        for (std::size_t field = 0; field < BlockModel::Fields.size(); ++field) {
            lua_getfield(L, -1, BlockModel::Fields[field].name);
            if (!lua_isnil(L, -1)) {
                model.Set(static_cast<int>(field), L, lua_gettop(L));
            }
            lua_pop(L, 1);
        }
        if (!Call(1)) {
            return;
        }
        auto const* const block = static_cast<BACnetProtocol*>(luaL_testudata(L, -1, "BACnet"));
        Require(block != nullptr, "new creates a block");
        model.RequireVariables(*block);
        lua_replace(L, Block());
        TheSlot() = {Slot::Alive, model};
    }

    void PushFields() {
        lua_newtable(L);
        for (unsigned count = input.Below(8); count > 0; --count) {
            PushKey();
            PushValue(MostDepth);
            bool const hasKey = !lua_isnil(L, -2);
            hasKey ? lua_rawset(L, -3) : lua_pop(L, 2);
        }
    }

    void Set() {
        lua_pushcfunction(L, NewIndex);
        lua_pushvalue(L, Block());
        PushKey();
        PushValue(MostDepth);
        bool const isText = lua_isstring(L, -2) != 0;
        int const field = FieldOnStack(-2);
        BlockModel after = TheSlot().model;
        if (field >= 0) {
            after.Set(field, L, lua_gettop(L));
        }
        bool const good = Call(3);
        Require(!good || TheSlot().state == Slot::Alive, "only a block can be set");
        if (TheSlot().state != Slot::Alive) {
            return;
        }
        bool const isList =
            field >= 0 && BlockModel::Fields[static_cast<std::size_t>(field)].kind == BlockModel::List;
        Require(good || memoryEnds || isList || (isText && field < 0), "every field can be set");
        Require(!good || !isText || field >= 0, "a key that is not a field cannot be set");
        if (field >= 0) {
            good || isList ? void(TheSlot().model = good ? after : TheSlot().model)
                           : TheSlot().model.Forget(field);
        }
        RequireVariables();
    }

    void RequireVariables() {
        auto const* const block = static_cast<BACnetProtocol*>(luaL_testudata(L, Block(), "BACnet"));
        Require(block != nullptr, "a block stays a block");
        TheSlot().model.RequireVariables(*block);
    }

    void Get() {
        lua_pushcfunction(L, Index);
        lua_pushvalue(L, Block());
        PushKey();
        lua_pushvalue(L, -1);
        lua_insert(L, SlotCount + 1);
        bool const good = Call(2);
        Require(!good || TheSlot().state == Slot::Alive, "only a block can be read");
        Require(good || memoryEnds || TheSlot().state != Slot::Alive, "every key can be read");
        if (good) {
            RequireGot(SlotCount + 1);
        }
    }

    // The host's own keys end at their first zero octet.
    static bool IsErrorText(std::string const& key) { return std::strcmp(key.c_str(), "ErrorText") == 0; }

    // Requires that the value on top of the stack is what the key gives.
    void RequireGot(int key) {
        int const field = FieldOnStack(key);
        if (!lua_isstring(L, key)) {
            Require(lua_rawequal(L, key, -1) != 0, "a key without a text gives itself");
        } else if (field >= 0) {
            TheSlot().model.RequireGot(field, L);
        } else if (KeyText(key) == "__clone") {
            Require(lua_iscfunction(L, -1) != 0, "__clone is a function");
        } else if (IsErrorText(KeyText(key))) {
            Require(lua_type(L, -1) == LUA_TSTRING && lua_rawlen(L, -1) == 0, "there is no error");
        } else {
            Require(lua_isnil(L, -1), "an unknown key gives nil");
        }
    }

    void Clone() {
        if (TheSlot().state != Slot::Alive) {
            return;
        }
        lua_getfield(L, Block(), "__clone");
        lua_pushvalue(L, Block());
        if (!Call(1)) {
            Require(memoryEnds, "a block can be cloned");
            return;
        }
        Require(lua_istable(L, -1), "a clone is a table");
        for (std::size_t field = 0; field < BlockModel::Fields.size(); ++field) {
            lua_getfield(L, -1, BlockModel::Fields[field].name);
            TheSlot().model.RequireGot(static_cast<int>(field), L);
            lua_pop(L, 1);
        }
    }

    // The length operator and the call operator.
    void Ask() {
        if (TheSlot().state != Slot::Alive) {
            return;
        }
        lua_pushcfunction(L, LengthOf);
        lua_pushvalue(L, Block());
        Require(Call(1) ? lua_tointeger(L, -1) == 16 : memoryEnds, "a block has 16 fields");
        lua_pushvalue(L, Block());
        Require(Call(0) ? lua_isboolean(L, -1) && lua_toboolean(L, -1) == 0 : memoryEnds,
                "a block that was not initialised does not run");
    }

    // A script can do this through the metatable.
    void Destroy() {
        luaL_getmetatable(L, "BACnet");
        lua_getfield(L, -1, "__gc");
        lua_pushvalue(L, Block());
        bool const good = Call(1);
        Require(good == (TheSlot().state == Slot::Alive) || memoryEnds, "a block is destroyed once");
        if (good) {
            TheSlot().state = Slot::Dead;
        }
    }

    void CallLibrary() {
        static constexpr char const* names[] = {"new", "get", "set", "call"};
        PushLibrary(names[input.Below(4)]);
        unsigned const count = input.Below(5);
        for (unsigned i = 0; i < count; ++i) {
            PushValue(1);
        }
        Call(static_cast<int>(count));
        for (Slot& changed : slots) {
            for (std::size_t field = 0; field < BlockModel::Fields.size(); ++field) {
                changed.model.Forget(static_cast<int>(field));
            }
        }
    }

    std::string KeyText(int index) {
        std::size_t length = 0;
        lua_pushvalue(L, index);
        char const* const text = lua_tolstring(L, -1, &length);
        std::string const key = text ? std::string(text, length) : std::string();
        lua_pop(L, 1);
        return key;
    }

    int FieldOnStack(int index) { return lua_isstring(L, index) ? BlockModel::Find(KeyText(index)) : -1; }

    void PushKey() {
        static constexpr char const* others[] = {"Fault", "ErrorText", "__clone", "__gc", "Timeou", ""};
        unsigned const choice = input.Octet();
        if (choice < 0xC0) {
            lua_pushstring(L, BlockModel::Fields[choice % BlockModel::Fields.size()].name);
        } else if (choice < 0xE0) {
            lua_pushstring(L, others[choice % std::size(others)]);
        } else {
            PushValue(0);
        }
        if (lua_isnumber(L, -1) && lua_tonumber(L, -1) != lua_tonumber(L, -1)) {
            lua_pop(L, 1);  // NaN cannot be a key of a table
            lua_pushnil(L);
        }
    }

    void PushValue(int depth) {
        unsigned const choice = input.Octet();
        switch (choice & 0x0F) {
            case 0:
                lua_pushnil(L);
                break;
            case 1:
                lua_pushboolean(L, choice >> 4 & 1);
                break;
            case 2:
                lua_pushinteger(L, static_cast<lua_Integer>(input.Number64()));
                break;
            case 3:
                lua_pushinteger(L, static_cast<lua_Integer>(input.Octet()));
                break;
            case 4:
                PushAnyNumber();
                break;
            case 5:
                lua_pushnumber(L, static_cast<lua_Number>(input.Octet()) / (1 + (choice >> 4)));
                break;
            case 6:
                PushText(input.Text(choice >> 4));
                break;
            case 7:
                PushText(input.Text(input.Octet()));
                break;
            case 8:
                PushText(std::to_string(static_cast<long long>(input.Number64())));
                break;
            case 9:
                lua_pushlightuserdata(L, this);
                break;
            case 10:
                lua_pushcfunction(L, Index);
                break;
            case 11:
                lua_pushvalue(L, 1 + static_cast<int>(choice >> 4 & (SlotCount - 1)));
                break;
            default:
                depth > 0 ? PushTable(depth, choice >> 4) : lua_pushinteger(L, choice >> 4);
        }
    }

    void PushAnyNumber() {
        std::uint64_t const bits = input.Number64();
        lua_Number number = 0;
        static_assert(sizeof number == sizeof bits);
        std::memcpy(&number, &bits, sizeof number);
        lua_pushnumber(L, number);
    }

    void PushText(std::string const& text) { lua_pushlstring(L, text.data(), text.size()); }

    // A list of proper variables or of any values, or a table with any keys.
    void PushTable(int depth, unsigned form) {
        Require(lua_checkstack(L, 8) != 0, "Lua has a stack");
        lua_newtable(L);
        for (unsigned i = 1; i <= form / 2 && !input.IsEmpty(); ++i) {
            unsigned const kind = input.Octet();
            kind % 4 == 0 ? PushValue(depth - 1) : PushVariable(kind >> 2);
            if (form % 2 == 0) {
                lua_rawseti(L, -2, i);
                continue;
            }
            PushKey();
            lua_insert(L, -2);
            lua_isnil(L, -2) ? lua_pop(L, 2) : lua_rawset(L, -3);
        }
    }

    void PushVariable(unsigned form) {
        static constexpr char const* names[] = {"ReadId",     "Type",      "ElementType", "WriteId",
                                                "ObjectType", "ReadField", "WriteField",  "ObjectNumber"};
        lua_newtable(L);
        lua_pushinteger(L, form % 32);
        lua_setfield(L, -2, "Type");
        for (unsigned count = input.Below(4); count > 0; --count) {
            PushValue(0);
            lua_setfield(L, -2, names[input.Below(8)]);
        }
    }

    Input& input;
    lua_State* const L;
    std::unique_ptr<dorvel::Runtime> runtime;
    Slot slots[SlotCount];
    unsigned slot = 0;
    bool memoryEnds = false;
    bool outOfMemory = false;
    int allocations = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    dorvel::SetLogSink([](std::string_view) {});
    Input input(data, size);
    Script(input).Play();
    TheState().RequireNothingLeft();
    return 0;
}
