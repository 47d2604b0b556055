#pragma once

#include <functional>
#include <lua.hpp>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "dorvel/ScadaFields.h"
#include "dorvel/ScadaProtocol.h"

namespace test {

// A driver that counts its objects and calls functions of the test.
class TestBlock : public ScadaProtocol {
public:
    TestBlock() { ++alive; }
    ~TestBlock() override { --alive; }

    void Inited() override {
        ++initedCalls;
        if (onInited) {
            onInited();
        }
    }
    void AddChannel(ReadChannel const* read, WriteChannel const* write,
                    std::map<std::string, OpcUa_VariantHlp> const& properties) override {
        DriverVarDsc descriptor;
        BaseInitChannel(read, write, descriptor);
        descriptors.push_back(std::move(descriptor));
        channelProperties.push_back(properties);
    }
    int CalcRecconectInterval() override { return reconnectInterval; }
    void Execute() override {
        ++executeCalls;
        if (onExecute) {
            onExecute();
        }
    }

    using ScadaProtocol::IsNeedWriteValue;
    using ScadaProtocol::isWrite;
    using ScadaProtocol::UpdateFaultState;

    static inline int alive = 0;
    // Called with every block that a script makes.
    static inline std::function<void(TestBlock&)> onMade;

    std::string name;
    int initedCalls = 0;
    int executeCalls = 0;
    int reconnectInterval = 0;
    std::function<void()> onInited;
    std::function<void()> onExecute;
    std::vector<DriverVarDsc> descriptors;
    std::vector<std::map<std::string, OpcUa_VariantHlp>> channelProperties;
};

// The binding of TestBlock to scripts, with the fields Name and Vars.
class TestBinding {
public:
    static int Open(lua_State* L) {
        luaL_newmetatable(L, "TestBlock");
        luaL_Reg const methods[] = {
            {"__index", Get}, {"__newindex", Set}, {"__call", Call}, {"__gc", Collect}, {nullptr, nullptr}};
        luaL_setfuncs(L, methods, 0);
        lua_pop(L, 1);
        lua_register(L, "TestBlock", New);
        return 1;
    }

private:
    struct NameField : ScadaFields::IField {
        NameField() : IField("Name", false, 0) {}
        void set(void const* object, lua_State* L) const override {
            lua_pushstring(L, static_cast<TestBlock const*>(object)->name.c_str());
        }
        void get(void* object, lua_State* L) const override {
            char const* const text = lua_tostring(L, -1);
            static_cast<TestBlock*>(object)->name = text ? text : "";
        }
        char const* lua_type() const override { return "TYPES.Elementary.STRING"; }
    };

    struct VarsField : ScadaFields::IField {
        VarsField() : IField("Vars", false, 0) {}
        void set(void const*, lua_State*) const override {}
        void get(void* object, lua_State* L) const override {
            get_lua_value(static_cast<TestBlock*>(object)->Vars, L);
        }
        char const* lua_type() const override { return nullptr; }
    };

    static ScadaFields const& Fields() {
        static ScadaFields fields;
        static bool const filled = (fields.add(new NameField), fields.add(new VarsField), true);
        static_cast<void>(filled);
        return fields;
    }

    static TestBlock* Object(lua_State* L) {
        return static_cast<TestBlock*>(luaL_checkudata(L, 1, "TestBlock"));
    }

    static int New(lua_State* L) {
        luaL_checktype(L, 1, LUA_TTABLE);
        auto* const block = new (lua_newuserdatauv(L, sizeof(TestBlock), 1)) TestBlock;
        luaL_setmetatable(L, "TestBlock");
        lua_pushvalue(L, 1);
        Fields().ReadAllFrom(block, L);
        lua_pop(L, 1);
        if (TestBlock::onMade) {
            TestBlock::onMade(*block);
        }
        block->Init(L);
        return 1;
    }
    static int Get(lua_State* L) {
        TestBlock* const block = Object(L);
        return block->check(L, -1) ? 1 : Fields().WriteTo(block, L);
    }
    static int Set(lua_State* L) {
        TestBlock* const block = Object(L);
        return block->check(L, -2) ? 1 : Fields().ReadFrom(block, L);
    }
    static int Call(lua_State* L) { return Object(L)->call(L); }
    static int Collect(lua_State* L) {
        Object(L)->~TestBlock();
        return 0;
    }
};

}  // namespace test
