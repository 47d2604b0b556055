// Lua and C++ may each run out of memory at any point of a script. The result is a Lua error or an exception
// to the caller, without a leak, without a half-made object, and without a C++ exception through a call of
// Lua.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>

#include "BACnet_protocol.h"
#include "FailingLua.h"
#include "Heap.h"
#include "LoadedProject.h"
#include "LuaSandbox.h"
#include "Mistake.h"
#include "ProjectCheck.h"
#include "ScadaObj.h"
#include "dorvel/Runtime.h"
#include "dorvelshare/Trace.h"

using test::FailingLua;

namespace {

using dorvel::BACnet::BACnetProtocol;

// An error of a Lua built as C++ is an exception, while an error of a Lua built as C jumps over the handler.
int RaiseError(lua_State* L) {
    try {
        return luaL_error(L, "an error");
    } catch (...) {
        *static_cast<bool*>(lua_touserdata(L, 1)) = true;
        throw;
    }
}

// The programs that use Lua run twice, the second time linked with the Lua that is built as C++.
TEST(LuaLibrary, IsTheOneOfThisTest) {
    FailingLua lua(0);
    bool isException = false;
    lua_pushcfunction(lua.Get(), RaiseError);
    lua_pushlightuserdata(lua.Get(), &isException);
    EXPECT_EQ(lua_pcall(lua.Get(), 1, 0, 0), LUA_ERRRUN);
    char const* const wanted = std::getenv("DORVEL_TEST_LUA");
    EXPECT_EQ(isException, wanted && std::string(wanted) == "c++");
}

void const* FileOf(void const* address) {
    Dl_info info = {};
    return dladdr(address, &info) ? info.dli_fbase : nullptr;
}

// The libraries and the add-in find the same Lua functions as dlsym.
TEST(LuaLibrary, IsTheSameForTheProgramAndItsLibraries) {
    for (char const* const name :
         {"lua_error", "lua_pcallk", "luaL_error", "luaL_checkudata", "luaopen_base"}) {
        EXPECT_EQ(FileOf(dlsym(RTLD_DEFAULT, name)), FileOf(reinterpret_cast<void const*>(&lua_newstate)))
            << name;
    }
}

struct Reach {
    bool stateMade = false;
    bool librariesOpen = false;
    int chunksRun = 0;
};

// All operations of a script on a block. Each chunk runs separately, so that an error ends only that one.
constexpr char const* Chunks[] = {
    "block = BACnet.new{ Address = '192.168.100.200:47808', MAC = 'a text that no small string can hold, of "
    "a device',"
    " Timeout = 250, Vars = {"
    " { ReadId = 1, WriteId = 2, Type = 10, ObjectType = 0, ObjectNumber = 7, ObjectProperties = 21, Name = "
    "'one' },"
    " { ReadId = 3, ReadField = 'a field whose name is longer than a small string', Type = 23, ElementType = "
    "10 } } }",
    "block.MAC = 'another text that no small string can hold, of another device'",
    "block.Timeout = 12.0; block.Address = 4711",
    "text = block.MAC .. block.Address .. block.Timeout",
    "copy = block.__clone(block); same = BACnet.new(copy)",
    "text = BACnet.get(block, 'Address'); BACnet.set(block, 'Address', 'a third text that is longer than "
    "small ones')",
    "count = #block; fault = block.Fault; text = block.ErrorText; ran = block()",
    "block.Fault = true",
    "block.Nothing = 1",
    "block.Vars = { { ReadId = 1, Type = 10, Name = 'a text that no small string can hold' }, { Type = "
    "'none' } }",
    "BACnet.new{ MAC = 'a text that no small string can hold', Vars = { { Type = 10, [1] = 2 } } }",
    "BACnet.new(5)",
    "BACnet.get(5)",
};

// The status of a chunk must be one of Lua's: a C++ exception that reaches Lua gives another one.
void RunChunks(lua_State* L, Reach& reach) {
    for (char const* const chunk : Chunks) {
        int status = luaL_loadstring(L, chunk);
        if (status == LUA_OK) {
            status = lua_pcall(L, 0, 0, 0);
        }
        EXPECT_TRUE(status == LUA_OK || status == LUA_ERRRUN || status == LUA_ERRMEM ||
                    status == LUA_ERRSYNTAX)
            << status;
        reach.chunksRun += status == LUA_OK;
        lua_settop(L, 0);
    }
}

void RunScript(lua_State* L, Reach& reach) {
    if (!L) {
        return;
    }
    reach.stateMade = true;
    try {
        dorvel::Runtime runtime(L);
        runtime.AddTask("task", std::chrono::milliseconds(100));
        runtime.OpenLibraries();
        reach.librariesOpen = true;
        RunChunks(L, reach);
    } catch (std::exception const&) {
    }
    EXPECT_EQ(lua_gettop(L), 0);
}

class LuaMemory : public ::testing::Test {
protected:
    static void SetUpTestSuite() { BACnetProtocol::RegAsLuaType(); }

    // After a run without failures, static objects and caches have allocated their memory.
    LuaMemory() {
        dorvel::SetLogSink([](std::string_view) {});
        for (int i = 0; i < 2; ++i) {
            whole = Reach();
            FailingLua lua(0);
            RunScript(lua.Get(), whole);
            lua.Close();
        }
    }

    ~LuaMemory() override { dorvel::SetLogSink(nullptr); }

    // Lets every request of Lua fail in turn and returns their number.
    long long FailEveryRequest(FailingLua::Mode mode) {
        for (long long request = 1;; ++request) {
            long long const before = test::HeapBlocks();
            bool refused = false;
            {
                Reach reach;
                FailingLua lua(request, mode);
                RunScript(lua.Get(), reach);
                EXPECT_EQ(lua.Close(), 0) << request;
                refused = lua.HasRefused();
            }
            EXPECT_EQ(test::HeapBlocks(), before) << request;
            if (!refused || HasFailure()) {
                return request - 1;
            }
        }
    }

    Reach whole;
};

TEST_F(LuaMemory, ScriptsEndAsExpectedWithEnoughMemory) {
    EXPECT_TRUE(whole.librariesOpen);
    EXPECT_EQ(whole.chunksRun, 7);
}

TEST_F(LuaMemory, NothingLeaksAtWhicheverRequestLuaRunsOutOfMemory) {
    EXPECT_GT(FailEveryRequest(FailingLua::Mode::Once), 200);
}

TEST_F(LuaMemory, NothingLeaksFromWhicheverRequestOnLuaHasNoMemory) {
    EXPECT_GT(FailEveryRequest(FailingLua::Mode::ForEver), 200);
}

TEST_F(LuaMemory, NothingLeaksAndNoExceptionReachesLuaWhicheverAllocationOfCppFails) {
    for (long long allocation = 1;; ++allocation) {
        long long const before = test::HeapBlocks();
        FailingLua lua(0);
        Reach reach;
        test::FailAllocation(allocation);
        RunScript(lua.Get(), reach);
        bool const isLast = !test::HasFailedAllocation();
        test::FailAllocation(0);
        ASSERT_EQ(lua.Close(), 0) << allocation;
        ASSERT_EQ(test::HeapBlocks(), before) << allocation;
        if (isLast) {
            EXPECT_GT(allocation, 40);
            break;
        }
    }
}

TEST_F(LuaMemory, ABlockThatTheRuntimeCannotEnterIsCollected) {
    FailingLua lua(0);
    dorvel::Runtime runtime(lua.Get());
    runtime.OpenLibraries();
    ASSERT_EQ(luaL_loadstring(lua.Get(), "block = BACnet.new{}"), LUA_OK);
    lua_gc(lua.Get(), LUA_GCSTOP);
    long long const before = test::HeapBlocks();
    int status = LUA_OK;
    for (long long allocation = 1; allocation < 100; ++allocation) {
        lua_pushvalue(lua.Get(), -1);
        test::FailAllocation(allocation);
        status = lua_pcall(lua.Get(), 0, 0, 0);
        bool const hasFailed = test::HasFailedAllocation();
        test::FailAllocation(0);
        if (!hasFailed) {
            break;
        }
        ASSERT_EQ(status, LUA_ERRRUN);
        EXPECT_NE(std::strstr(lua_tostring(lua.Get(), -1), "std::bad_alloc"), nullptr);
        lua_pop(lua.Get(), 1);
        lua_gc(lua.Get(), LUA_GCCOLLECT);
        EXPECT_TRUE(runtime.Blocks().empty());
        EXPECT_LE(test::HeapBlocks(), before + 1) << allocation;  // one: the capacity for entries
    }
    ASSERT_EQ(status, LUA_OK);
    EXPECT_EQ(runtime.Blocks().size(), 1u);
}

constexpr char const* Project =
    "Task{ Name = 'fast', Period = 20 }\n"
    "BACnet.new{ Name = 'a block with a longer name', Address = '127.0.0.1:47808', MAC = '127.0.0.1:47808', "
    "Vars = {\n"
    "  { Name = 'value', Type = 'Float', ObjectType = 'analog-value', ObjectNumber = 1, Write = true,\n"
    "    ObjectProperties = 'present-value' } } }\n"
    "Set('a block with a longer name.value', 21.5)\n"
    "After(1, function() Set('a block with a longer name.value', Param.none or 22) end)\n"
    "pcall(Set, {}, 21.5)\n"
    "pcall(After, 1)\n"
    "pcall(BACnet.new, { Name = 'another block', Vars = { { Name = 'value', Type = 'none at all' } } })\n";

// True when the project was loaded.
bool LoadProject(tools::LuaLimits const& limits, std::string const& text = Project) {
    try {
        workbench::LoadedProject project("project.lua", {}, limits);
        project.Load(workbench::SourceText(text));
        return true;
    } catch (std::exception const&) {
        return false;
    }
}

TEST_F(LuaMemory, AProjectIsLoadedOrRefusedAtEveryLimit) {
    ASSERT_TRUE(LoadProject({}));
    bool loaded = false;
    for (std::size_t limit = 0; !loaded; limit += 97) {
        ASSERT_LT(limit, std::size_t{1} << 20);
        tools::LuaLimits limits;
        limits.memory = limit;
        long long const before = test::HeapBlocks();
        loaded = LoadProject(limits);
        ASSERT_EQ(test::HeapBlocks(), before) << limit;
    }
}

// Only the script: a block that cannot be initialised keeps the records of its variables.
TEST_F(LuaMemory, AProjectsScriptLeaksNothingWhicheverAllocationOfCppFails) {
    std::string const text = std::string(Project) + "error('the end')";
    LoadProject({}, text);  // allocates what is kept
    for (long long allocation = 1;; ++allocation) {
        long long const before = test::HeapBlocks();
        test::FailAllocation(allocation);
        LoadProject({}, text);
        bool const isLast = !test::HasFailedAllocation();
        test::FailAllocation(0);
        ASSERT_EQ(test::HeapBlocks(), before) << allocation;
        if (isLast) {
            EXPECT_GT(allocation, 80);
            break;
        }
    }
}

// A project with mistakes and other findings.
std::string const Checked =
    std::string(Project) +
    "BACnet.new{ Name = 'third', Address = 5, Timeout = 5, Vars = { { Name = 'x', Type = 'Float', "
    "ObjectType = 1, ObjectNumber = 1, ObjectProperties = 'bias', Write = true }, {} } }";

// The number of findings, 0 if memory did not suffice.
std::size_t CountFindings(tools::LuaLimits const& limits) {
    try {
        return workbench::CheckProjectText("project.lua", Checked, {}, limits).findings.size();
    } catch (std::exception const&) {
        return 0;
    }
}

TEST_F(LuaMemory, AProjectIsCheckedAtEveryLimit) {
    std::size_t const all = CountFindings({});
    ASSERT_GT(all, 5u);
    std::size_t found = 0;
    for (std::size_t limit = 0; found < all; limit += 97) {
        ASSERT_LT(limit, std::size_t{1} << 20);
        tools::LuaLimits limits;
        limits.memory = limit;
        long long const before = test::HeapBlocks();
        found = CountFindings(limits);
        ASSERT_EQ(test::HeapBlocks(), before) << limit;
    }
}

TEST_F(LuaMemory, ACheckLeaksNothingWhicheverAllocationOfCppFails) {
    CountFindings({});  // allocates what is kept
    for (long long allocation = 1;; ++allocation) {
        long long const before = test::HeapBlocks();
        test::FailAllocation(allocation);
        CountFindings({});
        bool const isLast = !test::HasFailedAllocation();
        test::FailAllocation(0);
        ASSERT_EQ(test::HeapBlocks(), before) << allocation;
        if (isLast) {
            EXPECT_GT(allocation, 200);
            break;
        }
    }
}

// The number of devices in a file whose last one needs much memory, -1 if the sandbox refuses the file.
int CountDevices(std::size_t mostMemory) {
    try {
        simulator::LuaSandbox sandbox({"device", "object"}, mostMemory);
        return static_cast<int>(sandbox
                                    .Run("local texts = {}\n"
                                         "for i = 1, 100 do table.insert(texts, string.format('%d is the "
                                         "number of this text', i)) end\n"
                                         "device{ name = 'one', object{ 1 } } device{ texts = texts }")
                                    .size());
    } catch (simulator::Mistake const&) {
        return -1;
    }
}

TEST(LuaSandboxMemory, ADeviceFileIsReadOrRefusedAtEveryLimit) {
    ASSERT_EQ(CountDevices(std::size_t{1} << 20), 2);
    int devices = -1;
    for (std::size_t limit = 0; devices < 0; limit += 61) {
        ASSERT_LT(limit, std::size_t{1} << 20);
        long long const before = test::HeapBlocks();
        devices = CountDevices(limit);
        ASSERT_EQ(test::HeapBlocks(), before) << limit;
    }
    EXPECT_EQ(devices, 2);
}

}  // namespace
