// Device files that need too much time or memory or have control characters, and files that are not device
// files.
#include <gtest/gtest.h>

#include <string>

#include "DeviceFile.h"
#include "Mistake.h"
#include "TemporaryFolder.h"

namespace {

std::string MistakeOf(std::string const& text) {
    try {
        simulator::ParseDeviceFile("d.lua", text);
    } catch (simulator::Mistake const& found) {
        return found.what();
    }
    return "no mistake";
}

std::string MistakeInFile(std::string const& path) {
    try {
        simulator::LoadDeviceFiles({path});
    } catch (simulator::Mistake const& found) {
        return found.what();
    }
    return "no mistake";
}

// Lua that sets s to a text of 16 MB.
std::string const LongText = "local s = 'x' for i = 1, 24 do s = s .. s end ";

}  // namespace

TEST(DeviceFileLimits, LongWorkInFewInstructionsEnds) {
    EXPECT_EQ(MistakeOf(LongText + "while true do local t = s:upper() end"),
              "d.lua:1: the device file has run for 5000 ms, the limit, and has not ended");
}

TEST(DeviceFileLimits, ALongTextInManyPlacesIsAMistake) {
    EXPECT_EQ(MistakeOf(LongText +
                        "local t = {} for i = 1, 400000 do t[i] = s end device{instance = 1, objects = t}"),
              "d.lua:1: the script passes too much data");
}

TEST(DeviceFileLimits, ALongNameInManyPlacesIsAMistake) {
    EXPECT_EQ(MistakeOf(LongText + "local t = {} for i = 1, 99 do t[i] = {[s] = 1} end device{objects = t}"),
              "d.lua:1: the script passes too much data");
}

TEST(DeviceFileLimits, AMessageIsOneLineThatSteersNoTerminal) {
    EXPECT_EQ(MistakeOf("device{name = 'A\\nB\\27[2J\\127', instance = -1}").substr(0, 34),
              "d.lua:1: device A\\nB\\x1B[2J\\x7F: i");
    EXPECT_EQ(MistakeOf("error('a\\r\\nb')"), "d.lua:1: a\\r\\nb");
}

TEST(DeviceFileLimits, AMessageIsShort) {
    EXPECT_EQ(MistakeOf(LongText + "error(s)").size(), 503u);
    EXPECT_LE(MistakeOf("local s = '\\27' for i = 1, 12 do s = s .. s end error(s)").size(), 503u);
}

TEST(DeviceFileLimits, AFolderIsNoDeviceFile) {
    EXPECT_EQ(MistakeInFile("."), ".: cannot be read: Is a directory");
}

TEST(DeviceFileLimits, AFileWithoutEndIsNoDeviceFile) {
    EXPECT_EQ(MistakeInFile("/dev/zero"), "/dev/zero: has more than 16 MB");
}

TEST(DeviceFileLimits, ALongFileIsNoDeviceFile) {
    test::TemporaryFolder const folder;
    std::string const path = folder.Write("long.lua", std::string(16 * 1024 * 1024 + 1, ' '));
    EXPECT_EQ(MistakeInFile(path), path + ": has more than 16 MB");
}

TEST(DeviceFileLimits, AFileOfZeroesEndsInAMessage) {
    EXPECT_NE(MistakeOf(std::string(10, '\0')).find("unexpected symbol"), std::string::npos);
}

TEST(DeviceFileLimits, DeepNestingInTheTextIsAMistake) {
    EXPECT_NE(MistakeOf("local x = " + std::string(5000, '(')).find("overflow"), std::string::npos);
    EXPECT_NE(MistakeOf("local x = " + std::string(5000, '{')).find("overflow"), std::string::npos);
}
