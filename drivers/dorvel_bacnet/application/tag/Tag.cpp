#include "Tag.h"

#include <utility>

#include "Octets.h"
#include "TagHeader.h"

namespace {

static_assert(sizeof(Tag) <= AnswerStore::BlockSize, "a store has no room for it");

constexpr unsigned LargestShortContextNumber = 6;
constexpr std::size_t LongestHeader = 3;

}  // namespace

Tag::Tag(char tagNumber, bool isClass, char valLenType, int additionalLength)
    : TagBase(tagNumber, isClass, valLenType), extendedLength(additionalLength) {}

Tag::Tag(char tagNumber, bool isClass, char valLenType, std::vector<char> const& dataOctets,
         int additionalLength)
    : TagBase(tagNumber, isClass, valLenType), extendedLength(additionalLength), data(dataOctets) {}

Tag Tag::FromOctets(char tagNumber, bool isClass, std::vector<char> dataOctets) {
    auto const size = static_cast<int>(dataOctets.size());
    bool const isShort = size < TagHeader::ExtendedLength;
    Tag tag(tagNumber, isClass, isShort ? static_cast<char>(size) : TagHeader::ExtendedLength,
            isShort ? 0 : size);
    tag.data = std::move(dataOctets);
    return tag;
}

std::vector<char> Tag::GetBytes() const {
    unsigned const tagNumber = OctetValue(GetTagNumber());
    unsigned const classBit = GetIsClass() ? 0x08 : 0;
    std::vector<char> bytes;
    bytes.reserve(LongestHeader + data.size());
    bytes.push_back(static_cast<char>(tagNumber << 4 | classBit | (GetValLenType() & 7)));
    if (GetIsClass() && tagNumber > LargestShortContextNumber) {
        bytes.push_back(GetTagNumber());
    }
    if (GetValLenType() == TagHeader::ExtendedLength) {
        bytes.push_back(static_cast<char>(extendedLength & 0xFF));
    }
    AppendOctets(bytes, data);
    return bytes;
}
