#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace workbench {

// The field Point of a variable: what point lists say of an object beyond what the other fields do. A text is
// empty where the project has none.
struct PointFields {
    std::string keyName;
    std::string objectName;    // where it differs from the name of the variable
    std::string defaultValue;  // of the present value: a text, or the text of a number or of a Boolean
    std::string vendorAddress;
    std::optional<double> minimum;
    std::optional<double> maximum;
    std::optional<double> highLimit;
    std::optional<double> lowLimit;
    std::optional<bool> settable;
    std::optional<bool> cov;
    std::optional<std::uint32_t> notificationClass;
};

// The most octets of a unit, of any other text of these fields, and the most state texts.
constexpr std::size_t LongestUnit = 255;
constexpr std::size_t LongestPointText = 65535;
constexpr std::size_t MostStateTexts = 5000;

}  // namespace workbench
