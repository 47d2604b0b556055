// The entry of the add-in, and the type and processor that it registers.

#include "Addin.h"

#include <gtest/gtest.h>

#include <lua.hpp>
#include <memory>

#include "BACnet_protocol.h"
#include "LogCapture.h"
#include "dorvel/Runtime.h"

using namespace dorvel::BACnet;

namespace {

TEST(Addin, StopSetsAndStartClearsIsTerminated) {
    TBACnet::IsTerminated = false;
    EXPECT_EQ(ConfigProcessorCallback(nullptr, ConfigProcessorMode::Stop, nullptr), 0);
    EXPECT_TRUE(TBACnet::IsTerminated);
    EXPECT_EQ(ConfigProcessorCallback(nullptr, ConfigProcessorMode::Start, nullptr), 0);
    EXPECT_FALSE(TBACnet::IsTerminated);
}

TEST(Addin, OtherModesKeepIsTerminated) {
    for (int mode = 0; mode < 20; ++mode) {
        if (mode == 6 || mode == 8) {
            continue;
        }
        for (bool const mark : {false, true}) {
            TBACnet::IsTerminated = mark;
            EXPECT_EQ(ConfigProcessorCallback(nullptr, static_cast<ConfigProcessorMode>(mode), nullptr), 0);
            EXPECT_EQ(TBACnet::IsTerminated, mark) << mode;
        }
    }
    TBACnet::IsTerminated = false;
}

TEST(Addin, Mode7KeepsIsTerminated) {
    for (bool const mark : {true, false}) {
        TBACnet::IsTerminated = mark;
        EXPECT_EQ(ConfigProcessorCallback(nullptr, static_cast<ConfigProcessorMode>(7), nullptr), 0);
        EXPECT_EQ(TBACnet::IsTerminated, mark);
    }
}

TEST(Addin, InitRegistersTypeAndProcessor) {
    test::LogCapture log;
    EXPECT_EQ(Init(), 0);
    EXPECT_EQ(log.Text(), "");
    EXPECT_NE(RegisterExternalSTLib("BACnet", [](lua_State*) { return 1; }), 0) << "the name is taken";
    EXPECT_NE(RegisterConfigProcessor("dorvel_Bacnet", 0, ConfigProcessorCallback, nullptr, nullptr, nullptr),
              0);
}

TEST(Addin, RuntimeThatStartsAndStopsClearsAndSetsIsTerminated) {
    EXPECT_EQ(Init(), 0);
    std::unique_ptr<lua_State, void (*)(lua_State*)> const state(luaL_newstate(), lua_close);
    dorvel::Runtime runtime(state.get());
    TBACnet::IsTerminated = true;
    runtime.Start();
    EXPECT_FALSE(TBACnet::IsTerminated);
    runtime.Stop();
    EXPECT_TRUE(TBACnet::IsTerminated);
    TBACnet::IsTerminated = false;
}

TEST(Addin, SecondRegAsLuaTypeDoesNothing) {
    BACnetProtocol::RegAsLuaType();
    test::LogCapture log;
    BACnetProtocol::RegAsLuaType();
    EXPECT_EQ(Init(), 0);
    EXPECT_EQ(log.Text(), "") << "a second registration would be refused and traced";
}

TEST(Addin, TypeHasItsNames) {
    EXPECT_STREQ(BACnetProtocol::_ShortName(), "BACnet");
    EXPECT_STREQ(BACnetProtocol::_FullName(), "TYPES.StandardFB.BACnet");
}

}  // namespace
