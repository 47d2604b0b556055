#include "dorvelshare/Trace.h"

#include <gtest/gtest.h>

#include <thread>

#include "LogCapture.h"

using test::LogCapture;

TEST(Trace, LogMsgFormats) {
    LogCapture const log;
    logMsg("value : %u of %s\n", 7u, "ten");
    EXPECT_EQ(log.Text(), "value : 7 of ten\n");
}

TEST(Trace, LogMsgAddsNoLineEnd) {
    LogCapture const log;
    logMsg("Incorrect IP address");
    EXPECT_EQ(log.Text(), "Incorrect IP address");
}

TEST(Trace, LogMsgTakesTextsOfAnyLength) {
    LogCapture const log;
    std::string const longText(100'000, 'x');
    logMsg("%s|", longText.c_str());
    EXPECT_EQ(log.Text(), longText + "|");
}

TEST(Trace, LogMsgOfAnEmptyTextLogsNothing) {
    LogCapture const log;
    logMsg("%s", "");
    EXPECT_EQ(log.Text(), "");
}

TEST(Trace, LogMsgLnTakesNoFormat) {
    LogCapture const log;
    logMsgLn("100%s");
    EXPECT_EQ(log.Text(), "100%s\n");
}

TEST(Trace, TheUserTraceCanBeEnabled) {
    LogCapture log;
    EXPECT_FALSE(IsEnableUserTrace());
    log.EnableTrace();
    EXPECT_TRUE(IsEnableUserTrace());
}

TEST(Trace, ErrorsOfTheRuntimeAreAlwaysLogged) {
    LogCapture const log;
    OpcUa_Trace_Imp(0x20, "file.cpp", 12, "no %s", "luck");
    EXPECT_EQ(log.Text(), "file.cpp:12: no luck\n");
}

TEST(Trace, OtherLevelsNeedTheUserTrace) {
    LogCapture log;
    OpcUa_Trace_Imp(0x04, "file.cpp", 12, "quiet");
    EXPECT_EQ(log.Text(), "");
    log.EnableTrace();
    OpcUa_Trace_Imp(0x04, "file.cpp", 12, "loud");
    EXPECT_EQ(log.Text(), "file.cpp:12: loud\n");
}

TEST(Trace, SinksAreCalledOneAtATime) {
    int pieces = 0;  // not atomic, so that a race detector reports two calls at once
    dorvel::SetLogSink([&](std::string_view) { ++pieces; });
    auto const write = [] {
        for (int i = 0; i < 1000; ++i) {
            logMsg("%d", i);
        }
    };
    std::thread one(write);
    std::thread two(write);
    one.join();
    two.join();
    dorvel::SetLogSink(nullptr);
    EXPECT_EQ(pieces, 2000);
}
