#include "TagParser.h"

#include <new>
#include <utility>

#include "BitConverter.h"
#include "Exceptions.h"
#include "Octets.h"

namespace {

constexpr unsigned NumberFollows = 15;
constexpr unsigned TwoOctetLengthFollows = 254;
constexpr char ApplicationBoolean = 1;
constexpr int MostPlaces = 0x3FFFFFFF;
// Schedules are not deeper, so the list of open tags does not grow for them.
constexpr std::size_t UsualDepth = 8;

char ReadTagNumber(IStreamBase& stream, TagHeader header) {
    char const number = header.GetTagNumber();
    return OctetValue(number) == NumberFollows ? stream.ReadByte() : number;
}

int ReadAdditionalLength(IStreamBase& stream) {
    unsigned const length = OctetValue(stream.ReadByte());
    if (length != TwoOctetLengthFollows) {
        return static_cast<int>(length);
    }
    std::vector<char> octets(2);
    stream.Receive(octets.data(), 2);
    return BitConverter::ToUInt16(octets, 0);
}

std::vector<char> ReadData(IStreamBase& stream, unsigned int length) {
    std::vector<char> data = AnswerStore::TakeOctets();
    data.resize(length);
    if (stream.Receive(data.data(), length) != length) {
        throw WrongLengthException();
    }
    return data;
}

std::unique_ptr<ComplexTag> ReadOpeningTag(IStreamBase& stream, TagHeader header) {
    return std::make_unique<ComplexTag>(ReadTagNumber(stream, header), true);
}

}  // namespace

std::unique_ptr<TagBase> TagParser::ReadTag(IStreamBase& stream) {
    if (stream.Available() < 1) {
        return nullptr;
    }
    TagHeader const header(stream.ReadByte());
    if (header.GetIsComplexOpenTag()) {
        return ReadComplexTag(stream, header);
    }
    return ReadPrimitiveTag(stream, header);
}

std::unique_ptr<Tag> TagParser::ReadPrimitiveTag(IStreamBase& stream, TagHeader header) {
    char const number = ReadTagNumber(stream, header);
    char const valLenType = header.GetValueLengthType();
    int const additional = valLenType == TagHeader::ExtendedLength ? ReadAdditionalLength(stream) : 0;
    auto tag = std::make_unique<Tag>(number, header.GetIsClass(), valLenType, additional);
    // The value of an application boolean is its length/value/type.
    if (tag->GetIsClass() || number != ApplicationBoolean) {
        unsigned const length = additional >= 1 ? static_cast<unsigned>(additional) : OctetValue(valLenType);
        tag->data = ReadData(stream, length);
    }
    return tag;
}

std::unique_ptr<ComplexTag> TagParser::ReadComplexTag(IStreamBase& stream, TagHeader header) {
    auto root = ReadOpeningTag(stream, header);
    std::vector<ComplexTag*, AnswerAllocator<ComplexTag*>> open;
    open.reserve(UsualDepth);
    open.push_back(root.get());
    while (!open.empty()) {
        TagHeader const next(stream.ReadByte());
        if (next.GetIsComplexCloseTag()) {
            open.pop_back();
        } else if (next.GetIsComplexOpenTag()) {
            auto complex = ReadOpeningTag(stream, next);
            ComplexTag* const innermost = complex.get();
            open.back()->AddSubTag(std::move(complex));
            open.push_back(innermost);
        } else {
            open.back()->AddSubTag(ReadPrimitiveTag(stream, next));
        }
    }
    return root;
}

std::vector<std::unique_ptr<TagBase>> TagParser::ReadAppSequence(IStreamBase& stream, int count) {
    if (count <= 0) {
        return {};
    }
    if (count > MostPlaces) {
        throw std::bad_alloc();
    }
    std::vector<std::unique_ptr<TagBase>> tags(static_cast<std::size_t>(count));
    for (auto& tag : tags) {
        tag = ReadTag(stream);
        if (!tag) {
            break;
        }
    }
    return tags;
}

std::map<char, std::unique_ptr<TagBase>> TagParser::ReadSequence(IStreamBase& stream, int count) {
    std::map<char, std::unique_ptr<TagBase>> tags;
    for (int reached = 0; reached < count;) {
        auto tag = ReadTag(stream);
        if (!tag) {
            break;
        }
        char const number = tag->GetTagNumber();
        // Elements come in ascending order, so none of the requested ones follows the last number.
        reached = static_cast<unsigned char>(number) + 1;
        tags[number] = std::move(tag);
    }
    return tags;
}

float TagParser::GetFloatValue(Tag const& tag) {
    return BitConverter::ToFloat(tag.data, 0);
}

double TagParser::GetDoubleValue(Tag const& tag) {
    return BitConverter::ToDouble(tag.data, 0);
}

unsigned long long TagParser::GetUnsignedInteger(Tag const& tag) {
    return BitConverter::ToUInt64(tag.data, 0);
}

long long TagParser::GetSignedInteger(Tag const& tag) {
    return BitConverter::ToInt64(tag.data, 0);
}

PropertyIdentifierEnum TagParser::GetPropertyIdentifier(Tag const& tag) {
    return static_cast<PropertyIdentifierEnum>(BitConverter::ToUInt16(tag.data, 0));
}

char TagParser::GetBinaryValue(Tag const& tag) {
    if (tag.data.size() != 1) {
        throw ArgumentOutOfRangeException();
    }
    return tag.data[0];
}
