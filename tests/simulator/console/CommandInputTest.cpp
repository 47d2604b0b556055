#include "CommandInput.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "FaultCommand.h"

using simulator::CommandInput;
using Lines = std::vector<std::string>;

// The input is one end of a pipe, the test has the other.
class CommandInputTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(pipe(ends), 0);
        std::signal(SIGPIPE, SIG_IGN);
    }
    void TearDown() override {
        close(ends[0]);
        CloseWriter();
    }

    int Reader() const { return ends[0]; }
    int Writer() const { return ends[1]; }
    void Put(std::string const& text) {
        ASSERT_EQ(write(Writer(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void CloseWriter() {
        if (ends[1] >= 0) {
            close(ends[1]);
        }
        ends[1] = -1;
    }

private:
    int ends[2] = {-1, -1};
};

TEST_F(CommandInputTest, GivesWholeLinesAndKeepsTheRest) {
    CommandInput input(Reader());
    EXPECT_EQ(input.Read(), Lines()) << "nothing is there, and it doesn't wait";
    Put("one\n\ntw");
    EXPECT_EQ(input.Read(), (Lines{"one", ""}));
    Put("o\nthree");
    EXPECT_EQ(input.Read(), Lines{"two"});
    EXPECT_TRUE(input.IsOpen());
    EXPECT_EQ(input.Handle(), Reader());
}

TEST_F(CommandInputTest, TheEndIsNoticed) {
    CommandInput input(Reader());
    Put("last\n");
    CloseWriter();
    EXPECT_EQ(input.Read(), Lines{"last"});
    EXPECT_TRUE(input.IsOpen());
    EXPECT_EQ(input.Read(), Lines());
    EXPECT_FALSE(input.IsOpen());
    EXPECT_EQ(input.Handle(), -1);
    EXPECT_EQ(input.Read(), Lines());
}

TEST_F(CommandInputTest, AHandleThatCannotBeReadIsAClosedOne) {
    CommandInput input(-1);
    EXPECT_EQ(input.Read(), Lines());
    CommandInput folder(open("/", O_RDONLY));
    EXPECT_EQ(folder.Read(), Lines());
    EXPECT_FALSE(folder.IsOpen());
}

TEST_F(CommandInputTest, ALineWithoutEndTakesNoMemory) {
    CommandInput input(Reader());
    for (int i = 0; i < 100; ++i) {
        Put(std::string(4096, 'x'));
        EXPECT_EQ(input.Read(), Lines());
    }
    Put("\nnext\n");
    Lines const lines = input.Read();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].size(), simulator::LongestCommand + 1);
    EXPECT_EQ(lines[1], "next");
}

TEST_F(CommandInputTest, TextThatNobodyReadsIsLostWithoutWaiting) {
    for (int i = 0; i < 100; ++i) {
        simulator::WriteWithoutWaiting(Writer(), std::string(5000, 'x'));
    }
    char buffer[100];
    EXPECT_EQ(read(Reader(), buffer, sizeof buffer), 100);
    simulator::WriteWithoutWaiting(-1, "x");
}
