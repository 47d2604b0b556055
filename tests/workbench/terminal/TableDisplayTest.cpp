#include <gtest/gtest.h>
#include <unistd.h>

#include "Display.h"
#include "FakeEnvironment.h"
#include "Projects.h"

using namespace test;
using namespace workbench;

namespace {

// The table on a pipe instead of a terminal of 80 by 24.
class TableOnScreen : public testing::Test {
protected:
    TableOnScreen() {
        dorvel::SetEnvironment(&world);
        EXPECT_EQ(pipe(ends), 0);
        std::string variable = Temperature;
        variable.insert(variable.size() - 1, ", Write=true");
        project.Load(SourceText(Block(R"(Name="AHU", Address="1.2.3.4:47808")", variable)));
        board = std::make_unique<PlantBoard>(std::vector{std::make_shared<BlockSnapshot const>(
            TakeSnapshot(project.Blocks().front(), 0, project.Runtime().Variables()))});
        display = std::make_unique<TableDisplay>(MakeTerminal(), log, MakeSetter(), prompt, *board);
    }
    ~TableOnScreen() override {
        dorvel::SetEnvironment(nullptr);
        close(ends[0]);
        close(ends[1]);
    }

    Terminal& MakeTerminal() {
        screen = std::make_unique<Terminal>(ends[1], -1);
        return *screen;
    }
    ValueSetter& MakeSetter() {
        values = std::make_unique<ValueSetter>(project.Runtime(), log);
        return *values;
    }

    std::string Frame() {
        display->Refresh();
        char text[4096];
        ssize_t const length = read(ends[0], text, sizeof text);
        return std::string(text, static_cast<std::size_t>(length > 0 ? length : 0));
    }
    ::testing::AssertionResult Shows(std::string const& words) {
        std::string const frame = Frame();
        return frame.find(words) != std::string::npos ? ::testing::AssertionSuccess()
                                                      : ::testing::AssertionFailure() << frame;
    }

    FakeEnvironment world;
    FakeAddIn addIn;
    LogBuffer log{nullptr};
    LoadedProject project{"p.lua", {}};
    PromptLine prompt{{"AHU.T"}};
    int ends[2] = {-1, -1};
    std::unique_ptr<Terminal> screen;
    std::unique_ptr<ValueSetter> values;
    std::unique_ptr<PlantBoard> board;
    std::unique_ptr<TableDisplay> display;
};

TEST_F(TableOnScreen, ShowsTheKeyAndThenTheTypedLine) {
    EXPECT_TRUE(Shows("Press s to set a value"));
    prompt.Feed("sAHU.T = 2");
    EXPECT_TRUE(Shows("Block.Variable = value: "));
    EXPECT_TRUE(Shows("AHU.T = 2_"));
}

TEST_F(TableOnScreen, ShowsAMistake) {
    display->Answer({"AHU.t", {}, "no\x1B such thing"});
    EXPECT_TRUE(Shows("no\\x1B such thing"));
}

TEST_F(TableOnScreen, ShowsTheStateOfTheValue) {
    SetRequest const request = ReadAssignment(project.Blocks(), "AHU.T = 21.5");
    values->Set(request);
    display->Answer({"AHU.T", request.value, ""});
    EXPECT_TRUE(Shows("AHU.T = 21.5 pending"));
    addIn.onCycle = [](FakeDriver& driver) {
        driver.Report(false, "");
        driver.WritePhase([&](std::size_t, OpcUa_VariantHlp const& value) { driver.Deliver(0, value); });
    };
    for (int i = 0; i < 3; ++i) {
        project.Runtime().RunOnce();
        values->AfterCycle(project.Blocks().front(), false);
    }
    EXPECT_TRUE(Shows("AHU.T = 21.5 written"));
}

}  // namespace
