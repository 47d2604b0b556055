#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <lua.hpp>
#include <memory>
#include <string>
#include <vector>

#include "Addin.h"
#include "BACnet_protocol.h"
#include "dorvel/Runtime.h"
#include "dorvel/ScadaProtocol.h"
#include "dorvelshare/VariableStore.h"

namespace test {

// A Lua state with the runtime and the add-in, and tasks without a pause between their cycles.
class Plant {
public:
    explicit Plant(int taskCount) : state(luaL_newstate(), lua_close), tasks(taskCount) {
        luaL_openlibs(state.get());
        runtime = std::make_unique<dorvel::Runtime>(state.get());
        static int const loaded =
            dorvel::BACnet::Init();  // later callers wait for the first one, as in a host
        EXPECT_EQ(loaded, 0);
        runtime->OpenLibraries();
        for (int task = 0; task < tasks; ++task) {
            runtime->AddTask(TaskName(task), std::chrono::milliseconds(0));
        }
    }
    ~Plant() { runtime.reset(); }
    Plant(Plant const&) = delete;
    Plant& operator=(Plant const&) = delete;

    dorvel::Runtime& Runtime() { return *runtime; }
    VariableStore& Variables() { return runtime->Variables(); }

    // Adds a block on the next task in turn, with one variable on an analog input, which is also written; the
    // two ids are consecutive. fields is Lua text, each as "Name = value,".
    long long Add(std::string const& fields = "") {
        long long const id = Variables().Declare("Value", OpcUaType_Double);
        long long const writeId = Variables().Declare("Wanted", OpcUaType_Double);
        std::string const chunk = "return BACnet.new{ MAC = '192.168.10.7:47808', " + fields +
                                  " Vars = {{ ReadId = " + std::to_string(id) +
                                  ", WriteId = " + std::to_string(writeId) +
                                  ", Type = 11, ObjectType = 1, ObjectNumber = 1 }} }";
        lua_State* const L = state.get();
        EXPECT_EQ(luaL_dostring(L, chunk.c_str()), LUA_OK) << lua_tostring(L, -1);
        auto& block = *static_cast<dorvel::BACnet::BACnetProtocol*>(
            luaL_checkudata(L, -1, dorvel::BACnet::BACnetProtocol::_ShortName()));
        lua_settop(L, 0);
        runtime->Assign(block, *runtime->FindTask(TaskName(static_cast<int>(ids.size()) % tasks)));
        runtime->InitBlock(block);
        ids.push_back(id);
        return id;
    }

    std::vector<long long> const& Ids() const { return ids; }
    double NumberOf(long long id) const {
        VariableState variable;
        double number = -1;
        runtime->Variables().Read(id, "", variable);
        variable.Value.GetDouble(number);
        return number;
    }
    int Faults() const {
        int count = 0;
        for (ScadaProtocol const* block : runtime->Blocks()) {
            count += block->State().Fault ? 1 : 0;
        }
        return count;
    }

private:
    static std::string TaskName(int task) { return "Task" + std::to_string(task); }

    std::unique_ptr<lua_State, void (*)(lua_State*)> state;
    std::unique_ptr<dorvel::Runtime> runtime;
    int tasks;
    std::vector<long long> ids;
};

}  // namespace test
