#include "BooleanValue.h"

#include "Exceptions.h"
#include "TagAccess.h"

Tag BooleanValue::ToApplicationTag() const {
    return Tag(1, false, value ? 1 : 0, 0);
}

int BooleanValue::Compare(CPropertyValue& other) const {
    return static_cast<int>(value) - static_cast<int>(dynamic_cast<BooleanValue&>(other).value);
}

std::unique_ptr<CPropertyValue> BooleanValueParser::Parse(ComplexTag& wrapper) const {
    Tag const& tag = PrimitiveSubTag(wrapper, 0);
    if (tag.GetTagNumber() != 1) {
        throw ParseException("tag number does not meet expectations");
    }
    if (tag.GetValLenType() != 0 && tag.GetValLenType() != 1) {
        throw ParseException("bad value in field VallenType. expect 0 or 1");
    }
    return std::make_unique<BooleanValue>(tag.GetValLenType() == 1);
}
