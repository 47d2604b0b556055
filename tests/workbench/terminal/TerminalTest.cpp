#include "Terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "Signals.h"
#include "WakeEvent.h"

using namespace workbench;

namespace {

TEST(FramePainter, TheFirstFrameIsOnAnEmptyScreen) {
    FramePainter painter;
    EXPECT_EQ(painter.Paint({{"one", "two"}, {}}), "\x1B[2J\x1B[1;1Hone\x1B[2;1Htwo\x1B[?25l");
}

TEST(FramePainter, OnlyLinesThatDifferAreDrawnAgain) {
    FramePainter painter;
    painter.Paint({{"one", "two", "three"}, {}});
    EXPECT_EQ(painter.Paint({{"one", "two", "three"}, {}}), "\x1B[?25l");
    EXPECT_EQ(painter.Paint({{"one", "zwei", "three", "four"}, {}}),
              "\x1B[2;1H\x1B[Kzwei\x1B[4;1Hfour\x1B[?25l");
    EXPECT_EQ(painter.Paint({{"one"}, {}}), "\x1B[2;1H\x1B[K\x1B[3;1H\x1B[K\x1B[4;1H\x1B[K\x1B[?25l");
}

TEST(FramePainter, TheCursorIsWhereAPersonTypes) {
    FramePainter painter;
    painter.Paint({{"one"}, {}});
    EXPECT_EQ(painter.Paint({{"one"}, ScreenFrame::Place{4, 9}}), "\x1B[5;10H\x1B[?25h");
    EXPECT_EQ(painter.Paint({{"one"}, {}}), "\x1B[?25l");
}

TEST(FramePainter, AfterAChangeOfSizeTheScreenIsCleared) {
    FramePainter painter;
    painter.Paint({{"one"}, {}});
    painter.Clear();
    EXPECT_EQ(painter.Paint({{"one"}, {}}), "\x1B[2J\x1B[1;1Hone\x1B[?25l");
}

constexpr char Begins[] = "\x1B[?1049h\x1B[?25l\x1B[?1000h\x1B[?1006h";
constexpr char Ends[] = "\x1B[?1006l\x1B[?1000l\x1B[?25h\x1B[0m\x1B[?1049l";

// A pseudo-terminal of the system; person is its other side.
class PseudoTerminal : public testing::Test {
protected:
    void SetUp() override {
        person = posix_openpt(O_RDWR | O_NOCTTY);
        ASSERT_GE(person, 0);
        ASSERT_EQ(grantpt(person), 0);
        ASSERT_EQ(unlockpt(person), 0);
        program = open(ptsname(person), O_RDWR | O_NOCTTY);
        ASSERT_GE(program, 0);
    }
    void TearDown() override {
        close(program);
        close(person);
    }

    // What has been written since the last call. A mark is written after it, since the system may deliver
    // octets late.
    std::string Seen() const {
        static constexpr std::string_view mark = "<end>";
        EXPECT_EQ(write(program, mark.data(), mark.size()), static_cast<ssize_t>(mark.size()));
        std::string seen;
        while (seen.size() < mark.size() || seen.substr(seen.size() - mark.size()) != mark) {
            char text[4096];
            ssize_t const length = read(person, text, sizeof text);
            if (length <= 0) {
                ADD_FAILURE() << "the terminal is closed";
                return seen;
            }
            seen.append(text, static_cast<std::size_t>(length));
        }
        return seen.substr(0, seen.size() - mark.size());
    }
    termios Mode() const {
        termios mode{};
        tcgetattr(program, &mode);
        return mode;
    }
    bool Echoes() const { return (Mode().c_lflag & ECHO) != 0; }

    int person = -1;
    int program = -1;
};

TEST_F(PseudoTerminal, IsLeftAsItWas) {
    termios const before = Mode();
    {
        Terminal terminal(program, program);
        terminal.Begin();
        EXPECT_FALSE(Echoes());
        EXPECT_EQ(Seen(), Begins);
        terminal.Show({{"one", "", "two"}, {}});
        EXPECT_EQ(Seen(), "\x1B[2J\x1B[1;1Hone\x1B[2;1H\x1B[3;1Htwo\x1B[?25l");
    }
    termios const after = Mode();
    EXPECT_EQ(after.c_lflag, before.c_lflag);
    EXPECT_EQ(after.c_iflag, before.c_iflag);
    EXPECT_EQ(after.c_oflag, before.c_oflag);
    EXPECT_EQ(Seen(), std::string(Ends) + "one\r\r\ntwo\r\r\n") << "the last frame stays visible";
}

TEST_F(PseudoTerminal, ASuspendedProgramLeavesNoFrame) {
    Terminal terminal(program, program);
    terminal.Begin();
    terminal.Show({{"one"}, {}});
    Seen();
    terminal.Suspend();
    EXPECT_TRUE(Echoes());
    EXPECT_EQ(Seen(), Ends);
    terminal.Begin();
    EXPECT_FALSE(Echoes());
    EXPECT_EQ(Seen(), Begins);
    terminal.Show({{"one"}, {}});
    EXPECT_EQ(Seen(), "\x1B[2J\x1B[1;1Hone\x1B[?25l");
}

TEST_F(PseudoTerminal, ThatIsNotReadLosesFramesAndNobodyWaits) {
    {
        Terminal terminal(program, program);
        terminal.Begin();
        for (int i = 0; i < 1000; ++i) {
            terminal.Show({{std::string(4000, i % 2 == 0 ? 'a' : 'b')}, {}});
        }
        EXPECT_FALSE(terminal.End());
    }
    EXPECT_TRUE(Echoes());
    EXPECT_EQ(fcntl(program, F_GETFL) & O_NONBLOCK, 0) << "other programs share the handle";
}

TEST_F(PseudoTerminal, ThatIsReadAgainShowsTheNewestFrame) {
    Terminal terminal(program, program);
    terminal.Begin();
    for (int i = 0; i < 100; ++i) {
        terminal.Show({{std::string(4000, i % 2 == 0 ? 'a' : 'b')}, {}});
    }
    std::string seen;
    while (seen.find("newest") == std::string::npos) {
        terminal.Show({{"newest"}, {}});
        char text[4096];
        ssize_t const length = read(person, text, sizeof text);
        ASSERT_GT(length, 0);
        seen.append(text, static_cast<std::size_t>(length));
    }
    EXPECT_LT(seen.size(), 100 * 4000u);
}

TEST_F(PseudoTerminal, EndsOnce) {
    Terminal terminal(program, program);
    terminal.Begin();
    terminal.Begin();
    terminal.End();
    terminal.End();
    EXPECT_EQ(Seen(), std::string(Begins) + Ends);
    EXPECT_TRUE(Echoes());
}

TEST_F(PseudoTerminal, DeliversEachKeyAtOnce) {
    Terminal terminal(program, program);
    EXPECT_EQ(terminal.Keys(), "");
    terminal.Begin();
    EXPECT_EQ(terminal.Keys(), "");
    ASSERT_EQ(write(person, "sa", 2), 2);
    std::string keys;
    while (keys.size() < 2) {  // the system may deliver octets late
        keys += terminal.Keys();
    }
    EXPECT_EQ(keys, "sa");
    EXPECT_EQ(Seen(), Begins);
    terminal.End();
    ASSERT_EQ(write(person, "x\n", 2), 2);
    EXPECT_EQ(terminal.Keys(), "");
}

TEST_F(PseudoTerminal, AKeyEndsAWait) {
    Terminal terminal(program, program);
    terminal.Begin();
    EXPECT_FALSE(terminal.HasKeys());
    ASSERT_EQ(write(person, "s", 1), 1);
    terminal.Wait(-1, std::chrono::hours(1));
    EXPECT_TRUE(terminal.HasKeys());
    EXPECT_EQ(terminal.Keys(), "s");
}

TEST_F(PseudoTerminal, AnEventEndsAWait) {
    Terminal terminal(program, program);
    terminal.Begin();
    WakeEvent const event;
    EXPECT_FALSE(event.Take());
    event.Notify();
    event.Notify();
    terminal.Wait(event.Handle(), std::chrono::hours(1));
    EXPECT_TRUE(event.Take());
    EXPECT_FALSE(event.Take());
}

TEST_F(PseudoTerminal, ASignalHandlerCanEndIt) {
    Terminal terminal(program, program);
    terminal.Begin();
    Terminal::EndAtOnce();
    EXPECT_TRUE(Echoes());
    EXPECT_EQ(Seen(), std::string(Begins) + Ends);
    Terminal::EndAtOnce();
    EXPECT_EQ(Seen(), "");
}

TEST_F(PseudoTerminal, NothingIsWrittenWithoutBegin) {
    {
        Terminal terminal(program, program);
        terminal.Show({{"one"}, {}});
    }
    Terminal::EndAtOnce();
    EXPECT_EQ(Seen(), "");
}

TEST_F(PseudoTerminal, HasASizeAndColours) {
    winsize size{};
    size.ws_col = 101;
    size.ws_row = 37;
    ioctl(program, TIOCSWINSZ, &size);
    unsetenv("NO_COLOR");
    setenv("TERM", "xterm", 1);
    Terminal const terminal(program, program);
    EXPECT_EQ(terminal.Size().width, 101u);
    EXPECT_EQ(terminal.Size().height, 37u);
    EXPECT_TRUE(terminal.Size().colour);
    setenv("NO_COLOR", "1", 1);
    EXPECT_FALSE(terminal.Size().colour);
    unsetenv("NO_COLOR");
    setenv("TERM", "dumb", 1);
    EXPECT_FALSE(terminal.Size().colour);
    EXPECT_TRUE(terminal.IsForLines());
    setenv("TERM", "xterm", 1);
    EXPECT_FALSE(terminal.IsForLines());
    for (auto const& [columns, rows] : {std::pair(39, 24), std::pair(80, 7), std::pair(30, 5)}) {
        size.ws_col = static_cast<unsigned short>(columns);
        size.ws_row = static_cast<unsigned short>(rows);
        ioctl(program, TIOCSWINSZ, &size);
        EXPECT_TRUE(terminal.IsForLines()) << columns;
    }
    Terminal const none(-1, -1);
    EXPECT_EQ(none.Size().width, 80u);
    EXPECT_EQ(none.Size().height, 24u);
}

TEST(Signals, RequestTheEnd) {
    for (int const number : {SIGINT, SIGTERM, SIGHUP}) {
        Signals const signals(nullptr);
        EXPECT_FALSE(signals.IsStopRequested());
        raise(number);
        EXPECT_TRUE(signals.IsStopRequested());
    }
}

TEST(Signals, OfAWindowAndASuspensionAreReportedOnce) {
    Signals signals(nullptr);
    EXPECT_FALSE(signals.TakeResized());
    raise(SIGWINCH);
    raise(SIGTSTP);
    EXPECT_TRUE(signals.TakeResized());
    EXPECT_FALSE(signals.TakeResized());
    EXPECT_TRUE(signals.TakeSuspendRequest());
    EXPECT_FALSE(signals.TakeSuspendRequest());
    EXPECT_FALSE(signals.IsStopRequested());
}

TEST(Signals, AreRestored) {
    struct sigaction before {};
    struct sigaction after {};
    sigaction(SIGINT, nullptr, &before);
    { Signals const signals(nullptr); }
    sigaction(SIGINT, nullptr, &after);
    EXPECT_EQ(before.sa_handler, after.sa_handler);
}

TEST(Signals, ACrashCallsTheEmergencyFunctionFirst) {
    auto const crash = [] {
        Signals const signals([] {
            char const text[] = "restored\n";
            if (write(2, text, sizeof text - 1) < 0) {
                _exit(1);
            }
        });
        raise(SIGQUIT);
    };
    EXPECT_EXIT(crash(), testing::KilledBySignal(SIGQUIT), "restored");
}

TEST(Signals, TheSecondOneEndsTheProcessAtOnce) {
    auto const twice = [] {
        Signals const signals([] {
            char const text[] = "restored\n";
            if (write(2, text, sizeof text - 1) < 0) {
                _exit(1);
            }
        });
        raise(SIGINT);
        raise(SIGTERM);
    };
    EXPECT_EXIT(twice(), testing::ExitedWithCode(130), "restored");
}

}  // namespace
