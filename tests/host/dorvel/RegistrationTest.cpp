// Registrations of add-ins, and their use by the runtime. They last as long as the process.

#include "dorvel/Registration.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "LogCapture.h"
#include "LuaState.h"
#include "dorvel/Runtime.h"

using namespace test;
using dorvel::Runtime;

namespace {

std::string calls;  // of the processors below, as name and mode

template <char Name>
int Record(void const* /*source*/, ConfigProcessorMode mode, ControllerConfig* config) {
    EXPECT_EQ(config, nullptr);
    calls += Name + std::to_string(static_cast<int>(mode)) + ' ';
    return 0;
}

int Complain(void const* source, ConfigProcessorMode mode, ControllerConfig* /*config*/) {
    if (*static_cast<bool const*>(source)) {
        if (mode == ConfigProcessorMode::Start) {
            throw std::runtime_error("no start");
        }
        return 5;
    }
    return 0;
}

enum class Behaviour { Good, Fail, Raise, Throw, LeaveValues };
Behaviour behaviour = Behaviour::Good;

int OpenWell(lua_State* L) {
    lua_pushinteger(L, 1);
    lua_setglobal(L, "opened");
    switch (behaviour) {
        case Behaviour::Fail:
            return -1;
        case Behaviour::Raise:
            return luaL_error(L, "raised");
        case Behaviour::Throw:
            throw std::runtime_error("thrown");
        case Behaviour::LeaveValues:
            lua_pushinteger(L, 1);
            lua_pushinteger(L, 2);
            return 2;
        default:
            return 1;
    }
}

std::string OpenError(Runtime& runtime, Behaviour requested) {
    behaviour = requested;
    std::string error;
    try {
        runtime.OpenLibraries();
    } catch (std::runtime_error const& failure) {
        error = failure.what();
    }
    behaviour = Behaviour::Good;
    return error;
}

class Registration : public testing::Test {
protected:
    static void SetUpTestSuite() {
        ASSERT_EQ(RegisterConfigProcessor("test.C", 30, Record<'C'>, nullptr, nullptr, nullptr), 0);
        ASSERT_EQ(RegisterConfigProcessor("test.A", -10, Record<'A'>, nullptr, nullptr, nullptr), 0);
        ASSERT_EQ(RegisterConfigProcessor("test.B", 30, Record<'B'>, nullptr, nullptr, nullptr), 0);
        ASSERT_EQ(RegisterConfigProcessor("test.complains", 40, Complain, &complains, nullptr, nullptr), 0);
        ASSERT_EQ(RegisterExternalSTLib("test.library", OpenWell), 0);
    }
    Registration() { calls.clear(); }

    static inline bool complains = false;
    LuaState lua;
    Runtime runtime{lua};
};

}  // namespace

TEST_F(Registration, ANameIsTakenOnce) {
    EXPECT_EQ(RegisterConfigProcessor("test.A", 1, Record<'X'>, nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(RegisterExternalSTLib("test.library", OpenWell), -1);
}

TEST_F(Registration, RegisteringNeedsANameAndAFunction) {
    EXPECT_EQ(RegisterConfigProcessor(nullptr, 1, Record<'X'>, nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(RegisterConfigProcessor("test.none", 1, nullptr, nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(RegisterExternalSTLib(nullptr, OpenWell), -1);
    EXPECT_EQ(RegisterExternalSTLib("test.none", nullptr), -1);
}

TEST_F(Registration, ProcessorsAreCalledAtEveryStageInTheirOrder) {
    runtime.OpenLibraries();
    EXPECT_EQ(calls, "A1 C1 B1 A2 C2 B2 ");
    calls.clear();
    runtime.Start();
    EXPECT_EQ(calls, "A6 C6 B6 A7 C7 B7 ");
    calls.clear();
    runtime.Stop();
    EXPECT_EQ(calls, "A8 C8 B8 A9 C9 B9 ");
    calls.clear();
    runtime.Stop();
    EXPECT_EQ(calls, "");
}

TEST_F(Registration, ARuntimeThatIsDestroyedStops) {
    LuaState other;
    {
        Runtime second(other);
        second.Start();
        calls.clear();
    }
    EXPECT_EQ(calls, "A8 C8 B8 A9 C9 B9 ");
}

TEST_F(Registration, AFailingProcessorIsLoggedAndTheOthersAreCalled) {
    LogCapture const log;
    complains = true;
    runtime.Start();
    complains = false;
    runtime.Stop();
    EXPECT_EQ(log.Text(),
              "Processor 'test.complains' in mode 6: no start\n"
              "Processor 'test.complains' returned 5 in mode 7\n");
}

TEST_F(Registration, LibrariesAreOpenedForEveryState) {
    EXPECT_EQ(lua.Eval("opened"), "nil");
    EXPECT_EQ(OpenError(runtime, Behaviour::Good), "");
    EXPECT_EQ(lua.Eval("opened"), "1");
}

TEST_F(Registration, ALibraryThatCannotBeOpenedIsAnExceptionWithItsName) {
    EXPECT_EQ(OpenError(runtime, Behaviour::Fail),
              "library 'test.library': it cannot be opened: its function returned -1");
    EXPECT_EQ(OpenError(runtime, Behaviour::Raise), "library 'test.library': raised");
    EXPECT_EQ(OpenError(runtime, Behaviour::Throw), "library 'test.library': thrown");
}

TEST_F(Registration, OpeningLibrariesLeavesTheStackUnchanged) {
    lua_pushinteger(lua, 42);
    for (auto const requested :
         {Behaviour::Good, Behaviour::LeaveValues, Behaviour::Fail, Behaviour::Throw}) {
        OpenError(runtime, requested);
        ASSERT_EQ(lua_gettop(lua), 1);
        ASSERT_EQ(lua_tointeger(lua, 1), 42);
    }
}

TEST_F(Registration, ScriptsHaveTheElementaryTypes) {
    runtime.OpenLibraries();
    EXPECT_EQ(lua.Eval("TYPES.Elementary.BOOL"), "1");
    EXPECT_EQ(lua.Eval("TYPES.Elementary.DINT"), "6");
    EXPECT_EQ(lua.Eval("TYPES.Elementary.LINT"), "8");
    EXPECT_EQ(lua.Eval("TYPES.Elementary.STRING"), "12");
    EXPECT_EQ(lua.Eval("next(TYPES.StandardFB)"), "nil");
}

TEST_F(Registration, FBMetadataReturnsItsTable) {
    runtime.OpenLibraries();
    EXPECT_EQ(lua.Run("t = { Name = 'X', Hash = 1001, Vars = { Timeout = { Hash = 0, Type = "
                      "TYPES.Elementary.DINT, Retain = false }, } } TYPES.StandardFB.X = FBMetadata(t)"),
              "");
    EXPECT_EQ(lua.Eval("TYPES.StandardFB.X == t"), "true");
    EXPECT_EQ(lua.Run("FBMetadata{ Name = 'X', Hash = 1, Vars = {} }"), "");
}

TEST_F(Registration, FBMetadataRejectsATableThatDescribesNoType) {
    runtime.OpenLibraries();
    struct Row {
        char const* argument;
        char const* error;
    };
    Row const rows[] = {
        {"5", "table expected"},
        {"{ Hash = 1, Vars = {} }", "type.Name: expected a string, got nil"},
        {"{ Name = '', Hash = 1, Vars = {} }", "type.Name is empty"},
        {"{ Name = 'X', Vars = {} }", "type.Hash: expected a number, got nil"},
        {"{ Name = 'X', Hash = 1.5, Vars = {} }", "type.Hash: expected a whole number"},
        {"{ Name = 'X', Hash = 1 }", "type.Vars: expected a table, got nil"},
        {"{ Name = 'X', Hash = 1, Vars = { 5 } }", "Vars: every key must be a name"},
        {"{ Name = 'X', Hash = 1, Vars = { a = 5 } }", "a: expected a table, got number"},
        {"{ Name = 'X', Hash = 1, Vars = { a = { Type = 1, Retain = false } } }",
         "a.Hash: expected a number"},
        {"{ Name = 'X', Hash = 1, Vars = { a = { Hash = 1, Type = TYPES.Elementary.NONE, Retain = false } } "
         "}",
         "a.Type: expected the number or the table of a type"},
        {"{ Name = 'X', Hash = 1, Vars = { a = { Hash = 1, Type = 1 } } }",
         "a.Retain: expected a boolean, got nil"},
    };
    for (Row const& row : rows) {
        std::string const error = lua.Run(std::string("FBMetadata(") + row.argument + ")");
        EXPECT_NE(error.find(row.error), std::string::npos) << row.argument << ": " << error;
    }
}
