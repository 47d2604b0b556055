#include "MetricsText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace workbench;

namespace {

constexpr char Replaced[] = "\xEF\xBF\xBD";

std::string Escaped(std::string const& value) {
    std::string const labels = MetricLabels({{"a", value}});
    return labels.substr(4, labels.size() - 6);
}

TEST(MetricsText, LabelsAreInBraces) {
    EXPECT_EQ(MetricLabels({}), "");
    EXPECT_EQ(MetricLabels({{"block", "AHU"}, {"unit", ""}}), R"({block="AHU",unit=""})");
}

TEST(MetricsText, ValuesOfLabelsAreEscaped) {
    EXPECT_EQ(Escaped("Supply air \xC2\xB0"
                      "C"),
              "Supply air \xC2\xB0"
              "C");
    EXPECT_EQ(Escaped(R"(a"b\c)"), R"(a\"b\\c)");
    EXPECT_EQ(Escaped("a\nb"), R"(a\nb)");
}

TEST(MetricsText, WhatIsNotTextBecomesTheReplacementCharacter) {
    EXPECT_EQ(Escaped(std::string("a\0b", 3)), std::string("a") + Replaced + "b");
    EXPECT_EQ(Escaped("\x1B[2J"), Replaced + std::string("[2J"));
    EXPECT_EQ(Escaped("\xFF\xC3"), std::string(Replaced) + Replaced);
    EXPECT_EQ(Escaped("\xED\xA0\x80").find('\xED'), std::string::npos);
    EXPECT_EQ(Escaped("\xC2\x85"), Replaced);
}

TEST(MetricsText, NumbersAreThoseOfPrometheus) {
    EXPECT_EQ(MetricNumber(21.5), "21.5");
    EXPECT_EQ(MetricNumber(1e30), "1e+30");
    EXPECT_EQ(MetricNumber(std::nan("")), "NaN");
    EXPECT_EQ(MetricNumber(std::numeric_limits<double>::infinity()), "+Inf");
    EXPECT_EQ(MetricNumber(-std::numeric_limits<double>::infinity()), "-Inf");
}

TEST(MetricsText, AMetricHasItsHeadOnceAndOnlyWithSamples) {
    MetricsText text;
    text.Begin(Metric::OutletUp);
    text.Begin(Metric::DatagramsSent);
    text.Add("", 7ULL);
    text.Add("{a=\"b\"}", 0.5);
    EXPECT_EQ(text.Take(),
              "# HELP dorvel_datagrams_sent_total Datagrams sent to devices.\n"
              "# TYPE dorvel_datagrams_sent_total counter\n"
              "dorvel_datagrams_sent_total 7\n"
              "dorvel_datagrams_sent_total{a=\"b\"} 0.5\n");
}

}  // namespace
