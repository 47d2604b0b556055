#include "SetRequest.h"

#include <gtest/gtest.h>

#include <random>

#include "NameTable.h"
#include "Projects.h"

using namespace test;
using namespace workbench;

namespace {

class Setting : public testing::Test {
protected:
    void SetUp() override {
        blocks.resize(2);
        blocks[0].name = "AHU";
        blocks[1].name = "Roof.East";
        Add(0, "Setpoint", {OpcUaType_DataValue, OpcUaType_Float});
        Add(0, "Fan", OpcUaType_Boolean);
        Add(0, "Stage", OpcUaType_Byte);
        Add(0, "Supply", OpcUaType_Float, false);
        Add(0, "Note", OpcUaType_String);
        Add(0, "At", OpcUaType_DateTime);
        Add(1, "a=b", OpcUaType_Int32);
    }

    void Add(std::size_t block, std::string const& name, OpcUa_BuiltInTypeHlp const& type,
             bool write = true) {
        VariableConfig variable;
        variable.name = name;
        variable.type = type;
        variable.objectType = ObjectTypes().FindName("analog-value");
        variable.property = Properties().FindName("present-value");
        variable.write = write;
        blocks[block].variables.push_back(variable);
    }

    std::string Mistake(std::string const& assignment) const {
        try {
            ReadAssignment(blocks, assignment);
        } catch (ProjectError const& mistake) {
            return mistake.what();
        }
        return "taken";
    }

    std::deque<BlockConfig> blocks;
};

TEST_F(Setting, AValueIsConvertedToTheTypeOfItsVariable) {
    SetRequest const request = ReadAssignment(blocks, "  AHU.Setpoint =  21.5 ");
    EXPECT_EQ(request.block, &blocks[0]);
    EXPECT_EQ(request.variable, &blocks[0].variables[0]);
    EXPECT_EQ(request.value, Float(21.5f));
    EXPECT_EQ(ReadAssignment(blocks, "AHU.Fan=true").value, Boolean(true));
    EXPECT_EQ(ReadAssignment(blocks, "AHU.Stage = 255").value.GetType(), OpcUaType_Byte);
    EXPECT_EQ(ReadAssignment(blocks, "AHU.Note = a = b").value, Text("a = b"));
    EXPECT_EQ(ReadAssignment(blocks, "AHU.Note =").value, Text(""));
    EXPECT_EQ(ReadAssignment(blocks, "AHU.At = 2024-03-15T12:00:00Z").value.GetType(), OpcUaType_DateTime);
}

TEST_F(Setting, NamesMayContainDotsAndEqualSigns) {
    EXPECT_EQ(ReadAssignment(blocks, "Roof.East.a=b=-5").variable->name, "a=b");
}

TEST_F(Setting, AMisspeltNameGetsASuggestion) {
    EXPECT_EQ(Mistake("AHU.Setpiont = 1"),
              "\"AHU.Setpiont\" is not a variable of the project (did you mean \"AHU.Setpoint\"?)");
    EXPECT_EQ(Mistake("ahu.fan = true"),
              "\"ahu.fan\" is not a variable of the project (did you mean \"AHU.Fan\"?)");
    EXPECT_EQ(Mistake("Setpoint = 1"),
              "\"Setpoint\" is not a variable of the project (did you mean \"AHU.Setpoint\"?)");
    EXPECT_EQ(Mistake("Quite something else = 1"),
              "\"Quite something else\" is not a variable of the project");
    EXPECT_EQ(Mistake("AHU.Setpoint"), "\"AHU.Setpoint\" is not of the form Block.Variable = value");
    EXPECT_EQ(Mistake(""), "\"\" is not of the form Block.Variable = value");
}

TEST_F(Setting, AReadOnlyVariableCannotBeSet) {
    EXPECT_EQ(Mistake("AHU.Supply = 1"),
              "\"AHU.Supply\" is read-only; to set it, give it Write = true in the project");
    EXPECT_EQ(Mistake("AHU.Suply = 1"),
              "\"AHU.Suply\" is not a variable of the project (did you mean \"AHU.Supply\"?)");
}

TEST_F(Setting, AValueThatDoesNotFitTheTypeIsReported) {
    EXPECT_EQ(Mistake("AHU.Setpoint = 21,5"),
              "\"AHU.Setpoint\": \"21,5\" is not of type Float; expected a number such as 21.5 (did you mean "
              "\"21.5\"?)");
    EXPECT_EQ(Mistake("AHU.Setpoint = warm"),
              "\"AHU.Setpoint\": \"warm\" is not of type Float; expected a number such as 21.5");
    EXPECT_EQ(Mistake("AHU.Fan = tru"),
              "\"AHU.Fan\": \"tru\" is not of type Boolean; expected true or false (did you mean \"true\"?)");
    EXPECT_EQ(Mistake("AHU.Stage = 256"),
              "\"AHU.Stage\": \"256\" is not of type Byte; expected a whole number from 0 to 255");
    EXPECT_EQ(Mistake("AHU.Stage ="),
              "\"AHU.Stage\": \"\" is not of type Byte; expected a whole number from 0 to 255");
    EXPECT_EQ(Mistake("AHU.At = noon"),
              "\"AHU.At\": \"noon\" is not of type DateTime; expected a time such as 2024-03-15T12:00:00Z");
}

TEST_F(Setting, OnlyWritableNamesAreOffered) {
    EXPECT_EQ(WritableNames(blocks), (std::vector<std::string>{"AHU.Setpoint", "AHU.Fan", "AHU.Stage",
                                                               "AHU.Note", "AHU.At", "Roof.East.a=b"}));
}

TEST_F(Setting, AnyTextIsARequestOrAMistake) {
    std::mt19937 random(7);
    std::string const letters = "AHU.SetpointFan= =,.0159-e\xFF\n";
    for (int i = 0; i < 10000; ++i) {
        std::string text = i % 2 ? "AHU.Setpoint=" : "";
        for (std::size_t n = random() % 30; n > 0; --n) {
            text += letters[random() % letters.size()];
        }
        try {
            EXPECT_EQ(ReadAssignment(blocks, text).value.GetType() == OpcUaType_Null, false) << text;
        } catch (ProjectError const& mistake) {
            EXPECT_EQ(std::string(mistake.what()).find('\n'), std::string::npos) << text;
        }
    }
}

}  // namespace
