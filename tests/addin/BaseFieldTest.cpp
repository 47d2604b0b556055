// One field of an object: conversion to a script, from a script, and to JSON.

#include "BaseField.h"

#include <gtest/gtest.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <limits>
#include <memory>

using SCADA_API::BaseField;

namespace {

struct Object {
    int number = -5;
    long long large = -(1LL << 40);
    bool flag = true;
    std::string text = "a\"b";
    ProtocolWriteCondition condition = ProtocolWriteCondition::OnTrigger;
    ScadaProtocol::Channels channels;
};

template <class V>
BaseField<Object, V> FieldAt(V Object::*member) {
    static Object const model;
    auto const position =
        reinterpret_cast<char const*>(&(model.*member)) - reinterpret_cast<char const*>(&model);
    return BaseField<Object, V>("Name", false, static_cast<std::size_t>(position));
}

class Field : public ::testing::Test {
protected:
    Field() : state(luaL_newstate(), lua_close), L(state.get()) {}

    template <class V>
    std::string Json(V Object::*member) {
        rapidjson::Document document;
        dorvel::JsonWrapper wrapper(document, document.GetAllocator());
        FieldAt(member).to_json(wrapper, &object);
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        return buffer.GetString();
    }

    template <class V>
    bool GivesAValueToAWrapperWithout(V Object::*member) {
        rapidjson::Document document;
        dorvel::JsonWrapper wrapper(document.GetAllocator());
        FieldAt(member).to_json(wrapper, &object);
        return wrapper.HasValue();
    }

    std::unique_ptr<lua_State, void (*)(lua_State*)> state;
    lua_State* L;
    Object object;
};

TEST_F(Field, IntegersArePushedWithTheirSign) {
    FieldAt(&Object::number).set(&object, L);
    FieldAt(&Object::large).set(&object, L);
    FieldAt(&Object::condition).set(&object, L);
    ASSERT_EQ(lua_gettop(L), 3);
    EXPECT_EQ(lua_tointeger(L, 1), -5);
    EXPECT_EQ(lua_tointeger(L, 2), -(1LL << 40));
    EXPECT_EQ(lua_tointeger(L, 3), 2);
}

TEST_F(Field, ReadingKeepsTheStack) {
    lua_pushinteger(L, (1LL << 32) + 7);
    FieldAt(&Object::number).get(&object, L);
    FieldAt(&Object::large).get(&object, L);
    EXPECT_EQ(lua_gettop(L), 1);
    EXPECT_EQ(object.number, 7);
    EXPECT_EQ(object.large, (1LL << 32) + 7);
}

TEST_F(Field, ChannelsAreNotPushed) {
    FieldAt(&Object::channels).set(&object, L);
    EXPECT_EQ(lua_gettop(L), 0);
    EXPECT_EQ(FieldAt(&Object::channels).lua_type(), nullptr);
}

TEST_F(Field, ChannelsAreReadByTheHost) {
    ASSERT_EQ(luaL_dostring(L, "return {{ReadId = 3, Type = 11, ObjectNumber = 9}}"), LUA_OK);
    FieldAt(&Object::channels).get(&object, L);
    ASSERT_EQ(object.channels.size(), 1u);
    EXPECT_EQ(object.channels[0].Read.Id, 3);
}

TEST_F(Field, EachKindHasItsJson) {
    EXPECT_EQ(Json(&Object::number), "-5");
    EXPECT_EQ(Json(&Object::large), "-1099511627776");
    EXPECT_EQ(Json(&Object::flag), "true");
    EXPECT_EQ(Json(&Object::text), "\"a\\\"b\"");
    EXPECT_EQ(Json(&Object::condition), "2");
    EXPECT_EQ(Json(&Object::channels), "null");
}

TEST_F(Field, WrapperWithoutAValueGetsOneOnlyFromAText) {
    EXPECT_FALSE(GivesAValueToAWrapperWithout(&Object::number));
    EXPECT_FALSE(GivesAValueToAWrapperWithout(&Object::large));
    EXPECT_FALSE(GivesAValueToAWrapperWithout(&Object::flag));
    EXPECT_FALSE(GivesAValueToAWrapperWithout(&Object::condition));
    EXPECT_TRUE(GivesAValueToAWrapperWithout(&Object::text));
}

}  // namespace
