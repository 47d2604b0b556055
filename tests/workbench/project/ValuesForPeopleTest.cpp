#include "ValuesForPeople.h"

#include <gtest/gtest.h>

#include <clocale>

#include "Printable.h"
#include "Projects.h"

using namespace workbench;

namespace {

class ForPeople : public testing::Test {
protected:
    void SetUp() override {
        std::setlocale(LC_CTYPE, "C.UTF-8");
        block.variables = {Variable("Week", "schedule", "weekly-schedule"),
                           Variable("Days", "schedule", "exception-schedule"),
                           Variable("Note", "schedule", "description")};
        block.variables[0].unit = "degrees-celsius";
    }

    static VariableConfig Variable(char const* name, char const* object, char const* property) {
        VariableConfig variable;
        variable.name = name;
        variable.type = {OpcUaType_DataValue, OpcUaType_String};
        variable.objectType = ObjectTypes().FindName(object);
        variable.property = Properties().FindName(property);
        return variable;
    }

    static OpcUa_VariantHlp Value(std::string const& text) { return test::Text(text); }
    std::string Whole(std::size_t variable, std::string const& text) {
        return values.Whole(block, block.variables[variable], Value(text), 0);
    }
    std::string Short(std::size_t variable, std::string const& text) {
        return values.Short(block, block.variables[variable], Value(text), 0);
    }

    BlockConfig block;
    ValuesForPeople values;
};

constexpr char Monday[] = "06000000,4,9,21.500000;;;;;;;";

}  // namespace

TEST_F(ForPeople, HaveASchedule) {
    EXPECT_EQ(Whole(0, Monday), "Mon 06:00 21.5 °C");
    EXPECT_EQ(Whole(1, "2,1265,16,12000000,;"), "last Friday in December (priority 16) 12:00 null");
}

TEST_F(ForPeople, HaveTheTextOfAnotherVariableAndOneThatCannotBeRead) {
    EXPECT_EQ(Whole(2, Monday), Monday);
    EXPECT_EQ(Whole(0, "no schedule"), "no schedule");
    EXPECT_EQ(Short(0, "no schedule"), "no schedule");
}

TEST_F(ForPeople, FollowEachNewText) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Whole(0, Monday), "Mon 06:00 21.5 °C");
        EXPECT_EQ(Whole(0, ";06000000,4,9,21.500000;;;;;;"), "Tue 06:00 21.5 °C");
        EXPECT_EQ(Whole(0, ";;06000000,4,9,21.500000;;;;;"), "Wed 06:00 21.5 °C");
    }
    EXPECT_EQ(Whole(0, ""), "\"\"") << "as another empty text";
}

TEST_F(ForPeople, ShowThatALongScheduleIsCut) {
    std::string text = "06000000,4,9,21.500000";
    for (int i = 0; i < 99; ++i) {
        text += ",06000000,4,9,21.500000";
    }
    text += ";;;;;;;";
    EXPECT_EQ(tools::DisplayWidth(Short(0, text)), ValuesForPeople::MostColumns);
    EXPECT_EQ(Short(0, text).substr(Short(0, text).size() - 3), "…");
    EXPECT_GT(Whole(0, text).size(), 1000u);
}
