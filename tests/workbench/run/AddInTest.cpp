#include "AddIn.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "TemporaryFolder.h"

namespace {

// A folder "bin" for programs.
class AddIn : public ::testing::Test {
protected:
    test::TemporaryFolder folder;
    std::string const bin = folder.Path() + "/bin/";

    AddIn() {
        std::filesystem::create_directories(bin);
        std::filesystem::create_directories(folder.Path() + "/lib/dorvel-bacnet");
    }
};

TEST_F(AddIn, IsFoundBesideTheProgram) {
    folder.Write("bin/dorvel_bacnet.so", "");
    folder.Write("lib/dorvel-bacnet/dorvel_bacnet.so", "");
    EXPECT_EQ(workbench::AddInBeside(bin), bin + "dorvel_bacnet.so");
}

TEST_F(AddIn, IsFoundWhereItIsInstalled) {
    folder.Write("lib/dorvel-bacnet/dorvel_bacnet.so", "");
    EXPECT_EQ(workbench::AddInBeside(bin), bin + "../lib/dorvel-bacnet/dorvel_bacnet.so");
}

TEST_F(AddIn, IsExpectedBesideTheProgramWhenItIsNowhere) {
    EXPECT_EQ(workbench::AddInBeside(bin), bin + "dorvel_bacnet.so");
}

}  // namespace
