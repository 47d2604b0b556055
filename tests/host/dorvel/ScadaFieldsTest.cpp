#include "dorvel/ScadaFields.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>

#include "LuaState.h"
#include "dorvel/JsonWrapper.h"

using test::LuaState;

namespace {

struct Record {
    int values[3] = {1, 2, 3};
};

// An int at its position; a name that starts with '-' has no script form, 'throws' throws.
class IntField : public ScadaFields::IField {
public:
    IntField(std::string fieldName, std::size_t place)
        : IField(std::move(fieldName), false, place * sizeof(int)) {
        ++alive;
    }
    ~IntField() override { --alive; }

    void set(void const* object, lua_State* L) const override {
        if (name[0] != '-') {
            lua_pushinteger(L, static_cast<Record const*>(object)->values[position / sizeof(int)]);
        }
    }
    void get(void* object, lua_State* L) const override {
        if (name == "throws") {
            throw std::runtime_error("cannot be read");
        }
        static_cast<Record*>(object)->values[position / sizeof(int)] = static_cast<int>(lua_tointeger(L, -1));
    }
    char const* lua_type() const override { return "TYPES.Elementary.DINT"; }

    static inline int alive = 0;
};

std::string NamesOf(ScadaFields const& fields) {
    std::string names;
    for (auto const& field : fields.fields()) {
        names += field->name + " ";
    }
    return names;
}

class Fields : public testing::Test {
protected:
    Fields() {
        fields.add(new IntField("zeta", 0));
        fields.add(new IntField("alpha", 1));
        fields.add(new IntField("-hidden", 2));
    }

    // Calls body as Lua would; returns the text of its error.
    template <class Body>
    std::string Protected(Body body) {
        int const top = lua_gettop(lua);
        lua_pushcfunction(lua, [](lua_State* L) -> int {
            auto* const inner = static_cast<Body*>(lua_touserdata(L, 1));
            lua_settop(L, 0);
            (*inner)();
            return 0;
        });
        lua_pushlightuserdata(lua, &body);
        std::string const error = lua_pcall(lua, 1, 0, 0) == LUA_OK ? "" : lua_tostring(lua, -1);
        lua_settop(lua, top);
        return error;
    }

    LuaState lua;
    ScadaFields fields;
    Record record;
};

}  // namespace

TEST_F(Fields, AreInTheOrderOfAdd) {
    EXPECT_EQ(NamesOf(fields), "zeta alpha -hidden ");
    EXPECT_EQ(fields.size(), 3u);
    EXPECT_EQ(fields.parent(), nullptr);
}

TEST_F(Fields, AreFoundByName) {
    ASSERT_NE(fields.find("alpha"), nullptr);
    EXPECT_EQ(fields.find("alpha")->position, sizeof(int));
    EXPECT_EQ(fields.find("Alpha"), nullptr);
    EXPECT_EQ(fields.find(""), nullptr);
}

TEST_F(Fields, OfTheSameNameAreReplacedAtTheirIndex) {
    int const alive = IntField::alive;
    fields.add(new IntField("zeta", 2));
    EXPECT_EQ(IntField::alive, alive);
    EXPECT_EQ(NamesOf(fields), "zeta alpha -hidden ");
    EXPECT_EQ(fields.find("zeta")->position, 2 * sizeof(int));
}

TEST_F(Fields, ManyFieldsAreFound) {
    for (int i = 0; i < 1000; ++i) {
        fields.add(new IntField("field" + std::to_string(i), 0));
    }
    for (int i = 0; i < 1000; ++i) {
        ASSERT_NE(fields.find("field" + std::to_string(i)), nullptr);
    }
    EXPECT_EQ(fields.fields()[3]->name, "field0");
}

TEST(FieldsOwnership, FieldsAreDestroyedWithTheirTable) {
    int const alive = IntField::alive;
    {
        ScadaFields fields;
        fields.add(new IntField("a", 0));
    }
    EXPECT_EQ(IntField::alive, alive);
}

TEST(FieldsOwnership, ANullFieldIsRejected) {
    ScadaFields fields;
    EXPECT_THROW(fields.add(nullptr), std::invalid_argument);
}

TEST_F(Fields, ReadAllFromLeavesAbsentFieldsUnchanged) {
    EXPECT_EQ(Protected([&] {
                  luaL_dostring(lua, "return { alpha = 20, other = 5 }");
                  fields.ReadAllFrom(&record, lua);
                  ASSERT_EQ(lua_gettop(lua), 1);
              }),
              "");
    EXPECT_EQ(record.values[0], 1);
    EXPECT_EQ(record.values[1], 20);
}

TEST_F(Fields, ReadAllFromNeedsATable) {
    EXPECT_NE(Protected([&] {
                  lua_pushinteger(lua, 5);
                  fields.ReadAllFrom(&record, lua);
              }),
              "");
}

TEST_F(Fields, ReadFromTakesOneField) {
    EXPECT_EQ(Protected([&] {
                  lua_pushstring(lua, "zeta");
                  lua_pushinteger(lua, 7);
                  ASSERT_EQ(fields.ReadFrom(&record, lua), 0);
              }),
              "");
    EXPECT_EQ(record.values[0], 7);
}

TEST_F(Fields, ReadFromRejectsUnknownKeys) {
    EXPECT_EQ(Protected([&] {
                  lua_pushstring(lua, "Zeta");
                  lua_pushinteger(lua, 7);
                  fields.ReadFrom(&record, lua);
              }),
              "unknown field 'Zeta'");
    EXPECT_EQ(Protected([&] {
                  lua_pushboolean(lua, 1);
                  lua_pushinteger(lua, 7);
                  fields.ReadFrom(&record, lua);
              }),
              "unknown field 'boolean'");
}

TEST_F(Fields, AnExceptionOfAFieldBecomesALuaError) {
    fields.add(new IntField("throws", 0));
    EXPECT_EQ(Protected([&] {
                  lua_pushstring(lua, "throws");
                  lua_pushinteger(lua, 7);
                  fields.ReadFrom(&record, lua);
              }),
              "cannot be read");
    EXPECT_EQ(Protected([&] {
                  luaL_dostring(lua, "return { throws = 1 }");
                  fields.ReadAllFrom(&record, lua);
              }),
              "cannot be read");
}

TEST_F(Fields, WriteAllToPushesATable) {
    EXPECT_EQ(fields.WriteAllTo(&record, lua), 1);
    ASSERT_EQ(lua_gettop(lua), 1);
    lua_setglobal(lua, "all");
    EXPECT_EQ(lua.Eval("all.zeta .. ' ' .. all.alpha .. ' ' .. tostring(all['-hidden'])"), "1 2 nil");
}

TEST_F(Fields, WriteToPushesTheValueOrNil) {
    for (auto const& [key, expected] :
         std::map<std::string, std::string>{{"alpha", "2"}, {"-hidden", "nil"}, {"unknown", "nil"}}) {
        lua_pushstring(lua, key.c_str());
        EXPECT_EQ(fields.WriteTo(&record, lua), 1);
        EXPECT_EQ(luaL_tolstring(lua, -1, nullptr), expected) << key;
        lua_settop(lua, 0);
    }
}

TEST_F(Fields, OfAParentAreFoundInItsChild) {
    ScadaFields child(&fields);
    child.add(new IntField("own", 2));
    EXPECT_EQ(child.parent(), &fields);
    EXPECT_EQ(child.size(), 1u);
    EXPECT_NE(child.find("alpha"), nullptr);
    luaL_dostring(lua, "return { alpha = 20, own = 30 }");
    child.ReadAllFrom(&record, lua);
    EXPECT_EQ(record.values[1], 20);
    EXPECT_EQ(record.values[2], 30);
    child.WriteAllTo(&record, lua);
    lua_setglobal(lua, "all");
    EXPECT_EQ(lua.Eval("all.zeta .. ' ' .. all.alpha .. ' ' .. all.own"), "1 20 30");
}

TEST_F(Fields, AFieldWithoutAJsonFormWritesNothing) {
    rapidjson::Document document;
    dorvel::JsonWrapper json(document.GetAllocator());
    fields.find("alpha")->to_json(json, &record);
    EXPECT_FALSE(json.HasValue());
}

TEST(JsonWrapper, MakesAValueWhenAskedForIt) {
    rapidjson::Document document;
    dorvel::JsonWrapper json(document.GetAllocator());
    json.Value().SetInt(5);
    EXPECT_TRUE(json.HasValue());
    EXPECT_EQ(json.Value().GetInt(), 5);
    rapidjson::Value lent;
    dorvel::JsonWrapper(lent, document.GetAllocator()).Value().SetBool(true);
    EXPECT_TRUE(lent.GetBool());
}
