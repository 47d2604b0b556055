#include "TableDisplay.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

#include "FakeEnvironment.h"
#include "Projects.h"

using namespace test;
using namespace workbench;

namespace {

// The table on a pseudo-terminal of 80 by 24; person is the other side of it.
class TableOnScreen : public testing::Test {
protected:
    TableOnScreen() {
        dorvel::SetEnvironment(&world);
        std::string variable = Temperature;
        variable.insert(variable.size() - 1, ", Write=true");
        project.Load(SourceText(Block(R"(Name="AHU", Address="1.2.3.4:47808")", variable)));
        memory = std::make_unique<PlantMemory>(project.Blocks(), std::vector{Snapshot()}, true);
        values = std::make_unique<ValueSetter>(project.Runtime(), log);
    }
    ~TableOnScreen() override {
        display.reset();
        terminal.reset();
        dorvel::SetEnvironment(nullptr);
        close(program);
        close(person);
    }
    void SetUp() override {
        person = posix_openpt(O_RDWR | O_NOCTTY);
        ASSERT_EQ(grantpt(person), 0);
        ASSERT_EQ(unlockpt(person), 0);
        program = open(ptsname(person), O_RDWR | O_NOCTTY);
        ASSERT_GE(program, 0);
        winsize size{};
        size.ws_col = 80;
        size.ws_row = 24;
        ioctl(program, TIOCSWINSZ, &size);
        terminal = std::make_unique<Terminal>(program, program);
        terminal->Begin();
        display = std::make_unique<TableDisplay>(*terminal, TableSources{*memory, *values, log, outlets},
                                                 std::vector<std::string>{"AHU.T"});
    }

    SharedSnapshot Snapshot() {
        return std::make_shared<BlockSnapshot const>(
            TakeSnapshot(project.Blocks().front(), 0, project.Runtime().Variables()));
    }
    // Types, and returns what was entered. The system may deliver octets late.
    std::vector<std::string> Type(std::string const& keys) {
        EXPECT_EQ(write(person, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
        while (!terminal->HasKeys()) {
        }
        return display->Lines();
    }
    ::testing::AssertionResult Shows(std::string const& words) {
        display->Refresh();
        pollfd seen{person, POLLIN, 0};
        while (poll(&seen, 1, shown.find(words) == std::string::npos ? 5000 : 0) > 0) {
            char text[4096];
            ssize_t const length = read(person, text, sizeof text);
            shown.append(text, static_cast<std::size_t>(length > 0 ? length : 0));
        }
        bool const has = shown.find(words) != std::string::npos;
        std::string const all = std::exchange(shown, {});
        return has ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << all;
    }

    FakeEnvironment world;
    FakeAddIn addIn;
    LogBuffer log{nullptr};
    OutletList outlets;
    LoadedProject project{"p.lua", {}};
    std::unique_ptr<PlantMemory> memory;
    std::unique_ptr<ValueSetter> values;
    int person = -1;
    int program = -1;
    std::string shown;
    std::unique_ptr<Terminal> terminal;
    std::unique_ptr<TableDisplay> display;
};

TEST_F(TableOnScreen, ShowsTheKeysAndThenTheTypedLine) {
    EXPECT_TRUE(Shows("? keys"));
    EXPECT_TRUE(Type("sAHU.T = 2").empty());
    EXPECT_TRUE(Shows("Block.Variable = value: \x1B[0mAHU.T = 2"));
    EXPECT_EQ(Type("1\r"), std::vector<std::string>{"AHU.T = 21"});
}

TEST_F(TableOnScreen, ShowsAMistake) {
    display->Answer({"AHU.t", {}, "no\x1B such thing"});
    EXPECT_TRUE(Shows("no\\x1B such thing"));
}

TEST_F(TableOnScreen, EscapeIsAKeyOnceNothingFollows) {
    Type("?");
    EXPECT_TRUE(Shows("Selects another row"));
    Type("\x1B");
    display->Wait();
    EXPECT_TRUE(display->Lines().empty());
    EXPECT_TRUE(Shows("Variable"));
}

TEST_F(TableOnScreen, ACycleEndsTheWait) {
    Shows("? keys");
    display->Cycle(Snapshot());
    EXPECT_EQ(display->Wait(), std::chrono::milliseconds(0));
}

TEST_F(TableOnScreen, ShowsTheStateOfTheValue) {
    SetRequest const request = ReadAssignment(project.Blocks(), "AHU.T = 21.5");
    values->Set(request);
    display->Answer({"AHU.T", request.value, "", request.variable});
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
