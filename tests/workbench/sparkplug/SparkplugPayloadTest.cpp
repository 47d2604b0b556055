#include "SparkplugPayload.h"

#include <gtest/gtest.h>

#include <random>

#include "Hex.h"
#include "WireFields.h"

using namespace test;
using namespace workbench;

namespace {

std::string Encoded(SparkplugMetric const& metric) {
    SparkplugPayload payload;
    payload.metrics = {metric};
    std::string const octets = EncodePayload(payload);
    return ToHex({octets.begin(), octets.end()});
}

SparkplugMetric MetricOf(SparkplugType type, SparkplugValue value) {
    SparkplugMetric metric;
    metric.type = type;
    metric.value = std::move(value);
    return metric;
}

std::optional<SparkplugPayload> Decoded(std::string_view hex) {
    Octets const octets = Hex(hex);
    return DecodePayload({octets.data(), octets.size()});
}

TEST(SparkplugPayload, HasTheFieldsInTheirOrder) {
    SparkplugPayload payload;
    payload.timestamp = 1;
    payload.seq = 7;
    SparkplugMetric metric = MetricOf(SparkplugType::Float, 21.5F);
    metric.name = "T";
    metric.alias = 5;
    metric.timestamp = 300;
    payload.metrics = {metric};
    std::string const octets = EncodePayload(payload);
    EXPECT_EQ(ToHex({octets.begin(), octets.end()}),
              "08 01 12 0F 0A 01 54 10 05 18 AC 02 20 09 65 00 00 AC 41 18 07");
}

TEST(SparkplugPayload, HasEachKindOfValueInItsField) {
    EXPECT_EQ(Encoded(MetricOf(SparkplugType::Int32, 0xFFFFFFFFU)), "12 08 20 03 50 FF FF FF FF 0F");
    EXPECT_EQ(Encoded(MetricOf(SparkplugType::Int64, std::uint64_t{300})), "12 05 20 04 58 AC 02");
    EXPECT_EQ(Encoded(MetricOf(SparkplugType::Double, 1.0)), "12 0B 20 0A 69 00 00 00 00 00 00 F0 3F");
    EXPECT_EQ(Encoded(MetricOf(SparkplugType::Boolean, false)), "12 04 20 0B 70 00");
    EXPECT_EQ(Encoded(MetricOf(SparkplugType::String, std::string("ab"))), "12 06 20 0C 7A 02 61 62");
    EXPECT_EQ(Encoded(MetricOf(SparkplugType::Bytes, SparkplugBytes{"\x01\xFF"})),
              "12 07 20 11 82 01 02 01 FF");
}

TEST(SparkplugPayload, MarksNullAndHasNoValueThen) {
    SparkplugMetric metric = MetricOf(SparkplugType::Float, {});
    metric.isNull = true;
    EXPECT_EQ(Encoded(metric), "12 04 20 09 38 01");
}

TEST(SparkplugPayload, HasPropertiesAsKeysAndValues) {
    SparkplugMetric metric;
    metric.alias = 1;
    metric.properties = {{"Quality", SparkplugType::Int32, std::uint32_t{192}},
                         {"u", SparkplugType::String, std::string("K")}};
    EXPECT_EQ(
        Encoded(metric),
        "12 1E 10 01 4A 1A 0A 07 51 75 61 6C 69 74 79 0A 01 75 12 05 08 03 18 C0 01 12 05 08 0C 42 01 4B");
}

TEST(SparkplugPayload, IsReadAsItWasWritten) {
    auto const payload = Decoded("08 01 12 0F 0A 01 54 10 05 18 AC 02 20 09 65 00 00 AC 41 18 07");
    ASSERT_TRUE(payload);
    EXPECT_EQ(payload->timestamp, 1U);
    EXPECT_EQ(payload->seq, 7U);
    ASSERT_EQ(payload->metrics.size(), 1U);
    SparkplugMetric const& metric = payload->metrics.front();
    EXPECT_EQ(metric.name, "T");
    EXPECT_EQ(metric.alias, 5U);
    EXPECT_EQ(metric.timestamp, 300U);
    EXPECT_EQ(metric.type, SparkplugType::Float);
    EXPECT_FALSE(metric.isNull);
    EXPECT_EQ(std::get<float>(metric.value), 21.5F);
}

// A data set (17), meta data (8), a uuid (4) and a body (5).
TEST(SparkplugPayload, SkipsFieldsThatItDoesNotRead) {
    auto const payload = Decoded("12 0B 42 02 08 01 50 03 8A 01 02 08 02 22 01 61 2A 01 62");
    ASSERT_TRUE(payload);
    ASSERT_EQ(payload->metrics.size(), 1U);
    EXPECT_EQ(std::get<std::uint32_t>(payload->metrics.front().value), 3U);
}

TEST(SparkplugPayload, IsNotReadWhenItIsMalformed) {
    EXPECT_TRUE(Decoded(""));
    EXPECT_FALSE(Decoded("08"));
    EXPECT_FALSE(Decoded("12 05 20"));
    EXPECT_FALSE(Decoded("0F"));
    EXPECT_FALSE(Decoded("00 01"));
    EXPECT_FALSE(Decoded("08 FF FF FF FF FF FF FF FF FF FF 01"));
}

TEST(SparkplugPayload, IsNotReadBeyondItsLimits) {
    std::string const longest = std::string("\x0A\xFC\xFF\x03", 4) + std::string(65532, 'x');
    ASSERT_EQ(longest.size(), LongestCommand);
    // Field 1 is a number; octets there are skipped.
    EXPECT_TRUE(DecodePayload(longest));
    EXPECT_FALSE(DecodePayload(std::string(LongestCommand + 1, '\0')));
    std::string metrics;
    for (std::size_t i = 0; i < MostCommandMetrics; ++i) {
        metrics += std::string("\x12\x00", 2);
    }
    EXPECT_TRUE(DecodePayload(metrics));
    EXPECT_FALSE(DecodePayload(metrics + std::string("\x12\x00", 2)));
}

TEST(SparkplugPayload, IsReadOrRefusedWhateverItsOctets) {
    std::mt19937 random(16);
    Octets const good = Hex("08 01 12 0F 0A 01 54 10 05 18 AC 02 20 09 65 00 00 AC 41 18 07");
    std::size_t read = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string octets(good.begin(), good.end());
        for (unsigned changes = random() % 4; changes > 0; --changes) {
            octets[random() % octets.size()] = static_cast<char>(random());
        }
        octets.resize(random() % (octets.size() + 4), static_cast<char>(random()));
        auto const payload = DecodePayload(octets);
        if (payload) {
            ++read;
            EXPECT_TRUE(DecodePayload(EncodePayload(*payload)));
        }
    }
    EXPECT_GT(read, 100U);
    EXPECT_LT(read, 19900U);
}

}  // namespace
