// The add-in as the runtime loads it: a library with one symbol, by its path.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <chrono>
#include <lua.hpp>
#include <memory>

#include "LogCapture.h"
#include "dorvel/Runtime.h"
#include "dorvel/ScadaProtocol.h"

namespace {

TEST(Module, IsLoadedAndServesABlockOfAScript) {
    test::LogCapture log;
    void* library = dlopen(ADDIN_PATH, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    auto const initAddin = reinterpret_cast<int (*)()>(dlsym(library, "InitAddin"));
    ASSERT_NE(initAddin, nullptr);
    EXPECT_EQ(dlsym(library, "_ZN6dorvel6BACnet4InitEv"), nullptr);
    ASSERT_EQ(initAddin(), 0);

    std::unique_ptr<lua_State, void (*)(lua_State*)> state(luaL_newstate(), lua_close);
    luaL_openlibs(state.get());
    {
        dorvel::Runtime runtime(state.get());
        runtime.AddTask("task", std::chrono::milliseconds(100));
        runtime.OpenLibraries();
        ASSERT_EQ(luaL_dostring(state.get(),
                                "block = BACnet.new{MAC = '5', CountRepeat = 2}\n"
                                "return block.CountRepeat, TYPES.StandardFB.BACnet.Name"),
                  LUA_OK)
            << lua_tostring(state.get(), -1);
        EXPECT_EQ(lua_tointeger(state.get(), -2), 2);
        EXPECT_STREQ(lua_tostring(state.get(), -1), "BACnet");
        ASSERT_EQ(runtime.Blocks().size(), 1u);
        runtime.InitBlock(*runtime.Blocks()[0]);
    }
    EXPECT_EQ(log.Text(), "");
}

}  // namespace
