// A run and a check read a project with the same code: where a run ends at a mistake, the check has it too.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "CheckedText.h"
#include "Projects.h"

using namespace test;
using namespace workbench;

namespace {

// The mistakes that end a run, as it reports them.
std::vector<std::string> MistakesOfCheck(std::string const& text, tools::LuaLimits const& limits) {
    std::vector<std::string> mistakes;
    for (Finding const& finding : CheckProjectText("p.lua", text, {}, limits).findings) {
        if (finding.code < FindingCode::NotDecoded) {
            mistakes.push_back(Prefix(finding.where) + finding.Text());
        }
    }
    return mistakes;
}

bool IsAtALimit(std::string const& message) {
    return message.find("the limit") != std::string::npos || message.find("memory") != std::string::npos;
}

// A coroutine puts its place in front of a message.
bool EndsWith(std::string const& text, std::string const& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// Scripts of the corpus reach neither files nor programs, and cannot stay in Lua's library without end.
constexpr char Fence[] =
    "io, os, package, require, dofile, loadfile, print = nil "
    "string.find, string.match, string.gmatch, string.gsub, string.rep, table.move, table.concat = nil ";

TEST(SameMistakes, AreFoundByARunAndByACheck) {
    FakeAddIn const addIn;
    int loaded = 0;
    int refused = 0;
    for (auto const& entry : std::filesystem::directory_iterator(PROJECT_CORPUS)) {
        std::ifstream file(entry.path(), std::ios::binary);
        std::string const text = Fence + std::string(std::istreambuf_iterator<char>(file), {});
        std::string const mistake = MistakeIn(text, {}, QuickLimits());
        std::vector<std::string> const found = MistakesOfCheck(text, QuickLimits());
        if (IsAtALimit(mistake) || (!found.empty() && IsAtALimit(found.back()))) {
            continue;
        }
        if (mistake == "loaded") {
            ++loaded;
            EXPECT_EQ(found, std::vector<std::string>()) << entry.path();
        } else {
            ++refused;
            EXPECT_TRUE(std::any_of(found.begin(), found.end(),
                                    [&](std::string const& one) { return EndsWith(mistake, one); }))
                << entry.path() << ": " << mistake << "\n"
                << testing::PrintToString(found);
        }
    }
    EXPECT_GT(loaded, 5);
    EXPECT_GT(refused, 50);
}

}  // namespace
