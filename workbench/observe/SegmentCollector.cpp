#include "SegmentCollector.h"

namespace workbench {

void SegmentCollector::Clear() {
    parts.clear();
    count = 0;
    hasEnd = false;
}

SegmentCollector::Arrival SegmentCollector::Add(standard::AnswerPdu const& pdu,
                                                standard::Octets const& apdu) {
    ++count;
    hasEnd = hasEnd || !pdu.moreFollows;
    if (count > Most) {
        parts.clear();
        return Arrival::WithoutEnd;
    }
    unsigned const number = pdu.sequenceNumber;
    unsigned const expected = parts.empty() ? 0 : parts.rbegin()->first + 1;
    bool const isNew =
        parts
            .emplace(number,
                     standard::Octets(apdu.begin() + static_cast<std::ptrdiff_t>(pdu.contentAt), apdu.end()))
            .second;
    return !isNew ? Arrival::Repeated : number < expected ? Arrival::OutOfOrder : Arrival::Next;
}

std::optional<unsigned> SegmentCollector::Missing() const {
    unsigned expected = 0;
    for (auto const& part : parts) {
        if (part.first != expected) {
            return expected;
        }
        ++expected;
    }
    return hasEnd ? std::nullopt : std::optional(expected);
}

standard::Octets SegmentCollector::Content() const {
    standard::Octets content;
    for (auto const& part : parts) {
        content.insert(content.end(), part.second.begin(), part.second.end());
    }
    return content;
}

}  // namespace workbench
