#include "Verdict.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "Printable.h"

using namespace workbench;

namespace {

// The rows between the marks of the document.
std::string Table(std::string const& name) {
    std::ifstream const stream(VERIFY_DOCUMENT);
    std::stringstream text;
    text << stream.rdbuf();
    std::string const begin = "<!-- " + name + ": begin -->\n\n";
    std::size_t const from = text.str().find(begin);
    std::size_t const to = text.str().find("\n<!-- " + name + ": end -->");
    return from == std::string::npos || to == std::string::npos
               ? std::string()
               : text.str().substr(from + begin.size(), to - from - begin.size());
}

}  // namespace

TEST(Verdict, TheTablesAreInTheOrderOfTheirNumbers) {
    for (std::size_t i = 0; i < Verdicts().size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(Verdicts()[i].verdict), i);
    }
    EXPECT_EQ(Verdicts().back().verdict, Verdict::NotVerified);
    for (std::size_t i = 0; i < Remarks().size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(Remarks()[i].remark), i);
    }
    EXPECT_EQ(Remarks().back().remark, Remark::LocalTime);
}

TEST(Verdict, OnlyAgreeingAndMovingValuesAreNoFindings) {
    for (VerdictRow const& row : Verdicts()) {
        EXPECT_EQ(row.isFinding, row.verdict != Verdict::Agrees && row.verdict != Verdict::Moving)
            << row.name;
    }
}

TEST(Verdict, TheDocumentHasTheTables) {
    std::string verdicts = "| Verdict | Finding | Meaning |\n|---|---|---|\n";
    for (VerdictRow const& row : Verdicts()) {
        verdicts += std::string("| `") + row.name + "` | " + (row.isFinding ? "yes" : "no") + " | " +
                    row.meaning + " |\n";
    }
    EXPECT_EQ(Table("verdicts"), verdicts);
    std::string remarks = "| Remark | Meaning |\n|---|---|\n";
    for (RemarkRow const& row : Remarks()) {
        remarks += std::string("| `") + row.name + "` | " + row.meaning + " |\n";
    }
    EXPECT_EQ(Table("remarks"), remarks);
}

TEST(Verdict, TheFourStatusFlagsAreRemarks) {
    EXPECT_EQ(RemarksOfFlags("0000"), std::vector<Remark>());
    EXPECT_EQ(RemarksOfFlags("1000"), std::vector<Remark>{Remark::InAlarm});
    EXPECT_EQ(RemarksOfFlags("0100"), std::vector<Remark>{Remark::Fault});
    EXPECT_EQ(RemarksOfFlags("0010"), std::vector<Remark>{Remark::Overridden});
    EXPECT_EQ(RemarksOfFlags("0001"), std::vector<Remark>{Remark::NotInService});
    EXPECT_EQ(RemarksOfFlags("11").size(), 2u);
    EXPECT_EQ(RemarksOfFlags("00001111"), std::vector<Remark>());
    EXPECT_EQ(RemarksOfFlags(""), std::vector<Remark>());
}
