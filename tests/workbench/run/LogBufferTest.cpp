#include "LogBuffer.h"

#include <gtest/gtest.h>

#include <sstream>
#include <thread>

using namespace workbench;

namespace {

using Lines = std::vector<std::string>;

TEST(LogBuffer, AListenerGetsEveryLine) {
    std::vector<std::string> heard;
    LogBuffer log(nullptr);
    log.SetListener([&](std::string const& line) { heard.push_back(line); });
    log.Add("one\ntwo");
    log.SetListener({});
    log.Add("three");
    EXPECT_EQ(heard, (std::vector<std::string>{"one", "two"}));
}

TEST(LogBuffer, ATextIsALineHoweverItEnds) {
    LogBuffer log(nullptr);
    log.Add("read start\n");
    log.Add("value : 5\n\r");
    log.Add("Incorrect IP address");
    log.Add("Error create device for poll\n");
    EXPECT_EQ(log.Lines(),
              (Lines{"read start", "value : 5", "Incorrect IP address", "Error create device for poll"}));
}

TEST(LogBuffer, ATextMayHaveSeveralLines) {
    LogBuffer log(nullptr);
    log.Add("one\r\ntwo\n\nthree");
    log.Add("");
    log.Add("\n");
    EXPECT_EQ(log.Lines(), (Lines{"one", "two", "three"}));
}

TEST(LogBuffer, EachLineGoesToTheStreamAsOneLine) {
    std::ostringstream stream;
    LogBuffer log(&stream);
    log.Add("a\x1B[2Jb");
    log.Add("c\n");
    EXPECT_EQ(stream.str(), "a\\x1B[2Jb\nc\n");
}

TEST(LogBuffer, KeepsTheNewestLines) {
    LogBuffer log(nullptr);
    for (int i = 0; i < 1000; ++i) {
        log.Add(std::to_string(i));
    }
    EXPECT_EQ(log.Lines().size(), 50u);
    EXPECT_EQ(log.Lines().front(), "950");
    EXPECT_EQ(log.Lines().back(), "999");
}

TEST(LogBuffer, ThreadsDoNotTearLines) {
    std::ostringstream stream;
    LogBuffer log(&stream);
    auto const write = [&log] {
        for (int i = 0; i < 200; ++i) {
            log.Add("a whole line\n");
        }
    };
    std::thread other(write);
    write();
    other.join();
    std::istringstream lines(stream.str());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        EXPECT_EQ(line, "a whole line");
    }
    EXPECT_EQ(count, 400);
}

}  // namespace
