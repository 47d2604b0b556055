#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <sstream>

#include "Projects.h"
#include "ReportPage.h"
#include "ReportSamples.h"
#include "VerifyJson.h"
#include "VerifyText.h"

using namespace test;
using namespace workbench;

namespace {

std::vector<std::string> Lines(std::string const& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::size_t Count(std::string const& text, std::string const& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

bool Has(std::string const& text, std::string const& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

TEST(VerifyReport, CountsVerdictsRemarksAndFindingsOfPointsAndBlocks) {
    SampleReport const sample;
    VerifyFigures const figures = FiguresOf(sample.report);
    EXPECT_EQ(figures.points, 3u);
    EXPECT_EQ(figures.findings, 2u);
    EXPECT_EQ(FindingsOf(sample.report.blocks[1]), 1u);
    EXPECT_EQ(SummaryText(sample.report),
              "3 points in 2 blocks: 1 agrees, 1 moving, 1 no such object; remarks: 1 in alarm; 2 findings");
}

TEST(VerifyReport, ADeviceThatHasNotAnsweredIsNotGivenAnInstance) {
    EXPECT_EQ(IdentityText({}), "the device has not identified itself");
    SampleReport const sample;
    EXPECT_EQ(
        IdentityText(sample.report.blocks[0].device),
        "device 1001 \"<script>alert(1)</script>\", Vendor, Model, firmware 1.0, software 2.0, revision 14");
}

TEST(VerifyJson, HasALineForEachVariableEachBlockAndTheSummary) {
    SampleReport const sample;
    std::string kinds;
    for (std::string const& line : Lines(VerifyJson(sample.report))) {
        rapidjson::Document document;
        ASSERT_FALSE(document.Parse(line.c_str()).HasParseError()) << line;
        kinds += std::string(document["kind"].GetString()) + " ";
    }
    EXPECT_EQ(kinds, "variable variable block variable block summary ");
}

TEST(VerifyJson, ValuesHaveTheirTypeAndWhatIsMissingIsNull) {
    SampleReport const sample;
    std::vector<std::string> const lines = Lines(VerifyJson(sample.report));
    EXPECT_TRUE(Has(lines[0],
                    R"("driver":21.5,"quality":"Good","device":"21.5","datatype":"Real","verdict":"agrees",)"
                    R"("finding":false,"explanation":"","rounds":{},"remarks":["in alarm"]})"))
        << lines[0];
    EXPECT_TRUE(Has(lines[1], R"("objectName":null)")) << lines[1];
    EXPECT_TRUE(Has(lines[1], R"("device":null)")) << lines[1];
    EXPECT_TRUE(Has(lines[3], R"("driver":18446744073709551615)")) << lines[3];
    EXPECT_TRUE(Has(lines[4], R"("device":null,"notes":[{"finding":true,"text":"another station answers"})"))
        << lines[4];
}

TEST(VerifyJson, ANumberThatJsonDoesNotHaveIsAText) {
    SampleReport sample;
    sample.report.blocks[0].points[0].driverVariant = Float(std::numeric_limits<float>::quiet_NaN());
    EXPECT_TRUE(Has(VerifyJson(sample.report), R"("driver":"nan")"));
    sample.report.blocks[0].points[0].driverVariant = Text("21.5");
    EXPECT_TRUE(Has(VerifyJson(sample.report), R"("driver":"21.5")"));
    sample.report.blocks[0].points[0].driverVariant = Boolean(true);
    EXPECT_TRUE(Has(VerifyJson(sample.report), R"("driver":true)"));
    sample.report.blocks[0].points[0].driverVariant = {};
    EXPECT_TRUE(Has(VerifyJson(sample.report), R"("driver":null)"));
}

TEST(VerifyText, HasOneLineForEachVariableAndTheCauseOfEachFinding) {
    SampleReport const sample;
    std::vector<std::string> const lines = Lines(VerifyText(sample.report, {}));
    ASSERT_EQ(lines.size(), 10u);
    EXPECT_EQ(lines[1].find("AHU  127.0.0.1:47808  device 1001"), 0u);
    EXPECT_TRUE(Has(lines[2], "21.5 degrees-celsius  agrees, in alarm")) << lines[2];
    EXPECT_TRUE(Has(lines[3], "no such object"));
    EXPECT_EQ(lines[4], "    object: unknown-object");
    EXPECT_EQ(lines[6], "  another station answers");
    EXPECT_TRUE(Has(lines[8], "analog-input 1 status-flags"));
    EXPECT_EQ(lines[9], SummaryText(sample.report));
}

TEST(VerifyText, TextsOfDevicesCannotControlTheTerminal) {
    SampleReport const sample;
    std::string const text = VerifyText(sample.report, {});
    EXPECT_FALSE(Has(text, "\x1B"));
    EXPECT_TRUE(Has(text, "line\\nbreak\\x1B[31m"));
}

TEST(VerifyText, ANarrowTerminalLeavesOutWhatTheDeviceSaysOfItself) {
    SampleReport const sample;
    EXPECT_TRUE(Has(VerifyText(sample.report, {}), "Description"));
    EXPECT_FALSE(Has(VerifyText(sample.report, {120, false}), "Description"));
    EXPECT_TRUE(Has(VerifyText(sample.report, {120, false}), "In the device"));
    EXPECT_FALSE(Has(VerifyText(sample.report, {60, false}), "In the device"));
}

TEST(VerifyText, ColoursAreOnlyUsedWhereTheyAreWanted) {
    SampleReport const sample;
    EXPECT_TRUE(Has(VerifyText(sample.report, {0, true}), "\x1B[31mno such object\x1B[0m"));
    EXPECT_FALSE(Has(VerifyText(sample.report, {0, false}), "\x1B["));
}

TEST(VerifyText, AnInterruptedRunSaysSo) {
    SampleReport sample;
    sample.report.isInterrupted = true;
    EXPECT_TRUE(Has(VerifyText(sample.report, {}), "Interrupted: what was done so far.\n"));
}

TEST(ReportPage, TextsOfDevicesAndProjectsHaveNoEffect) {
    SampleReport const sample;
    std::string const page = ReportPage(sample.report);
    for (char const* const forbidden : {"<script", "Chiller <b>", "Flags & more", "\"Supply\"", "\x1B"}) {
        EXPECT_FALSE(Has(page, forbidden)) << forbidden;
    }
    for (char const* const expected :
         {"&lt;script&gt;alert(1)&lt;/script&gt;", "Chiller &lt;b&gt;", "Flags &amp; more",
          "&quot;Supply&quot; &#39;air&#39;", "line\\nbreak"}) {
        EXPECT_TRUE(Has(page, expected)) << expected;
    }
}

TEST(ReportPage, LoadsNothingAndRunsNothing) {
    SampleReport const sample;
    std::string page = ReportPage(sample.report);
    std::transform(page.begin(), page.end(), page.begin(), [](unsigned char c) { return std::tolower(c); });
    for (char const* const forbidden :
         {"http", "<script", "<link", "<img", "<iframe", "@import", "url(", "src=", "onload", "javascript"}) {
        EXPECT_FALSE(Has(page, forbidden)) << forbidden;
    }
}

TEST(ReportPage, HasEveryPointFindingsFirstAndTheLegend) {
    SampleReport const sample;
    std::string const page = ReportPage(sample.report);
    for (char const* const expected :
         {"<h1>North wing</h1>", "plant.lua", "dorvel-workbench 1.2.3", "dorvel_bacnet.so", "2 findings",
          "Vendor", "firmware 1.0", "Supply air", "Missing", "another station answers",
          "reaches the same device", "Integrator: name and signature", "Client: name and signature",
          "@media print", "table-header-group"}) {
        EXPECT_TRUE(Has(page, expected)) << expected;
    }
    EXPECT_LT(page.find("<h2>Findings"), page.find("<h2>Devices"));
    EXPECT_EQ(Count(page, ">Missing"), 2u);  // among the findings, and in its block
    EXPECT_LT(page.rfind(">Missing"), page.rfind(">Supply air"));
    for (VerdictRow const& row : Verdicts()) {
        EXPECT_TRUE(Has(page, HtmlText(row.meaning))) << row.name;
    }
}

TEST(ReportPage, WithoutFindingsItSaysSo) {
    SampleReport sample;
    sample.report.blocks.pop_back();
    sample.report.blocks[0].points.pop_back();
    std::string const page = ReportPage(sample.report);
    EXPECT_TRUE(Has(page, "No findings"));
    EXPECT_FALSE(Has(page, "<tr class=\"bad\">"));
}

TEST(ReportPage, EveryElementThatIsOpenedIsClosed) {
    SampleReport const sample;
    std::string const page = ReportPage(sample.report);
    for (char const* const name :
         {"table", "thead", "tbody", "tr", "td", "th", "section", "div", "ul",   "li",   "span",
          "small", "h1",    "h2",    "h3", "p",  "dl", "dt",      "dd",  "main", "body", "html"}) {
        std::string const closing = std::string("</") + name + ">";
        std::size_t const open =
            Count(page, std::string("<") + name + ">") + Count(page, std::string("<") + name + " ");
        EXPECT_EQ(open, Count(page, closing)) << name;
    }
}
