// A block of the host as scripts see it.

#include <gtest/gtest.h>

#include <stdexcept>

#include "LuaState.h"
#include "TestBlock.h"
#include "Variants.h"
#include "dorvelshare/VariableStore.h"

using namespace test;
using testing::Test;

namespace {

class ScriptBinding : public Test {
protected:
    ScriptBinding() {
        TestBinding::Open(lua);
        TestBlock::onMade = [this](TestBlock& made) { block = &made; };
    }
    ~ScriptBinding() override { TestBlock::onMade = nullptr; }

    // Makes a block with this text for Vars; returns the text of its error.
    std::string ReadVars(std::string const& vars) { return lua.Run("b = TestBlock{ Vars = " + vars + " }"); }
    ScadaProtocol::Channel const& Channel(std::size_t place) { return block->Vars.at(place); }

    LuaState lua;
    TestBlock* block = nullptr;
};

bool Contains(std::string const& text, std::string const& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

TEST_F(ScriptBinding, FaultIsNilBeforeTheFirstCycle) {
    lua.Run("b = TestBlock{}");
    EXPECT_EQ(lua.Eval("b.Fault"), "nil");
    EXPECT_EQ(lua.Eval("b.ErrorText"), "");
}

TEST_F(ScriptBinding, FaultAndErrorTextAreServed) {
    lua.Run("b = TestBlock{}");
    std::string const text = "No connection" + std::string(5000, '!');
    block->UpdateFaultState(true, text);
    EXPECT_EQ(lua.Eval("b.Fault"), "true");
    EXPECT_EQ(lua.Eval("b.ErrorText"), text);
    block->UpdateFaultState(false, "");
    EXPECT_EQ(lua.Eval("b.Fault"), "false");
    EXPECT_EQ(lua.Eval("b.ErrorText"), "");
}

// The contract passes a key without its length.
TEST_F(ScriptBinding, AReservedKeyEndsAtItsFirstZeroOctet) {
    lua.Run("b = TestBlock{}");
    EXPECT_EQ(lua.Eval("b['ErrorText\\0 and more']"), "");
    EXPECT_TRUE(Contains(lua.Run("b['ErrorText\\0 and more'] = 'x'"), "'ErrorText' cannot be set"));
}

TEST_F(ScriptBinding, ReservedKeysCannotBeSet) {
    lua.Run("b = TestBlock{}");
    EXPECT_TRUE(Contains(lua.Run("b.Fault = true"), "'Fault' cannot be set"));
    EXPECT_TRUE(Contains(lua.Run("b.ErrorText = 'x'"), "'ErrorText' cannot be set"));
}

TEST_F(ScriptBinding, AKeyThatIsNotATextYieldsItself) {
    lua.Run("b = TestBlock{}");
    EXPECT_EQ(lua.Eval("b[true]"), "true");
}

TEST_F(ScriptBinding, CheckIndexPrologLeavesOtherKeysAlone) {
    LuaObjState state;
    char faultKey[] = "Fault";
    EXPECT_EQ(CheckIndexProlog(lua, "Name", &state), 0);
    EXPECT_EQ(CheckIndexProlog(lua, "fault", &state), 0);
    EXPECT_EQ(CheckIndexProlog(lua, faultKey, nullptr), 0);
    EXPECT_EQ(lua_gettop(lua), 0);
}

TEST_F(ScriptBinding, CallRunsACycle) {
    auto store = std::make_shared<VariableStore>();
    LuaDataProvider provider(store, nullptr);
    lua.Run("b = TestBlock{}");
    EXPECT_EQ(lua.Eval("b()"), "false");
    block->SetDataProvider(&provider);
    EXPECT_EQ(lua.Eval("b()"), "true");
    block->onExecute = [] { throw std::runtime_error("broken"); };
    EXPECT_EQ(lua.Eval("b()"), "true");
    EXPECT_EQ(lua.Eval("b.ErrorText"), "broken");
}

TEST_F(ScriptBinding, InitWithoutARuntimeDoesNothing) {
    EXPECT_EQ(lua.Run("b = TestBlock{}"), "");
    EXPECT_EQ(TestBlock::alive, 1);
    lua.Run("b = nil collectgarbage()");
    EXPECT_EQ(TestBlock::alive, 0);
}

TEST_F(ScriptBinding, VarsHasAllEntriesOfAVariable) {
    ASSERT_EQ(
        ReadVars(
            "{{ ReadId = 1, ReadField = 'a', Type = 23, ElementType = 11, WriteId = 2, WriteField = 'b' },"
            " { ReadId = 3, Type = 1 }}"),
        "");
    ASSERT_EQ(block->Vars.size(), 2u);
    EXPECT_EQ(Channel(0).Read.Id, 1);
    EXPECT_EQ(Channel(0).Read.Field, "a");
    EXPECT_EQ(Channel(0).Read.Type.Type, OpcUaType_DataValue);
    EXPECT_EQ(Channel(0).Read.Type.ElementType, OpcUaType_Double);
    ASSERT_TRUE(Channel(0).Write);
    EXPECT_EQ(Channel(0).Write->Id, 2);
    EXPECT_EQ(Channel(0).Write->Field, "b");
    EXPECT_EQ(Channel(0).Write->Type.ElementType, OpcUaType_Double);
    EXPECT_TRUE(Channel(0).Properties.empty());
    EXPECT_EQ(Channel(1).Read.Type.Type, OpcUaType_Boolean);
    EXPECT_FALSE(Channel(1).Write);
}

TEST_F(ScriptBinding, AWriteIdOfZeroMeansReadOnly) {
    ASSERT_EQ(ReadVars("{{ Type = 1, WriteId = 0, WriteField = 'b' }}"), "");
    EXPECT_FALSE(Channel(0).Write);
}

TEST_F(ScriptBinding, AllOtherTextKeysAreProperties) {
    ASSERT_EQ(ReadVars("{{ Type = 6, ObjectType = 3, Scale = 0.5, Label = 'a\\0b', Visible = true }}"), "");
    auto const& properties = Channel(0).Properties;
    EXPECT_EQ(properties.size(), 4u);
    EXPECT_EQ(properties.at("ObjectType"), Int64(3));
    EXPECT_EQ(properties.at("Scale"), Double(0.5));
    EXPECT_EQ(properties.at("Label"), Text(std::string_view("a\0b", 3)));
    EXPECT_EQ(properties.at("Visible"), Bool(true));
}

TEST_F(ScriptBinding, AMistakeInVarsNamesTheEntry) {
    struct Row {
        char const* vars;
        char const* error;
    };
    Row const rows[] = {
        {"5", "Vars: expected a table, got a number"},
        {"{ 5 }", "Vars[1]: expected a table, got a number"},
        {"{ { Type = 1 }, {} }", "Vars[2].Type: 0 is not the number of a type that variables can have"},
        {"{ a = { Type = 1 } }", "Vars: expected a list of tables without other keys"},
        {"{ { Type = 'BOOL' } }", "Vars[1].Type: expected a whole number of 0 or more"},
        {"{ { Type = 14 } }", "Vars[1].Type: 14 is not the number of a type"},
        {"{ { Type = 23 } }", "Vars[1].ElementType: 0 is not the number of a type"},
        {"{ { Type = 23, ElementType = 23 } }", "Vars[1].ElementType: 23 is not the number of a type"},
        {"{ { Type = 1, ReadId = 1.5 } }", "Vars[1].ReadId: expected a whole number of 0 or more"},
        {"{ { Type = 1, ReadId = -1 } }", "Vars[1].ReadId: expected a whole number of 0 or more"},
        {"{ { Type = 1, ReadField = 5 } }", "Vars[1].ReadField: expected a text"},
        {"{ { Type = 1, Extra = {} } }", "Vars[1].Extra: expected a boolean, a number or a text"},
        {"{ { Type = 1, 5 } }", "Vars[1]: every key must be a name"},
    };
    for (Row const& row : rows) {
        std::string const error = ReadVars(row.vars);
        EXPECT_TRUE(Contains(error, row.error)) << row.vars << ": " << error;
    }
}

TEST_F(ScriptBinding, VarsStaysAsItWasAfterAnError) {
    ASSERT_EQ(ReadVars("{{ Type = 1 }}"), "");
    EXPECT_NE(lua.Run("b.Vars = {{ Type = 1 }, { Type = 1 }, 5}"), "");
    EXPECT_EQ(block->Vars.size(), 1u);
    EXPECT_EQ(lua.Run("b.Vars = {}"), "");
    EXPECT_TRUE(block->Vars.empty());
}

TEST_F(ScriptBinding, TablesAreReadWithoutTheirMetamethods) {
    EXPECT_EQ(ReadVars("setmetatable({{ Type = 1 }}, { __index = error, __len = error, __pairs = error })"),
              "");
    EXPECT_EQ(block->Vars.size(), 1u);
}

TEST_F(ScriptBinding, TenThousandVariablesAreRead) {
    ASSERT_EQ(
        lua.Run("v = {} for i = 1, 10000 do v[i] = { ReadId = i, Type = 10 } end b = TestBlock{ Vars = v }"),
        "");
    ASSERT_EQ(block->Vars.size(), 10'000u);
    EXPECT_EQ(Channel(9'999).Read.Id, 10'000);
}
