#include "DatumReader.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

#include "CharacterSets.h"
#include "Refusal.h"
#include "TagReader.h"

namespace standard {

namespace {

constexpr std::size_t MostNumberOctets = 8;

std::uint64_t BigEndian(Octets const& content) {
    return OctetReader(content).BigEndian(content.size());
}

bool IsNumber(Octets const& content) {
    return !content.empty() && content.size() <= MostNumberOctets;
}

// Two's complement: the first bit is the sign of all bits before it.
std::uint64_t SignExtended(Octets const& content) {
    bool const isNegative = (OctetValue(content[0]) & 0x80) != 0;
    std::uint64_t value = isNegative ? ~std::uint64_t{0} : 0;
    for (char const octet : content) {
        value = value << 8 | OctetValue(octet);
    }
    return value;
}

double RealOf(Octets const& content) {
    auto const bits = static_cast<std::uint32_t>(BigEndian(content));
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return static_cast<double>(value);
}

double DoubleOf(Octets const& content) {
    std::uint64_t const bits = BigEndian(content);
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// The first octet is the number of unused bits in the last one.
std::optional<std::string> BitsOf(Octets const& content) {
    if (content.empty() || OctetValue(content[0]) > 7) {
        return std::nullopt;
    }
    std::size_t const unused = OctetValue(content[0]);
    std::size_t const all = (content.size() - 1) * 8;
    if (unused > all) {
        return std::nullopt;
    }
    std::string bits;
    bits.reserve(all - unused);
    for (std::size_t i = 0; i < all - unused; ++i) {
        bits += (OctetValue(content[1 + i / 8]) & (0x80u >> (i % 8))) != 0 ? '1' : '0';
    }
    return bits;
}

// Each sets the value of a datum and returns whether the contents are those of its datatype.
bool ReadNumber(Datum& datum, Octets const& content) {
    if (!IsNumber(content)) {
        return false;
    }
    datum.number = datum.kind == DatumKind::Signed ? SignExtended(content) : BigEndian(content);
    return datum.kind != DatumKind::Boolean || datum.number <= 1;
}

bool ReadReal(Datum& datum, Octets const& content) {
    if (content.size() != (datum.kind == DatumKind::Real ? 4 : 8)) {
        return false;
    }
    datum.real = datum.kind == DatumKind::Real ? RealOf(content) : DoubleOf(content);
    return true;
}

bool ReadText(Datum& datum, Octets const& content) {
    auto text = datum.kind == DatumKind::BitString ? BitsOf(content) : TextOfCharacterString(content);
    if (!text) {
        return false;
    }
    datum.text = *std::move(text);
    return true;
}

bool ReadFour(Datum& datum, Octets const& content) {
    if (content.size() != 4) {
        return false;
    }
    if (datum.kind == DatumKind::ObjectIdentifier) {
        datum.number = BigEndian(content);
        return true;
    }
    std::transform(content.begin(), content.end(), datum.calendar.begin(),
                   [](char octet) { return static_cast<std::uint8_t>(octet); });
    return true;
}

bool Read(Datum& datum, Octets const& content) {
    switch (datum.kind) {
        case DatumKind::Null:
            return content.empty();
        case DatumKind::Boolean:
        case DatumKind::Unsigned:
        case DatumKind::Signed:
        case DatumKind::Enumerated:
            return ReadNumber(datum, content);
        case DatumKind::Real:
        case DatumKind::Double:
            return ReadReal(datum, content);
        case DatumKind::OctetString:
            datum.octets = content;
            return true;
        case DatumKind::CharacterString:
        case DatumKind::BitString:
            return ReadText(datum, content);
        case DatumKind::Date:
        case DatumKind::Time:
        case DatumKind::ObjectIdentifier:
            return ReadFour(datum, content);
        default:
            return false;
    }
}

// In the order of the application tags.
constexpr DatumKind Kinds[] = {DatumKind::Null,
                               DatumKind::Boolean,
                               DatumKind::Unsigned,
                               DatumKind::Signed,
                               DatumKind::Real,
                               DatumKind::Double,
                               DatumKind::OctetString,
                               DatumKind::CharacterString,
                               DatumKind::BitString,
                               DatumKind::Enumerated,
                               DatumKind::Date,
                               DatumKind::Time,
                               DatumKind::ObjectIdentifier};

Datum UnknownDatum(std::uint8_t tag, bool isContext, Octets content) {
    Datum datum;
    datum.kind = DatumKind::Unknown;
    datum.tag = tag;
    datum.isContext = isContext;
    datum.octets = std::move(content);
    return datum;
}

// Reads tags into a tree. The constructed values that are open are on its own stack.
class TreeReader {
public:
    explicit TreeReader(Octets const& tags) : reader(tags) {}

    std::optional<std::vector<Datum>> ReadAll() {
        open.emplace_back();
        while (!reader.AtEnd()) {
            if (++count > MostValues || !ReadOne()) {
                return std::nullopt;
            }
        }
        return open.size() == 1 ? std::optional(std::move(open.back().children)) : std::nullopt;
    }

private:
    bool ReadOne() {
        std::size_t const start = reader.Position();
        TagReader::Any tag = reader.TakeAny();
        if (tag.kind == TagReader::Kind::Primitive) {
            Append(tag.isContext ? UnknownDatum(tag.number, true, std::move(tag.content))
                                 : DatumOfContent(tag.number, tag.content));
            return true;
        }
        if (tag.kind == TagReader::Kind::Closing) {
            return Close(tag.number);
        }
        if (open.size() > Datum::DeepestNesting) {
            reader.Rewind(start);
            Append(UnknownDatum(tag.number, true, reader.Enclosed(tag.number)));
            return true;
        }
        open.emplace_back();
        open.back().kind = DatumKind::Constructed;
        open.back().tag = tag.number;
        open.back().isContext = true;
        return true;
    }

    bool Close(std::uint8_t number) {
        if (open.size() == 1 || open.back().tag != number) {
            return false;
        }
        Datum closed = std::move(open.back());
        open.pop_back();
        Append(std::move(closed));
        return true;
    }

    void Append(Datum datum) { open.back().children.push_back(std::move(datum)); }

    TagReader reader;
    std::vector<Datum> open;  // the first one holds the values outside of all others
    std::size_t count = 0;
};

}  // namespace

Datum DatumOfContent(std::uint8_t applicationTag, Octets const& content) {
    if (applicationTag < std::size(Kinds)) {
        Datum datum;
        datum.kind = Kinds[applicationTag];
        datum.tag = applicationTag;
        if (Read(datum, content)) {
            return datum;
        }
    }
    return UnknownDatum(applicationTag, false, content);
}

std::optional<std::vector<Datum>> DatumsOf(Octets const& tags) try {
    return TreeReader(tags).ReadAll();
} catch (Reject const&) {
    return std::nullopt;
}

}  // namespace standard
