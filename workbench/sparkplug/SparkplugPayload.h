#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace workbench {

// The data types of Sparkplug B that the workbench uses, by their numbers there.
enum class SparkplugType : std::uint32_t {
    Unknown = 0,
    Int8 = 1,
    Int16 = 2,
    Int32 = 3,
    Int64 = 4,
    UInt8 = 5,
    UInt16 = 6,
    UInt32 = 7,
    UInt64 = 8,
    Float = 9,
    Double = 10,
    Boolean = 11,
    String = 12,
    DateTime = 13,
    Text = 14,
    Bytes = 17
};

struct SparkplugBytes {
    std::string octets;
};

// The field of the payload that has the value: int_value, long_value and so on. None without a value.
using SparkplugValue = std::variant<std::monostate, std::uint32_t, std::uint64_t, float, double, bool,
                                    std::string, SparkplugBytes>;

struct SparkplugProperty {
    std::string key;
    SparkplugType type = SparkplugType::Unknown;
    SparkplugValue value;  // not of octets
};

struct SparkplugMetric {
    std::string name;  // empty: only an alias is sent
    std::optional<std::uint64_t> alias;
    std::optional<std::uint64_t> timestamp;  // milliseconds since 1970, UTC
    SparkplugType type = SparkplugType::Unknown;
    bool isNull = false;
    SparkplugValue value;
    std::vector<SparkplugProperty> properties;
};

struct SparkplugPayload {
    std::optional<std::uint64_t> timestamp;  // as of a metric
    std::optional<std::uint64_t> seq;        // 0 to 255; none in deaths of a node and in commands
    std::vector<SparkplugMetric> metrics;
};

// The octets of a payload. Texts must be valid UTF-8.
std::string EncodePayload(SparkplugPayload const& payload);

// Octets and metrics of a command that are read at most.
constexpr std::size_t LongestCommand = 65536;
constexpr std::size_t MostCommandMetrics = 1000;

// The payload of a command, without the properties of its metrics. None if it is longer, if it has more
// metrics, or if its octets are not those of a payload. Texts need not be UTF-8.
std::optional<SparkplugPayload> DecodePayload(std::string_view octets);

}  // namespace workbench
