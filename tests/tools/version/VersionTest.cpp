#include "Version.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

namespace {

TEST(Version, HasThreeNumbers) {
    EXPECT_TRUE(std::regex_match(tools::Version(), std::regex("[0-9]+\\.[0-9]+\\.[0-9]+")))
        << tools::Version();
}

TEST(Version, NamesACommitInTwelveDigitsOrSaysThatItIsUnknown) {
    EXPECT_TRUE(std::regex_match(tools::Commit(), std::regex("[0-9a-f]{12}(\\+changes)?|unknown")))
        << tools::Commit();
}

TEST(Version, OfAProgramBeginsWithItsName) {
    std::string const origin = std::string(tools::Commit()) == "unknown"
                                   ? "unknown commit"
                                   : std::string("commit ") + tools::Commit();
    EXPECT_EQ(tools::VersionText("bacnet-simulator"),
              std::string("bacnet-simulator ") + tools::Version() + " (" + origin + ")");
}

}  // namespace
