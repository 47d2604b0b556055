#include "LineInput.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>

using namespace workbench;

namespace {

using Lines = std::vector<std::string>;

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
