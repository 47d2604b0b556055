#include "WrittenPrimitive.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "BacnetObject.h"
#include "Calendar.h"
#include "Enumerations.h"
#include "OctetReader.h"
#include "Refusal.h"

namespace simulator {

namespace {

using Tag = ApplicationTag;

[[noreturn]] void fail(ErrorCode code) {
    throw ServiceError{ErrorClass::Property, code};
}

void expect(bool isSo, ErrorCode otherwise) {
    if (!isSo) {
        fail(otherwise);
    }
}

struct NumberRow {
    Tag tag;
    std::size_t shortest, longest;  // octets of contents
    double low, high;
    bool isWhole;
};

constexpr double kSingleLimit = std::numeric_limits<float>::max();
constexpr double kDoubleLimit = std::numeric_limits<double>::max();

constexpr NumberRow kNumbers[] = {
    {Tag::Boolean, 1, 1, 0, 1, true},
    {Tag::Unsigned, 1, 8, 0, 4294967295.0, true},
    {Tag::Signed, 1, 8, -2147483648.0, 2147483647.0, true},
    {Tag::Real, 4, 4, -kSingleLimit, kSingleLimit, false},
    {Tag::Double, 8, 8, -kDoubleLimit, kDoubleLimit, false},
    {Tag::Enumerated, 1, 8, 0, 65535, true},
};

NumberRow const* numberRow(Tag tag) {
    for (NumberRow const& row : kNumbers) {
        if (row.tag == tag) {
            return &row;
        }
    }
    return nullptr;
}

template <typename Target, typename Bits>
Target bitsAs(Bits bits) {
    static_assert(sizeof(Target) == sizeof(Bits));
    Target target;
    std::memcpy(&target, &bits, sizeof target);
    return target;
}

double signedNumber(std::uint64_t bits, std::size_t octets) {
    std::uint64_t const sign = std::uint64_t{1} << (8 * octets - 1);
    auto const extended = static_cast<std::int64_t>((bits ^ sign) - sign);
    return static_cast<double>(extended);
}

double numberOf(Primitive const& primitive, NumberRow const& row) {
    std::size_t const count = primitive.content.size();
    expect(count >= row.shortest, ErrorCode::InvalidDataType);
    expect(count <= row.longest,
           row.shortest == row.longest ? ErrorCode::InvalidDataType : ErrorCode::ValueOutOfRange);
    std::uint64_t const bits = OctetReader(primitive.content).bigEndian(count);
    switch (row.tag) {
        case Tag::Signed:
            return signedNumber(bits, count);
        case Tag::Real:
            return static_cast<double>(bitsAs<float>(static_cast<std::uint32_t>(bits)));
        case Tag::Double:
            return bitsAs<double>(bits);
        default:
            return static_cast<double>(bits);
    }
}

ValuePtr numberValue(double number, NumberRow const& row) {
    double const fitting = row.isWhole ? std::round(number) : number;
    // The comparison is false for what is not a number.
    expect(fitting >= row.low && fitting <= row.high, ErrorCode::ValueOutOfRange);
    TagWriter writer;
    MovingValue(std::make_shared<ConstantSignal>(fitting), row.tag).encode(writer, {});
    return std::make_shared<FixedValue>(writer.take(), fitting);
}

void checkText(Octets const& content) {
    constexpr char kUtf8 = 0;
    expect(!content.empty(), ErrorCode::InvalidDataType);
    expect(content[0] == kUtf8, ErrorCode::CharacterSetNotSupported);
}

void checkBits(Octets const& content) {
    expect(!content.empty(), ErrorCode::InvalidDataType);
    unsigned const unused = static_cast<unsigned char>(content[0]);
    expect(unused == 0 || (unused <= 7 && content.size() > 1), ErrorCode::InvalidDataType);
}

bool isWithin(char octet, unsigned low, unsigned high) {
    unsigned const number = static_cast<unsigned char>(octet);
    return number == kAny || (number >= low && number <= high);
}

void checkContent(Primitive const& primitive) {
    switch (primitive.tag) {
        case Tag::Null:
            return expect(primitive.content.empty(), ErrorCode::InvalidDataType);
        case Tag::CharacterString:
            return checkText(primitive.content);
        case Tag::BitString:
            return checkBits(primitive.content);
        case Tag::Date:
            return checkDate(primitive.content);
        case Tag::Time:
            return checkTime(primitive.content);
        case Tag::ObjectIdentifier:
            return expect(primitive.content.size() == 4, ErrorCode::InvalidDataType);
        default:
            return;
    }
}

struct TagRow {
    Datatype datatype;
    Tag tag;
};

constexpr TagRow kTags[] = {
    {Datatype::Boolean, Tag::Boolean},
    {Datatype::Unsigned, Tag::Unsigned},
    {Datatype::Signed, Tag::Signed},
    {Datatype::Real, Tag::Real},
    {Datatype::Double, Tag::Double},
    {Datatype::OctetString, Tag::OctetString},
    {Datatype::CharacterString, Tag::CharacterString},
    {Datatype::BitString, Tag::BitString},
    {Datatype::Date, Tag::Date},
    {Datatype::Time, Tag::Time},
};

Tag tagOf(Datatype datatype) {
    for (TagRow const& row : kTags) {
        if (row.datatype == datatype) {
            return row.tag;
        }
    }
    expect(isEnumeration(datatype), ErrorCode::InvalidDataType);
    return Tag::Enumerated;
}

}  // namespace

ValuePtr writtenAny(Primitive const& primitive) {
    if (NumberRow const* const row = numberRow(primitive.tag)) {
        return numberValue(numberOf(primitive, *row), *row);
    }
    checkContent(primitive);
    TagWriter writer;
    writer.application(primitive.tag, primitive.content);
    return std::make_shared<FixedValue>(writer.take());
}

ValuePtr writtenAs(Datatype datatype, Primitive const& primitive, bool isLenient) {
    Tag const wanted = tagOf(datatype);
    NumberRow const* const from = numberRow(primitive.tag);
    NumberRow const* const to = numberRow(wanted);
    bool const isConverted = isLenient && from && to;
    expect(primitive.tag == wanted || isConverted, ErrorCode::InvalidDataType);
    ValuePtr value = from ? numberValue(numberOf(primitive, *from), *to) : writtenAny(primitive);
    if (wanted == Tag::Enumerated) {
        expect(isEnumerated(datatype, static_cast<std::uint32_t>(value->number({}))),
               ErrorCode::ValueOutOfRange);
    }
    return value;
}

// Months 13 and 14 are the odd and the even ones, days 32 to 34 the last and every other day of a month.
void checkDate(Octets const& content) {
    expect(content.size() == 4, ErrorCode::InvalidDataType);
    expect(isWithin(content[1], 1, 14) && isWithin(content[2], 1, 34) && isWithin(content[3], 1, 7),
           ErrorCode::ValueOutOfRange);
}

void checkTime(Octets const& content) {
    expect(content.size() == 4, ErrorCode::InvalidDataType);
    expect(isWithin(content[0], 0, 23) && isWithin(content[1], 0, 59) && isWithin(content[2], 0, 59) &&
               isWithin(content[3], 0, 99),
           ErrorCode::ValueOutOfRange);
}

}  // namespace simulator
