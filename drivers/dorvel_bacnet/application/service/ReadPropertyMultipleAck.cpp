#include "ReadPropertyMultipleAck.h"

#include "ServiceElements.h"
#include "TagKind.h"
#include "TagParser.h"

namespace {

static_assert(sizeof(ReadPropertyMultipleAck) <= AnswerStore::BlockSize, "a store has no room for it");

// The sub-tag at the index, or null after the end of the list.
TagBase* SubTagOrNull(ComplexTag const& list, int place) {
    return place < list.size() ? list.GetSubTag(place) : nullptr;
}

void ReadResults(ComplexTag const& list, ReadPropertyMultipleAck& ack) {
    int const size = list.size() & 0xFF;
    for (int place = 0; place < size; place += 2) {
        auto const property = TagParser::GetPropertyIdentifier(RequirePrimitive(SubTagOrNull(list, place)));
        ComplexTag& wrapper = RequireComplex(SubTagOrNull(list, place + 1));
        ack.SetValue(property, FindValueParser(ack.GetObjectId(), property).Parse(wrapper));
    }
}

}  // namespace

ReadPropertyMultipleAck::ReadPropertyMultipleAck(ObjectIdentifier object, PropertyIdentifierEnum,
                                                 CPropertyValue*, int)
    : objectId(object) {}

std::vector<char> ReadPropertyMultipleAck::GetBytes() const {
    return {};
}

int ReadPropertyMultipleAck::Compare(ConfirmedServiceAck& other) const {
    if (int const difference = ConfirmedServiceAck::Compare(other)) {
        return difference;
    }
    return objectId.Compare(dynamic_cast<ReadPropertyMultipleAck&>(other).objectId);
}

std::unique_ptr<ConfirmedServiceAck> ReadPropertyMultipleAckParser::Parse(IStreamBase& stream) const {
    ServiceElements const elements = TagParser::ReadSequence(stream, 4);
    auto ack = std::make_unique<ReadPropertyMultipleAck>();
    ack->SetObjectId(ReadObjectIdentifier(elements));
    ReadResults(RequireComplex(FindElement(elements, 1)), *ack);
    return ack;
}
