#include "UintValue.h"

#include "BitConverter.h"
#include "TagAccess.h"
#include "TagParser.h"

Tag UintValue::ToApplicationTag() const {
    return Tag::FromOctets(2, false, BitConverter::CutZeros(BitConverter::GetBytes(value)));
}

int UintValue::Compare(CPropertyValue& other) const {
    // Compares the low 32 bits only. Unsigned arithmetic keeps the overflow defined.
    auto const otherValue = dynamic_cast<UintValue&>(other).value;
    return static_cast<int>(static_cast<unsigned int>(value) - static_cast<unsigned int>(otherValue));
}

std::unique_ptr<CPropertyValue> UintValueParser::Parse(ComplexTag& wrapper) const {
    return std::make_unique<UintValue>(TagParser::GetUnsignedInteger(PrimitiveSubTag(wrapper, 0)));
}
