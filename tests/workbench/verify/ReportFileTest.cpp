#include "ReportFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "TemporaryFolder.h"

using workbench::ReportFile;

namespace fs = std::filesystem;

namespace {

std::string Content(std::string const& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::size_t FilesIn(std::string const& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

std::string Refusal(std::string const& report, std::string const& project) {
    try {
        ReportFile const file(report, project);
    } catch (std::runtime_error const& reason) {
        return reason.what();
    }
    return "accepted";
}

}  // namespace

TEST(ReportFile, WhatIsThereStaysUntilThePageIsComplete) {
    test::TemporaryFolder const folder;
    std::string const path = folder.Write("r.html", "old");
    {
        ReportFile file(path, "p.lua");
        EXPECT_EQ(Content(path), "old");
        file.Write("new");
        EXPECT_EQ(Content(path), "new");
    }
    EXPECT_EQ(Content(path), "new");
    EXPECT_EQ(FilesIn(folder.Path()), 1u);
}

TEST(ReportFile, NothingIsLeftOfAPageThatWasNotWritten) {
    test::TemporaryFolder const folder;
    std::string const path = folder.Write("r.html", "old");
    { ReportFile const file(path, "p.lua"); }
    { ReportFile const file(folder.Path() + "/other.html", "p.lua"); }
    EXPECT_EQ(Content(path), "old");
    EXPECT_EQ(FilesIn(folder.Path()), 1u);
}

TEST(ReportFile, KeepsTheRightsOfWhatItReplacesAndTheLinkToIt) {
    test::TemporaryFolder const folder;
    std::string const path = folder.Write("r.html", "old");
    fs::permissions(path, fs::perms(0640));
    fs::create_symlink(path, folder.Path() + "/link");
    ReportFile(folder.Path() + "/link", "p.lua").Write("new");
    EXPECT_EQ(Content(path), "new");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
    EXPECT_TRUE(fs::is_symlink(folder.Path() + "/link"));
}

TEST(ReportFile, ADeviceIsWrittenAndNotReplaced) {
    ReportFile("/dev/null", "p.lua").Write("new");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(ReportFile, APageThatDoesNotFitIsAnError) {
    ReportFile file("/dev/full", "p.lua");
    EXPECT_THROW(file.Write("new"), std::runtime_error);
}

TEST(ReportFile, TheProjectAFolderAndAMissingFolderAreRefusedAtOnce) {
    test::TemporaryFolder const folder;
    std::string const project = folder.Write("p.lua", "Task{}");
    fs::create_hard_link(project, folder.Path() + "/same");
    for (std::string const& name : {project, folder.Path() + "/./p.lua", folder.Path() + "/same"}) {
        EXPECT_EQ(Refusal(name, project),
                  "--report " + name + ": this is the project itself; name another file");
    }
    EXPECT_EQ(Content(project), "Task{}");
    EXPECT_EQ(Refusal(folder.Path(), project), "--report " + folder.Path() +
                                                   ": this is a folder; name a file, such as " +
                                                   folder.Path() + "/report.html");
    EXPECT_EQ(Refusal("/nowhere/r.html", project),
              "--report /nowhere/r.html: the folder /nowhere cannot be written: No such file or directory");
}
