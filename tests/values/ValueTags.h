#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

#include "CPropertyValue.h"
#include "CharacterStringValue.h"
#include "ComplexTag.h"
#include "Date.h"
#include "Exceptions.h"
#include "FakeStream.h"
#include "Hex.h"
#include "TagParser.h"
#include "Time.h"

// Conversions of values to and from octets for the tests of this folder.
namespace test {

// The constructed tag that wraps these octets in an acknowledgement.
inline std::unique_ptr<ComplexTag> Wrap(Octets const& contents) {
    Octets octets = Hex("3E") + contents + Hex("3F");
    FakeStream stream(octets);
    std::unique_ptr<TagBase> tag = TagParser::ReadTag(stream);
    if (stream.Available() != 0) {
        throw std::logic_error("the test's octets close their wrapper too early");
    }
    return std::unique_ptr<ComplexTag>(&dynamic_cast<ComplexTag&>(*tag.release()));
}

template <class Parser>
std::unique_ptr<CPropertyValue> ParseOctets(Octets const& contents) {
    return Parser().Parse(*Wrap(contents));
}

// The value that the parser reads from the octets, which must be of that class.
template <class Value, class Parser>
Value Read(std::string_view hex) {
    return dynamic_cast<Value&>(*ParseOctets<Parser>(Hex(hex)));
}

// The text that a parser of schedules reads from the octets.
template <class Parser>
std::string ReadText(std::string_view hex) {
    return Read<CharacterStringValue, Parser>(hex).GetValue();
}

// All tags of the value, either primitive or constructed, as octets.
inline Octets WrittenOctets(CPropertyValue const& value) {
    Octets octets;
    for (Tag const& tag : value.ToApplicationTags()) {
        octets = octets + tag.GetBytes();
    }
    if (octets.empty()) {
        for (std::unique_ptr<TagBase> const& tag : value.ToApplicationComplexTags()) {
            octets = octets + tag->GetBytes();
        }
    }
    return octets;
}

inline std::string Written(CPropertyValue const& value) {
    return ToHex(WrittenOctets(value));
}

inline int Compared(CPropertyValue const& left, CPropertyValue&& right) {
    return left.Compare(right);
}

// The fields as numbers, in their order.
inline std::string Text(Date const& date) {
    return std::to_string(date.year) + " " + std::to_string(date.month) + " " + std::to_string(date.day) +
           " " + std::to_string(date.weekday);
}
inline std::string Text(Time const& time) {
    return std::to_string(time.hour) + " " + std::to_string(time.minute) + " " + std::to_string(time.second) +
           " " + std::to_string(time.hundredths);
}

// The text of the exception that the call throws, which must be of exactly that class.
template <class Exception, class Call>
std::string Failure(Call&& call) {
    try {
        call();
    } catch (Exception const& exception) {
        return typeid(exception) == typeid(Exception) ? exception.what() : typeid(exception).name();
    }
    return "no failure";
}

// The text of the ParseException that the parser throws for the octets.
template <class Parser>
std::string ParseFailure(std::string_view hex) {
    return Failure<ParseException>([hex] { ParseOctets<Parser>(Hex(hex)); });
}

}  // namespace test
