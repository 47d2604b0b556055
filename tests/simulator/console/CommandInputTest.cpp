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
        ASSERT_EQ(pipe(m_ends), 0);
        std::signal(SIGPIPE, SIG_IGN);
    }
    void TearDown() override {
        close(m_ends[0]);
        closeWriter();
    }

    int reader() const { return m_ends[0]; }
    int writer() const { return m_ends[1]; }
    void put(std::string const& text) {
        ASSERT_EQ(write(writer(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void closeWriter() {
        if (m_ends[1] >= 0) {
            close(m_ends[1]);
        }
        m_ends[1] = -1;
    }

private:
    int m_ends[2] = {-1, -1};
};

TEST_F(CommandInputTest, GivesWholeLinesAndKeepsTheRest) {
    CommandInput input(reader());
    EXPECT_EQ(input.read(), Lines()) << "nothing is there, and it doesn't wait";
    put("one\n\ntw");
    EXPECT_EQ(input.read(), (Lines{"one", ""}));
    put("o\nthree");
    EXPECT_EQ(input.read(), Lines{"two"});
    EXPECT_TRUE(input.isOpen());
    EXPECT_EQ(input.handle(), reader());
}

TEST_F(CommandInputTest, TheEndIsNoticed) {
    CommandInput input(reader());
    put("last\n");
    closeWriter();
    EXPECT_EQ(input.read(), Lines{"last"});
    EXPECT_TRUE(input.isOpen());
    EXPECT_EQ(input.read(), Lines());
    EXPECT_FALSE(input.isOpen());
    EXPECT_EQ(input.handle(), -1);
    EXPECT_EQ(input.read(), Lines());
}

TEST_F(CommandInputTest, AHandleThatCannotBeReadIsAClosedOne) {
    CommandInput input(-1);
    EXPECT_EQ(input.read(), Lines());
    CommandInput folder(open("/", O_RDONLY));
    EXPECT_EQ(folder.read(), Lines());
    EXPECT_FALSE(folder.isOpen());
}

TEST_F(CommandInputTest, ALineWithoutEndTakesNoMemory) {
    CommandInput input(reader());
    for (int i = 0; i < 100; ++i) {
        put(std::string(4096, 'x'));
        EXPECT_EQ(input.read(), Lines());
    }
    put("\nnext\n");
    Lines const lines = input.read();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].size(), simulator::kLongestCommand + 1);
    EXPECT_EQ(lines[1], "next");
}

TEST_F(CommandInputTest, WhatNobodyReadsIsLostInsteadOfWaitedFor) {
    for (int i = 0; i < 100; ++i) {
        simulator::writeWithoutWaiting(writer(), std::string(5000, 'x'));
    }
    char buffer[100];
    EXPECT_EQ(read(reader(), buffer, sizeof buffer), 100);
    simulator::writeWithoutWaiting(-1, "x");
}
