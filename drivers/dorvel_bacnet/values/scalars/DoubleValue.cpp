#include "DoubleValue.h"

#include "BitConverter.h"
#include "TagAccess.h"
#include "TagParser.h"

Tag DoubleValue::ToApplicationTag() const {
    return Tag::FromOctets(5, false, BitConverter::GetBytes(value));
}

int DoubleValue::Compare(CPropertyValue& other) const {
    double const difference = value - dynamic_cast<DoubleValue&>(other).value;
    return static_cast<int>(difference > 0) - static_cast<int>(difference < 0);
}

std::unique_ptr<CPropertyValue> DoubleValueParser::Parse(ComplexTag& wrapper) const {
    return std::make_unique<DoubleValue>(TagParser::GetDoubleValue(PrimitiveSubTag(wrapper, 0)));
}
