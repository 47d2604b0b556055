#include "CsvText.h"

#include <gtest/gtest.h>

using workbench::CsvRow;
using workbench::CsvText;
using workbench::ReadCsv;

namespace {

// "line:text|line:text" for each row, with a line end after it; "# " before a comment, "! " for loose quotes.
std::string Shown(std::string const& csv) {
    std::string text;
    for (CsvRow const& row : ReadCsv(csv).rows) {
        text += row.isComment ? "# " : row.hasLooseQuotes ? "! " : "";
        for (auto const& field : row.fields) {
            text += (&field == row.fields.data() ? "" : "|") + std::to_string(field.line) + ":" + field.text;
        }
        text += "\n";
    }
    return text;
}

}  // namespace

TEST(CsvText, SeparatesFieldsAndRemovesBlanksAroundThem) {
    EXPECT_EQ(Shown("a; b c ;\n;;x"), "1:a|1:b c|1:\n2:|2:|2:x\n");
}

TEST(CsvText, FindsTheSeparatorThatMostLinesHave) {
    EXPECT_EQ(ReadCsv("a;b\n1,5;2\n").separator, ';');
    EXPECT_EQ(ReadCsv("a,b\n1,\"2;3\"\nx,y").separator, ',');
    EXPECT_EQ(ReadCsv("a\tb\n1,5\t2;\n3\t4").separator, '\t');
    EXPECT_EQ(ReadCsv("").separator, ';');
    EXPECT_EQ(ReadCsv("one, two; three").separator, ';');
}

TEST(CsvText, FindsTheSeparatorWithoutRegardToComments) {
    EXPECT_EQ(ReadCsv("# by X, Y\n #1, 2\n#3, 4\na;b,c\n").separator, ';');
}

TEST(CsvText, TakesTheSeparatorFromTheFirstLineOfASpreadsheetProgram) {
    EXPECT_EQ(Shown("sep=,\r\na,b;c\r\n"), "2:a|2:b;c\n");
    EXPECT_EQ(Shown("sep=\"\na;b"), "! 1:sep=\"\n2:a|2:b\n");
}

TEST(CsvText, CountsLinesWithEveryLineEnd) {
    EXPECT_EQ(Shown("a\r\n\r\nb\rc\n\n\nd"), "1:a\n3:b\n4:c\n7:d\n");
}

TEST(CsvText, LeavesOutLinesOfBlanks) {
    EXPECT_EQ(Shown("a\n \t \nb"), "1:a\n3:b\n");
}

TEST(CsvText, ReadsFieldsInQuotationMarks) {
    EXPECT_EQ(Shown("\"a;b\";\"say \"\"hi\"\"\";\"\"\nc"), "1:a;b|1:say \"hi\"|1:\n2:c\n");
}

TEST(CsvText, NamesTheLineInWhichAFieldBegins) {
    EXPECT_EQ(Shown("a;\"b\r\nc\nd\";e\nf"), "1:a|1:b\r\nc\nd|3:e\n4:f\n");
}

TEST(CsvText, ReadsAQuotationMarkThatIsNotClosedAsPartOfItsLine) {
    EXPECT_EQ(Shown("a;\"b\nc;d\ne;\"f\""), "! 1:a|1:\"b\n2:c|2:d\n3:e|3:f\n");
}

TEST(CsvText, ReadsAQuotationMarkWithinAFieldAsItIs) {
    EXPECT_EQ(Shown("\"a\";21\" pipe;b\nc;d"), "! 1:a|1:21\" pipe|1:b\n2:c|2:d\n");
}

TEST(CsvText, EndsAFieldInQuotationMarksAfter50Lines) {
    std::string text = "a;\"b\n";
    for (int i = 0; i < 60; ++i) {
        text += "c;d\n";
    }
    auto const rows = ReadCsv(text + "\";e\n").rows;
    ASSERT_EQ(rows.size(), 62u);
    EXPECT_TRUE(rows[0].hasLooseQuotes);
    EXPECT_EQ(rows[1].fields[1].text, "d");
    EXPECT_EQ(rows[1].Line(), 2u);
}

TEST(CsvText, MarksCommentsWhichEndWithTheirLine) {
    EXPECT_EQ(Shown("# it's \"so; \"x\na;b\n #c;\"d\"\n\"#e\";f"),
              "# 1:it's \"so|1:\"x\n2:a|2:b\n# 3:c|3:d\n# 4:e|4:f\n");
}
