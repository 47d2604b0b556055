// Effects of the first calls in a process, so this is a separate program.

#include <gtest/gtest.h>

#include "BACnet_protocol.h"
#include "LogCapture.h"
#include "dorvel/Registration.h"

using dorvel::BACnet::BACnetProtocol;

namespace {

TEST(FreshProcess, TypeWhoseNameIsTakenIsTracedAndNotRegistered) {
    test::LogCapture log;
    ASSERT_EQ(RegisterExternalSTLib("BACnet", [](lua_State*) { return 1; }), 0);
    BACnetProtocol::RegAsLuaType();
    EXPECT_NE(log.Text().find("BACnetProtocol: Already registred other type with name 'BACnet'"),
              std::string::npos)
        << log.Text();
    EXPECT_NE(log.Text().find("drivers/dorvel_bacnet/BACnet_protocol.cpp"), std::string::npos) << log.Text();
    log.Clear();
    BACnetProtocol::RegAsLuaType();
    EXPECT_EQ(log.Text(), "") << "the second call does nothing";
}

TEST(FreshProcess, ConnectionIdsCountFrom0) {
    EXPECT_EQ(BACnetProtocol::getId(), "DORVEL_Connect_0");
    EXPECT_EQ(BACnetProtocol::getId(), "DORVEL_Connect_1");
}

TEST(FreshProcess, IsNotTerminatedAtFirst) {
    EXPECT_FALSE(dorvel::BACnet::TBACnet::IsTerminated);
    EXPECT_EQ(dorvel::BACnet::WriteInvokeId.load(), 0);
}

}  // namespace
