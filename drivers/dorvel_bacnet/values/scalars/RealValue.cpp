#include "RealValue.h"

#include "BitConverter.h"
#include "TagAccess.h"
#include "TagParser.h"

Tag RealValue::ToApplicationTag() const {
    return Tag::FromOctets(4, false, BitConverter::GetBytes(value));
}

int RealValue::Compare(CPropertyValue& other) const {
    float const difference = value - dynamic_cast<RealValue&>(other).value;
    return static_cast<int>(difference > 0) - static_cast<int>(difference < 0);
}

std::unique_ptr<CPropertyValue> RealValueParser::Parse(ComplexTag& wrapper) const {
    return std::make_unique<RealValue>(TagParser::GetFloatValue(PrimitiveSubTag(wrapper, 0)));
}
