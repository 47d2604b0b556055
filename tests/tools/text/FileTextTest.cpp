#include "FileText.h"

#include <gtest/gtest.h>

#include "TemporaryFolder.h"

using namespace tools;

namespace {

class FileTextTest : public testing::Test {
protected:
    static std::string Mistake(std::string const& path) {
        try {
            FileText(path, 1);
        } catch (UnreadableFile const& reason) {
            return reason.what();
        }
        return "read";
    }

    test::TemporaryFolder const folder;
};

TEST_F(FileTextTest, IsTheWholeContent) {
    std::string const content("a\0\r\n\xFF", 5);
    EXPECT_EQ(FileText(folder.Write("content", content), 1), content);
    EXPECT_EQ(FileText(folder.Write("empty", ""), 1), "");
}

TEST_F(FileTextTest, AFileMayHaveAsManyOctetsAsTheLimit) {
    std::string const largest(std::size_t{1} << 20, ' ');
    EXPECT_EQ(FileText(folder.Write("largest", largest), 1).size(), largest.size());
    std::string const path = folder.Write("larger", largest + " ");
    EXPECT_EQ(Mistake(path), path + ": has more than 1 MB");
    EXPECT_EQ(Mistake("/dev/zero"), "/dev/zero: has more than 1 MB");
}

TEST_F(FileTextTest, WhatCannotBeReadIsReportedWithTheReason) {
    EXPECT_EQ(Mistake("/no/such/file"), "/no/such/file: cannot be read: No such file or directory");
    EXPECT_EQ(Mistake("."), ".: cannot be read: Is a directory");
}

}  // namespace
