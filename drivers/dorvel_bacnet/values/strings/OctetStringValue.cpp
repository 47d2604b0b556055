#include "OctetStringValue.h"

#include <algorithm>

#include "TagAccess.h"

Tag OctetStringValue::ToApplicationTag() const {
    return Tag::FromOctets(6, false, value);
}

int OctetStringValue::Compare(CPropertyValue& other) const {
    std::vector<char> const& otherOctets = dynamic_cast<OctetStringValue&>(other).value;
    if (value.size() != otherOctets.size()) {
        return static_cast<int>(value.size()) - static_cast<int>(otherOctets.size());
    }
    auto const [mine, theirs] = std::mismatch(value.rbegin(), value.rend(), otherOctets.rbegin());
    return mine == value.rend() ? 0 : static_cast<unsigned char>(*mine) - static_cast<unsigned char>(*theirs);
}

std::unique_ptr<CPropertyValue> OctetStringValueParser::Parse(ComplexTag& wrapper) const {
    return std::make_unique<OctetStringValue>(PrimitiveSubTag(wrapper, 0).data);
}
