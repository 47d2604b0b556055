#include "ClientId.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using workbench::ClientIdOf;

TEST(ClientId, IsTheNodeWhereBrokersAcceptIt) {
    EXPECT_EQ(ClientIdOf("pc-plant_1.a"), "dorvel-pc-plant_1.a");
    EXPECT_EQ(ClientIdOf(std::string(57, 'a')), "dorvel-" + std::string(57, 'a'));
}

TEST(ClientId, OfAnotherNodeIsDifferentAlsoWhenItIsCut) {
    EXPECT_EQ(ClientIdOf(std::string(58, 'a')).size(), 64U);
    EXPECT_NE(ClientIdOf(std::string(70, 'a')), ClientIdOf(std::string(71, 'a')));
    EXPECT_NE(ClientIdOf("plant 1"), ClientIdOf("plant/1"));
    EXPECT_EQ(ClientIdOf("plant 1").substr(0, 15), "dorvel-plant-1-");
    EXPECT_EQ(ClientIdOf("plant 1"), ClientIdOf("plant 1"));
}

}  // namespace
