#pragma once

#include <gtest/gtest.h>

#include <lua.hpp>
#include <memory>
#include <string>

#include "BACnet_protocol.h"
#include "LogCapture.h"
#include "ScadaObj.h"
#include "ScriptedNetwork.h"

namespace test {

using BACnetScript = SCADA_API::ScadaObj<dorvel::BACnet::BACnetProtocol>;

// A Lua state in which the block type is registered, with the part of the host's type system that chunks
// need.
class ScriptFixture : public ::testing::Test {
protected:
    ScriptFixture() : state(luaL_newstate(), lua_close), L(state.get()) {
        luaL_openlibs(L);
        EXPECT_EQ(
            Run("TYPES = { StandardFB = {}, Elementary = { DINT = 'DINT', LINT = 'LINT', BOOL = 'BOOL', "
                "STRING = 'STRING' } }\n"
                "function FBMetadata(t) return t end"),
            "");
        EXPECT_EQ(BACnetScript::RegFBType(L), 1);
        lua_settop(L, 0);
    }

    // The first result of a chunk as text, "" for no result, or "error: " and the message without its
    // position.
    std::string Run(std::string const& chunk) {
        lua_settop(L, 0);
        if (luaL_loadbuffer(L, chunk.data(), chunk.size(), "=test") != LUA_OK ||
            lua_pcall(L, 0, LUA_MULTRET, 0) != LUA_OK) {
            std::string const message = lua_tostring(L, -1);
            bool const hasPlace = message.compare(0, 5, "test:") == 0;
            return "error: " + (hasPlace ? message.substr(message.find(": ") + 2) : message);
        }
        std::string text = lua_gettop(L) == 0 ? "" : luaL_tolstring(L, 1, nullptr);
        lua_settop(L, 0);
        return text;
    }

    // The block in a global variable of the script.
    dorvel::BACnet::BACnetProtocol& Block(char const* global = "block") {
        lua_getglobal(L, global);
        auto* block = static_cast<dorvel::BACnet::BACnetProtocol*>(luaL_testudata(L, -1, "BACnet"));
        lua_pop(L, 1);
        EXPECT_NE(block, nullptr);
        return *block;
    }

    ScriptedNetwork network;
    LogCapture log;
    std::unique_ptr<lua_State, void (*)(lua_State*)> state;
    lua_State* L;
};

}  // namespace test
