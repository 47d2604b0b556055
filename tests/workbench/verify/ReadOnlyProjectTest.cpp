#include <gtest/gtest.h>

#include "FakeAddIn.h"
#include "Projects.h"

using namespace test;
using namespace workbench;

namespace {

// The write flag and the trigger of a project's only block, with or without its writes.
class ReadOnlyProject : public testing::Test {
protected:
    void Load(bool isReadOnly, std::string const& more = "") {
        std::string variable = Temperature;
        variable.insert(variable.size() - 1, ", Write=true");
        addIn.onInited = [this](FakeDriver& driver) {
            writes = driver.variables.at(0).descriptor.IsWrite;
            trigger = driver.WriteItemId;
        };
        LoadedProject project("p.lua", {});
        if (isReadOnly) {
            project.RemoveWrites();
        }
        project.Load(SourceText(
            Block(R"(Name="AHU", Address="1.2.3.4:47808", WriteCondition="OnTrigger")", variable) + more));
    }

    FakeAddIn addIn;
    int writes = -1;
    long long trigger = -1;
};

}  // namespace

TEST_F(ReadOnlyProject, HasNoWriteChannelsAndNoTrigger) {
    Load(true);
    EXPECT_EQ(writes, 0);
    EXPECT_EQ(trigger, 0);
    Load(false);
    EXPECT_EQ(writes, 1);
    EXPECT_NE(trigger, 0);
}

TEST_F(ReadOnlyProject, ValuesThatItSetsAreCheckedAllTheSame) {
    Load(true, R"(Set("AHU.T", 21.5))");
    EXPECT_EQ(writes, 0);
    EXPECT_THROW(Load(true, R"(Set("AHU.X", 21.5))"), ProjectError);
}
