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

[[noreturn]] void Fail(ErrorCode code) {
    throw ServiceError{ErrorClass::Property, code};
}

void Expect(bool isSo, ErrorCode otherwise) {
    if (!isSo) {
        Fail(otherwise);
    }
}

struct NumberRow {
    Tag tag;
    std::size_t shortest, longest;  // octets of contents
    double low, high;
    bool isWhole;
};

constexpr double SingleLimit = std::numeric_limits<float>::max();
constexpr double DoubleLimit = std::numeric_limits<double>::max();

constexpr NumberRow NumberRows[] = {
    {Tag::Boolean, 1, 1, 0, 1, true},
    {Tag::Unsigned, 1, 8, 0, 4294967295.0, true},
    {Tag::Signed, 1, 8, -2147483648.0, 2147483647.0, true},
    {Tag::Real, 4, 4, -SingleLimit, SingleLimit, false},
    {Tag::Double, 8, 8, -DoubleLimit, DoubleLimit, false},
    {Tag::Enumerated, 1, 8, 0, 65535, true},
};

NumberRow const* FindNumberRow(Tag tag) {
    for (NumberRow const& row : NumberRows) {
        if (row.tag == tag) {
            return &row;
        }
    }
    return nullptr;
}

template <typename Target, typename Bits>
Target BitsAs(Bits bits) {
    static_assert(sizeof(Target) == sizeof(Bits));
    Target target;
    std::memcpy(&target, &bits, sizeof target);
    return target;
}

double SignedNumber(std::uint64_t bits, std::size_t octets) {
    std::uint64_t const sign = std::uint64_t{1} << (8 * octets - 1);
    auto const extended = static_cast<std::int64_t>((bits ^ sign) - sign);
    return static_cast<double>(extended);
}

double NumberOf(Primitive const& primitive, NumberRow const& row) {
    std::size_t const count = primitive.content.size();
    Expect(count >= row.shortest, ErrorCode::InvalidDataType);
    Expect(count <= row.longest,
           row.shortest == row.longest ? ErrorCode::InvalidDataType : ErrorCode::ValueOutOfRange);
    std::uint64_t const bits = OctetReader(primitive.content).BigEndian(count);
    switch (row.tag) {
        case Tag::Signed:
            return SignedNumber(bits, count);
        case Tag::Real:
            return static_cast<double>(BitsAs<float>(static_cast<std::uint32_t>(bits)));
        case Tag::Double:
            return BitsAs<double>(bits);
        default:
            return static_cast<double>(bits);
    }
}

ValuePtr NumberValue(double number, NumberRow const& row) {
    double const fitting = row.isWhole ? std::round(number) : number;
    // The comparison is false for a NaN.
    Expect(fitting >= row.low && fitting <= row.high, ErrorCode::ValueOutOfRange);
    TagWriter writer;
    MovingValue(std::make_shared<ConstantSignal>(fitting), row.tag).Encode(writer, {});
    return std::make_shared<FixedValue>(writer.Take(), fitting);
}

void CheckText(Octets const& content) {
    constexpr char utf8 = 0;
    Expect(!content.empty(), ErrorCode::InvalidDataType);
    Expect(content[0] == utf8, ErrorCode::CharacterSetNotSupported);
}

void CheckBits(Octets const& content) {
    Expect(!content.empty(), ErrorCode::InvalidDataType);
    unsigned const unused = OctetValue(content[0]);
    Expect(unused == 0 || (unused <= 7 && content.size() > 1), ErrorCode::InvalidDataType);
}

bool IsWithin(char octet, unsigned low, unsigned high) {
    unsigned const number = OctetValue(octet);
    return number == Unspecified || (number >= low && number <= high);
}

void CheckContent(Primitive const& primitive) {
    switch (primitive.tag) {
        case Tag::Null:
            return Expect(primitive.content.empty(), ErrorCode::InvalidDataType);
        case Tag::CharacterString:
            return CheckText(primitive.content);
        case Tag::BitString:
            return CheckBits(primitive.content);
        case Tag::Date:
            return CheckDate(primitive.content);
        case Tag::Time:
            return CheckTime(primitive.content);
        case Tag::ObjectIdentifier:
            return Expect(primitive.content.size() == 4, ErrorCode::InvalidDataType);
        default:
            return;
    }
}

struct TagRow {
    Datatype datatype;
    Tag tag;
};

constexpr TagRow TagRows[] = {
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

Tag TagOf(Datatype datatype) {
    for (TagRow const& row : TagRows) {
        if (row.datatype == datatype) {
            return row.tag;
        }
    }
    Expect(IsEnumeration(datatype), ErrorCode::InvalidDataType);
    return Tag::Enumerated;
}

}  // namespace

ValuePtr WrittenAny(Primitive const& primitive) {
    if (NumberRow const* const row = FindNumberRow(primitive.tag)) {
        return NumberValue(NumberOf(primitive, *row), *row);
    }
    CheckContent(primitive);
    TagWriter writer;
    writer.Application(primitive.tag, primitive.content);
    return std::make_shared<FixedValue>(writer.Take());
}

ValuePtr WrittenAs(Datatype datatype, Primitive const& primitive, bool isLenient) {
    Tag const wanted = TagOf(datatype);
    NumberRow const* const from = FindNumberRow(primitive.tag);
    NumberRow const* const to = FindNumberRow(wanted);
    bool const isConverted = isLenient && from && to;
    Expect(primitive.tag == wanted || isConverted, ErrorCode::InvalidDataType);
    ValuePtr value = from ? NumberValue(NumberOf(primitive, *from), *to) : WrittenAny(primitive);
    if (wanted == Tag::Enumerated) {
        Expect(IsEnumerated(datatype, static_cast<std::uint32_t>(value->Number({}))),
               ErrorCode::ValueOutOfRange);
    }
    return value;
}

// Months 13 and 14 are the odd and the even ones, days 32 to 34 the last and every other day of a month.
void CheckDate(Octets const& content) {
    Expect(content.size() == 4, ErrorCode::InvalidDataType);
    Expect(IsWithin(content[1], 1, 14) && IsWithin(content[2], 1, 34) && IsWithin(content[3], 1, 7),
           ErrorCode::ValueOutOfRange);
}

void CheckTime(Octets const& content) {
    Expect(content.size() == 4, ErrorCode::InvalidDataType);
    Expect(IsWithin(content[0], 0, 23) && IsWithin(content[1], 0, 59) && IsWithin(content[2], 0, 59) &&
               IsWithin(content[3], 0, 99),
           ErrorCode::ValueOutOfRange);
}

}  // namespace simulator
