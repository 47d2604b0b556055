#include "BinaryValue.h"

#include "TagAccess.h"
#include "TagParser.h"

Tag BinaryValue::ToApplicationTag() const {
    return Tag(9, false, 1, {static_cast<char>(value)}, 0);
}

int BinaryValue::Compare(CPropertyValue& other) const {
    BACnetBinaryPV const otherValue = dynamic_cast<BinaryValue&>(other).value;
    return static_cast<int>(value > otherValue) - static_cast<int>(value < otherValue);
}

std::unique_ptr<CPropertyValue> BinaryValueParser::Parse(ComplexTag& wrapper) const {
    auto const octet = static_cast<unsigned char>(TagParser::GetBinaryValue(PrimitiveSubTag(wrapper, 0)));
    return std::make_unique<BinaryValue>(static_cast<BACnetBinaryPV>(octet));
}
