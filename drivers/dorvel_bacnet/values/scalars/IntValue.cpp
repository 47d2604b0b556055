#include "IntValue.h"

#include "BitConverter.h"
#include "TagAccess.h"
#include "TagParser.h"

Tag IntValue::ToApplicationTag() const {
    return Tag::FromOctets(3, false, BitConverter::CutZeros(BitConverter::GetBytes(value)));
}

int IntValue::Compare(CPropertyValue& other) const {
    // Compares the low 32 bits only. Unsigned arithmetic keeps the overflow defined.
    auto const otherValue = dynamic_cast<IntValue&>(other).value;
    return static_cast<int>(static_cast<unsigned int>(value) - static_cast<unsigned int>(otherValue));
}

std::unique_ptr<CPropertyValue> IntValueParser::Parse(ComplexTag& wrapper) const {
    return std::make_unique<IntValue>(TagParser::GetSignedInteger(PrimitiveSubTag(wrapper, 0)));
}
