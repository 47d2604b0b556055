#include "TextTable.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

TextTable Sample() {
    TextTable table({{"Object", 20, 0}, {"Value", 10, 0, true}, {"Empty", 10, 0}, {"Description", 30, 1}});
    table.Add({"analog-input 1", "21.5", "", "North side"});
    table.Add({"analog-input 12", "3", "", "South side"}, {"moves too fast"});
    return table;
}

TEST(TextTable, AlignsItsColumnsAndLeavesEmptyOnesOut) {
    EXPECT_EQ(
        "  Object           Value  Description\n"
        "  analog-input 1    21.5  North side\n"
        "  analog-input 12      3  South side\n"
        "    moves too fast\n",
        Sample().Text({}));
}

TEST(TextTable, LeavesOutAndThenCutsWhatATerminalHasNoRoomFor) {
    EXPECT_EQ(
        "  Object           Value\n"
        "  analog-input 1    21.5\n"
        "  analog-input 12      3\n"
        "    moves too fast\n",
        Sample().Text({30, false}));
    EXPECT_EQ(
        "  Object      Value\n"
        "  analog-in…   21.5\n"
        "  analog-in…      3\n"
        "    moves too fast\n",
        Sample().Text({19, false}));
}

TEST(TextTable, ShowsAnyOctets) {
    TextTable table({{"Name", 12}});
    table.Add({std::string(10000, 'x')});
    table.Add({"a\x1B[2J\nb"});
    table.Add({"\xFF\xFE"});
    EXPECT_EQ("  Name\n  xxxxxxxxxxx…\n  a\\x1B[2J\\nb\n  \xEF\xBF\xBD\xEF\xBF\xBD\n", table.Text({}));
}

TEST(TextTable, HasColoursWhereTheyAreWanted) {
    EXPECT_EQ("\x1B[2m  Object", Sample().Text({0, true}).substr(0, 12));
    EXPECT_NE(std::string::npos, Sample().Text({0, true}).find("\x1B[33mmoves too fast\x1B[0m"));
}

TEST(TabbedLine, KeepsItsColumnsWhateverTheTextsHave) {
    EXPECT_EQ("a\\tb\t\tc\\n\n", TabbedLine({"a\tb", "", "c\n"}));
}

}  // namespace
}  // namespace workbench
