#include "CharacterStringValue.h"

#include "Exceptions.h"
#include "TagAccess.h"
#include "Utf8Encoder.h"

Tag CharacterStringValue::ToApplicationTag() const {
    std::vector<char> data = Utf8Encoder().GetBytes(value);
    data.insert(data.begin(), static_cast<char>(encoding));
    return Tag::FromOctets(7, false, data);
}

int CharacterStringValue::Compare(CPropertyValue& other) const {
    return CompareText(dynamic_cast<CharacterStringValue&>(other));
}

std::unique_ptr<CPropertyValue> CharacterStringValueParser::Parse(ComplexTag& wrapper) const {
    Tag const& tag = PrimitiveSubTag(wrapper, 0);
    if (tag.GetTagNumber() != 7) {
        throw ParseException("tag number does not meet expectations");
    }
    auto const encoding = static_cast<EncodingTypeEnum>(FirstOctet(tag));
    return std::make_unique<CharacterStringValue>(GetText(tag), encoding);
}

std::string CharacterStringValueParser::GetText(Tag const& tag) {
    FirstOctet(tag);  // throws for a tag without data
    return std::string(tag.data.data() + 1, tag.data.size() - 1);
}
