#include "TagAccess.h"

#include "Exceptions.h"
#include "TagKind.h"

TagBase& SubTag(ComplexTag& parent, int place) {
    if (place < 0 || place >= parent.size()) {
        throw ParseException("a tag is missing");
    }
    return *parent.GetSubTag(place);
}

Tag& PrimitiveSubTag(ComplexTag& parent, int place) {
    return RequirePrimitive(&SubTag(parent, place));
}

unsigned char FirstOctet(Tag const& tag) {
    if (tag.data.empty()) {
        throw ParseException("a tag has no octets");
    }
    return static_cast<unsigned char>(tag.data.front());
}

void ExpectFourOctets(Tag const& tag, char number, char const* wrongNumber) {
    if (tag.data.size() != 4) {
        throw ParseException("tag lenght does not meet expectations : 4");
    }
    if (tag.GetTagNumber() != number) {
        throw ParseException(wrongNumber);
    }
}

void ExpectSize(ComplexTag const& tag, int size, char const* wrongSize) {
    if (tag.size() != size) {
        throw ParseException(wrongSize);
    }
}
