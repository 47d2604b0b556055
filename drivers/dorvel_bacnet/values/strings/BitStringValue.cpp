#include "BitStringValue.h"

#include <algorithm>

#include "Exceptions.h"
#include "TagAccess.h"

Tag BitStringValue::ToApplicationTag() const {
    std::size_t const octetCount = (value.size() + 7) / 8;
    std::vector<char> data(1 + octetCount);
    data[0] = static_cast<char>(octetCount * 8 - value.size());
    for (std::size_t i = 0; i < value.size(); ++i) {
        unsigned const bit = value[i] ? 0x80U >> i % 8 : 0U;
        data[1 + i / 8] = static_cast<char>(static_cast<unsigned char>(data[1 + i / 8]) | bit);
    }
    return Tag::FromOctets(8, false, data);
}

int BitStringValue::Compare(CPropertyValue& other) const {
    std::vector<bool> const& otherBits = dynamic_cast<BitStringValue&>(other).value;
    if (value.size() != otherBits.size()) {
        return static_cast<int>(value.size()) - static_cast<int>(otherBits.size());
    }
    auto const [mine, theirs] = std::mismatch(value.begin(), value.end(), otherBits.begin());
    if (mine == value.end()) {
        return 0;
    }
    return *mine ? 1 : -1;
}

std::unique_ptr<CPropertyValue> BitStringValueParser::Parse(ComplexTag& wrapper) const {
    return std::make_unique<BitStringValue>(GetBits(PrimitiveSubTag(wrapper, 0)));
}

std::vector<bool> BitStringValueParser::GetBits(Tag const& tag) {
    std::size_t const unusedBits = FirstOctet(tag);
    std::size_t const allBits = (tag.data.size() - 1) * 8;
    if (unusedBits > allBits) {
        throw ParseException("a bit string has more unused bits than bits");
    }
    std::vector<bool> bits(allBits - unusedBits);
    for (std::size_t i = 0; i < bits.size(); ++i) {
        auto const octet = static_cast<unsigned char>(tag.data[1 + i / 8]);
        bits[i] = (octet >> (7 - i % 8) & 1) != 0;
    }
    return bits;
}
