#include "ServiceElements.h"

#include "BitConverter.h"
#include "Exceptions.h"
#include "Octets.h"
#include "SupportInformation.h"
#include "TagKind.h"
#include "TagParser.h"
#include "UsualMessage.h"

namespace {

// Context tag 0 of four octets.
constexpr char ObjectTag = 0x0C;

}  // namespace

TagBase* FindElement(ServiceElements const& elements, char tagNumber) {
    auto const element = elements.find(tagNumber);
    return element == elements.end() ? nullptr : element->second.get();
}

ObjectIdentifier ReadObjectIdentifier(ServiceElements const& elements) {
    return ObjectIdentifier(RequirePrimitive(FindElement(elements, 0)));
}

PropertyIdentifierEnum ReadPropertyIdentifier(ServiceElements const& elements) {
    return TagParser::GetPropertyIdentifier(RequirePrimitive(FindElement(elements, 1)));
}

int ReadArrayIndex(TagBase& element) {
    return static_cast<int>(TagParser::GetUnsignedInteger(RequirePrimitive(&element)));
}

std::vector<char> ObjectBytes(ObjectIdentifier object) {
    std::vector<char> octets;
    octets.reserve(UsualMessage);
    octets.push_back(ObjectTag);
    AppendNumber(octets, object.GetPacked());
    return octets;
}

std::vector<char> ObjectAndPropertyBytes(ObjectIdentifier object, PropertyIdentifierEnum property) {
    std::vector<char> octets = ObjectBytes(object);
    AppendOctets(octets, Tag::FromOctets(1, true, {static_cast<char>(property)}).GetBytes());
    return octets;
}

std::vector<char> ArrayIndexBytes(unsigned int arrayIndex) {
    return Tag::FromOctets(2, true, BitConverter::GetBytes(arrayIndex)).GetBytes();
}

PropertyValueParser const& FindValueParser(ObjectIdentifier object, PropertyIdentifierEnum property) {
    SupportInformation const& support = *SupportInformation::GetInstance();
    PropertyInfo const info = support.GetPropertyInfo(object.GetObjectType(), property);
    PropertyValueParser const* const parser = support.GetPropertyParser(info.type);
    if (parser == nullptr) {
        throw SupportInformationException("Support Information not found");
    }
    return *parser;
}

std::unique_ptr<CPropertyValue> ReadPropertyValue(ServiceElements const& elements, ObjectIdentifier object,
                                                  PropertyIdentifierEnum property) {
    TagBase* const wrapper = FindElement(elements, 3);
    if (wrapper == nullptr) {
        throw FormatErrorException();
    }
    PropertyValueParser const& parser = FindValueParser(object, property);
    return parser.Parse(RequireComplex(wrapper));
}
