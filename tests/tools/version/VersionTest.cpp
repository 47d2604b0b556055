#include "Version.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

TEST(Version, HasThreeNumbers) {
    std::string const version = tools::Version();
    EXPECT_EQ(version.find_first_not_of("0123456789."), std::string::npos) << version;
    EXPECT_EQ(std::count(version.begin(), version.end(), '.'), 2) << version;
    EXPECT_EQ(version.find(".."), std::string::npos) << version;
    EXPECT_TRUE(version.front() != '.' && version.back() != '.') << version;
}

TEST(Version, NamesACommitInTwelveDigitsOrSaysThatItIsUnknown) {
    std::string const commit = tools::Commit();
    std::size_t const digits = std::min(commit.find_first_not_of("0123456789abcdef"), commit.size());
    bool const isCommit = digits == 12 && (commit.size() == 12 || commit.substr(12) == "+changes");
    EXPECT_TRUE(isCommit || commit == "unknown") << commit;
}

TEST(Version, OfAProgramBeginsWithItsName) {
    std::string const origin = std::string(tools::Commit()) == "unknown"
                                   ? "unknown commit"
                                   : std::string("commit ") + tools::Commit();
    EXPECT_EQ(tools::VersionText("bacnet-simulator"),
              std::string("bacnet-simulator ") + tools::Version() + " (" + origin + ")");
}

}  // namespace
