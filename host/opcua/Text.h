#pragma once

#include <string>
#include <string_view>

#include "opcua/OpcUa_Variant.h"

// The texts of values: the lexical forms of XML Schema, the same in every locale. Readers ignore white space
// at both ends. They return OpcUa_BadTypeMismatch for a text that is not such a value and OpcUa_BadOutOfRange
// for a value that does not fit; value is unchanged then.
namespace text {

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The text without white space at its ends.
std::string_view Trim(std::string_view text);

OpcUa_StatusCode Read(std::string_view text,
                      bool& value);  // "true", "false", "1", "0" in any case of letters
OpcUa_StatusCode Read(std::string_view text, signed char& value);
OpcUa_StatusCode Read(std::string_view text, unsigned char& value);
OpcUa_StatusCode Read(std::string_view text, short& value);
OpcUa_StatusCode Read(std::string_view text, unsigned short& value);
OpcUa_StatusCode Read(std::string_view text, int& value);
OpcUa_StatusCode Read(std::string_view text, unsigned int& value);
OpcUa_StatusCode Read(std::string_view text, long long& value);
OpcUa_StatusCode Read(std::string_view text, unsigned long long& value);
OpcUa_StatusCode Read(std::string_view text, float& value);  // with "INF", "-INF" and "NaN"
OpcUa_StatusCode Read(std::string_view text, double& value);

// xs:dateTime from 1601 on; without a time zone it is UTC. Digits below 100 nanoseconds are dropped.
OpcUa_StatusCode ReadFileTime(std::string_view text, long long& fileTime);
// Pairs of hexadecimal digits.
OpcUa_StatusCode ReadOctets(std::string_view text, std::string& octets);

std::string Write(bool value);
std::string Write(signed char value);
std::string Write(unsigned char value);
std::string Write(short value);
std::string Write(unsigned short value);
std::string Write(int value);
std::string Write(unsigned int value);
std::string Write(long long value);
std::string Write(unsigned long long value);
std::string Write(float value);  // the shortest text that reads back as the same value
std::string Write(double value);

// "2024-03-15T12:34:56.5Z"; fileTime is not negative.
std::string WriteFileTime(long long fileTime);
std::string WriteOctets(std::string_view octets);

}  // namespace text
