#include "PromptLine.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>

#include "LineInput.h"

using namespace workbench;

namespace {

using Lines = std::vector<std::string>;

TEST(PromptLine, AKeyOpensItAndEnterEndsIt) {
    PromptLine prompt({});
    EXPECT_EQ(prompt.Feed("xyz\r"), Lines());
    EXPECT_FALSE(prompt.IsOpen());
    EXPECT_EQ(prompt.Feed("sA.x = s"), Lines());
    EXPECT_TRUE(prompt.IsOpen());
    EXPECT_EQ(prompt.Text(), "A.x = s");
    EXPECT_EQ(prompt.Feed("1\n"), Lines{"A.x = s1"});
    EXPECT_FALSE(prompt.IsOpen());
    EXPECT_EQ(prompt.Feed(":B.y=2\r:C.z=3\rs"), (Lines{"B.y=2", "C.z=3"}));
    EXPECT_EQ(prompt.Text(), "");
}

TEST(PromptLine, AnEmptyLineIsIgnored) {
    PromptLine prompt({});
    EXPECT_EQ(prompt.Feed("s\r"), Lines());
    EXPECT_FALSE(prompt.IsOpen());
}

TEST(PromptLine, BackspaceControlUAndEscapeDelete) {
    PromptLine prompt({});
    prompt.Feed("sa\xC3\xA4\x7F");
    EXPECT_EQ(prompt.Text(), "a");
    prompt.Feed("\b\b\b");
    EXPECT_EQ(prompt.Text(), "");
    prompt.Feed("abc\x15x");
    EXPECT_EQ(prompt.Text(), "x");
    prompt.Feed("\x1B");
    EXPECT_FALSE(prompt.IsOpen());
    prompt.Feed("s");
    EXPECT_EQ(prompt.Text(), "");
}

TEST(PromptLine, ControlSequencesAreNotText) {
    PromptLine prompt({});
    prompt.Feed("sa\x1B[D\x1B[1;5Cb\x1BOP\x01");
    EXPECT_TRUE(prompt.IsOpen());
    EXPECT_EQ(prompt.Text(), "ab");
    prompt.Feed("\x1B[");
    EXPECT_EQ(prompt.Text(), "ab");
}

TEST(PromptLine, TabCompletesAsFarAsTheNamesAgree) {
    PromptLine prompt({"AHU.Setpoint", "AHU.Setback", "Meter.Reset"});
    prompt.Feed("sA\t");
    EXPECT_EQ(prompt.Text(), "AHU.Set");
    prompt.Feed("p\t");
    EXPECT_EQ(prompt.Text(), "AHU.Setpoint");
    prompt.Feed(" = 1\t");
    EXPECT_EQ(prompt.Text(), "AHU.Setpoint = 1");
    PromptLine none({});
    none.Feed("sx\t");
    EXPECT_EQ(none.Text(), "x");
}

TEST(PromptLine, IsBounded) {
    PromptLine prompt({});
    prompt.Feed("s" + std::string(10000, 'x'));
    EXPECT_EQ(prompt.Text().size(), 4096u);
}

class Input : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(pipe(ends), 0); }
    void TearDown() override {
        close(ends[0]);
        Close();
    }
    void Close() {
        if (ends[1] >= 0) {
            close(ends[1]);
        }
        ends[1] = -1;
    }
    void Send(std::string const& text) const {
        ASSERT_EQ(write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    int ends[2] = {-1, -1};
};

TEST_F(Input, GivesWholeLinesAndDoesNotWait) {
    LineInput input(ends[0]);
    EXPECT_EQ(input.Take(), Lines());
    Send("one\ntwo\nth");
    EXPECT_EQ(input.Take(), (Lines{"one", "two"}));
    Send("ree\n");
    EXPECT_EQ(input.Take(), Lines{"three"});
    EXPECT_EQ(input.Take(), Lines());
}

TEST_F(Input, TheLastLineNeedsNoLineEnd) {
    LineInput input(ends[0]);
    Send("one\ntwo");
    EXPECT_EQ(input.Take(), Lines{"one"});
    Close();
    EXPECT_EQ(input.Take(), Lines{"two"});
    EXPECT_EQ(input.Take(), Lines());
}

TEST_F(Input, ALongLineIsSplit) {
    LineInput input(ends[0]);
    fcntl(ends[1], F_SETPIPE_SZ, 1 << 20);
    Send(std::string(200000, 'x'));
    Close();
    std::size_t total = 0;
    for (std::string const& line : input.Take()) {
        EXPECT_LE(line.size(), 65536u + 4096u);
        total += line.size();
    }
    EXPECT_EQ(total, 200000u);
}

TEST(NoInput, GivesNothing) {
    EXPECT_EQ(LineInput(-1).Take(), Lines());
    LineInput closed(12345);
    EXPECT_EQ(closed.Take(), Lines());
}

}  // namespace
