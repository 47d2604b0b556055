#include "ReadPropertyAck.h"

#include "ComplexTag.h"
#include "Octets.h"
#include "ServiceElements.h"
#include "TagParser.h"

namespace {

int CompareValues(CPropertyValue* left, CPropertyValue* right) {
    if (left == nullptr || right == nullptr) {
        return (left != nullptr) - (right != nullptr);
    }
    return left->Compare(*right);
}

}  // namespace

ReadPropertyAck::ReadPropertyAck(ObjectIdentifier object, PropertyIdentifierEnum property,
                                 CPropertyValue* value, int arrayIndex)
    : propertyIdentifier(property), objectId(object), propertyValue(value) {
    if (arrayIndex >= 0) {
        SetPropertyArrayIndex(arrayIndex);
    }
}

void ReadPropertyAck::SetPropertyArrayIndex(int arrayIndex) {
    propertyArrayIndex = arrayIndex;
    hasPropertyArrayIndex = true;
}

std::vector<char> ReadPropertyAck::GetBytes() const {
    std::vector<char> octets = ObjectAndPropertyBytes(objectId, propertyIdentifier);
    if (hasPropertyArrayIndex) {
        AppendOctets(octets, ArrayIndexBytes(static_cast<unsigned int>(propertyArrayIndex)));
    }
    ComplexTag wrapper(3, true);
    if (propertyValue) {
        for (Tag& tag : propertyValue->ToApplicationTags()) {
            wrapper.AddSubTag(std::make_unique<Tag>(std::move(tag)));
        }
    }
    AppendOctets(octets, wrapper.GetBytes());
    return octets;
}

int ReadPropertyAck::Compare(ConfirmedServiceAck& other) const {
    if (int const difference = ConfirmedServiceAck::Compare(other)) {
        return difference;
    }
    auto const& ack = dynamic_cast<ReadPropertyAck&>(other);
    if (int const difference = FirstDifference({
            objectId.Compare(ack.objectId),
            EnumDifference(propertyIdentifier, ack.propertyIdentifier),
            hasPropertyArrayIndex - ack.hasPropertyArrayIndex,
            static_cast<int>(static_cast<unsigned int>(propertyArrayIndex) -
                             static_cast<unsigned int>(ack.propertyArrayIndex)),
        })) {
        return difference;
    }
    return CompareValues(propertyValue.get(), ack.propertyValue.get());
}

std::unique_ptr<ConfirmedServiceAck> ReadPropertyAckParser::Parse(IStreamBase& stream) const {
    ServiceElements const elements = TagParser::ReadSequence(stream, 4);
    auto ack = std::make_unique<ReadPropertyAck>();
    ack->SetObjectId(ReadObjectIdentifier(elements));
    ack->SetPropertyIdentifier(ReadPropertyIdentifier(elements));
    if (TagBase* const index = FindElement(elements, 2)) {
        ack->SetPropertyArrayIndex(ReadArrayIndex(*index));
    }
    ack->SetPropertyValue(ReadPropertyValue(elements, ack->GetObjectId(), ack->GetPropertyIdentifier()));
    return ack;
}
