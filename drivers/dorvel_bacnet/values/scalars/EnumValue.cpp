#include "EnumValue.h"

#include "BitConverter.h"
#include "TagAccess.h"
#include "TagParser.h"

Tag EnumValue::ToApplicationTag() const {
    return Tag::FromOctets(9, false, BitConverter::GetBytes(value));
}

int EnumValue::Compare(CPropertyValue& other) const {
    return static_cast<int>(value - dynamic_cast<EnumValue&>(other).value);
}

std::unique_ptr<CPropertyValue> EnumValueParser::Parse(ComplexTag& wrapper) const {
    auto const number = TagParser::GetUnsignedInteger(PrimitiveSubTag(wrapper, 0));
    return std::make_unique<EnumValue>(static_cast<unsigned int>(number));
}
