#include "Text.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <system_error>
#include <type_traits>

namespace text {
namespace {

bool EqualsIgnoringCase(std::string_view text, std::string_view small) {
    if (text.size() != small.size()) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i] >= 'A' && text[i] <= 'Z' ? static_cast<char>(text[i] - 'A' + 'a') : text[i];
        if (c != small[i]) {
            return false;
        }
    }
    return true;
}

// from_chars does not accept a leading plus.
std::string_view WithoutPlus(std::string_view text) {
    return text.size() > 1 && text[0] == '+' && text[1] != '-' ? text.substr(1) : text;
}

OpcUa_StatusCode StatusOf(std::from_chars_result const& result, std::string_view text) {
    if (result.ec == std::errc::invalid_argument || result.ptr != text.data() + text.size()) {
        return OpcUa_BadTypeMismatch;
    }
    return result.ec == std::errc() ? OpcUa_Good : OpcUa_BadOutOfRange;
}

template <class T>
OpcUa_StatusCode ReadInteger(std::string_view text, T& value) {
    text = WithoutPlus(Trim(text));
    if (std::is_unsigned_v<T> && text.size() > 1 && text[0] == '-') {
        // The only negative number of an unsigned type is -0.
        unsigned long long magnitude = 0;
        text.remove_prefix(1);
        OpcUa_StatusCode const status =
            IsDigit(text[0]) ? ReadInteger(text, magnitude) : OpcUa_BadTypeMismatch;
        if (status == OpcUa_BadTypeMismatch) {
            return status;
        }
        if (status != OpcUa_Good || magnitude != 0) {
            return OpcUa_BadOutOfRange;
        }
        value = 0;
        return OpcUa_Good;
    }
    T number{};
    OpcUa_StatusCode const status =
        StatusOf(std::from_chars(text.data(), text.data() + text.size(), number), text);
    if (status == OpcUa_Good) {
        value = number;
    }
    return status;
}

template <class T>
struct NamedNumber {
    std::string_view name;
    T value;
};

template <class T>
constexpr NamedNumber<T> NamedNumbers[] = {{"INF", std::numeric_limits<T>::infinity()},
                                           {"+INF", std::numeric_limits<T>::infinity()},
                                           {"-INF", -std::numeric_limits<T>::infinity()},
                                           {"NaN", std::numeric_limits<T>::quiet_NaN()}};

template <class T>
OpcUa_StatusCode ReadFloating(std::string_view text, T& value) {
    text = Trim(text);
    for (auto const& named : NamedNumbers<T>) {
        if (text == named.name) {
            value = named.value;
            return OpcUa_Good;
        }
    }
    text = WithoutPlus(text);
    // from_chars accepts other names for infinity and NaN.
    if (text.find_first_not_of("0123456789+-.eE") != std::string_view::npos) {
        return OpcUa_BadTypeMismatch;
    }
    T number{};
    OpcUa_StatusCode const status =
        StatusOf(std::from_chars(text.data(), text.data() + text.size(), number), text);
    if (status == OpcUa_Good) {
        value = number;
    }
    return status;
}

template <class T>
std::string WriteNumber(T value) {
    char buffer[32];  // the longest is a double of 24 characters
    return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

template <class T>
std::string WriteFloating(T value) {
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return value > 0 ? "INF" : "-INF";
    }
    return WriteNumber(value);
}

int Nibble(char digit) {
    if (IsDigit(digit)) {
        return digit - '0';
    }
    if (digit >= 'a' && digit <= 'f') {
        return digit - 'a' + 10;
    }
    return digit >= 'A' && digit <= 'F' ? digit - 'A' + 10 : -1;
}

}  // namespace

std::string_view Trim(std::string_view text) {
    constexpr std::string_view space = " \t\r\n";
    auto const first = text.find_first_not_of(space);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(space) - first + 1);
}

OpcUa_StatusCode Read(std::string_view text, bool& value) {
    text = Trim(text);
    bool const isTrue = text == "1" || EqualsIgnoringCase(text, "true");
    if (!isTrue && text != "0" && !EqualsIgnoringCase(text, "false")) {
        return OpcUa_BadTypeMismatch;
    }
    value = isTrue;
    return OpcUa_Good;
}

OpcUa_StatusCode Read(std::string_view text, signed char& value) {
    return ReadInteger(text, value);
}
OpcUa_StatusCode Read(std::string_view text, unsigned char& value) {
    return ReadInteger(text, value);
}
OpcUa_StatusCode Read(std::string_view text, short& value) {
    return ReadInteger(text, value);
}
OpcUa_StatusCode Read(std::string_view text, unsigned short& value) {
    return ReadInteger(text, value);
}
OpcUa_StatusCode Read(std::string_view text, int& value) {
    return ReadInteger(text, value);
}
OpcUa_StatusCode Read(std::string_view text, unsigned int& value) {
    return ReadInteger(text, value);
}
OpcUa_StatusCode Read(std::string_view text, long long& value) {
    return ReadInteger(text, value);
}
OpcUa_StatusCode Read(std::string_view text, unsigned long long& value) {
    return ReadInteger(text, value);
}
OpcUa_StatusCode Read(std::string_view text, float& value) {
    return ReadFloating(text, value);
}
OpcUa_StatusCode Read(std::string_view text, double& value) {
    return ReadFloating(text, value);
}

std::string Write(bool value) {
    return value ? "true" : "false";
}
std::string Write(signed char value) {
    return WriteNumber(value);
}
std::string Write(unsigned char value) {
    return WriteNumber(value);
}
std::string Write(short value) {
    return WriteNumber(value);
}
std::string Write(unsigned short value) {
    return WriteNumber(value);
}
std::string Write(int value) {
    return WriteNumber(value);
}
std::string Write(unsigned int value) {
    return WriteNumber(value);
}
std::string Write(long long value) {
    return WriteNumber(value);
}
std::string Write(unsigned long long value) {
    return WriteNumber(value);
}
std::string Write(float value) {
    return WriteFloating(value);
}
std::string Write(double value) {
    return WriteFloating(value);
}

OpcUa_StatusCode ReadOctets(std::string_view text, std::string& octets) {
    text = Trim(text);
    if (text.size() % 2 != 0) {
        return OpcUa_BadTypeMismatch;
    }
    std::string result;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        int const high = Nibble(text[i]);
        int const low = Nibble(text[i + 1]);
        if (high < 0 || low < 0) {
            return OpcUa_BadTypeMismatch;
        }
        result += static_cast<char>(high * 16 + low);
    }
    octets = std::move(result);
    return OpcUa_Good;
}

std::string WriteOctets(std::string_view octets) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string result;
    for (char const c : octets) {
        auto const octet = static_cast<unsigned char>(c);
        result += digits[octet >> 4];
        result += digits[octet & 15];
    }
    return result;
}

}  // namespace text
