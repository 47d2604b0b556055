#include "AnswerSegments.h"

namespace workbench {

void AnswerSegments::Clear() {
    parts.clear();
    count = 0;
    hasEnd = false;
}

AnswerSegments::Arrival AnswerSegments::Add(standard::AnswerPdu const& pdu, standard::Octets const& apdu) {
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

std::optional<unsigned> AnswerSegments::Missing() const {
    unsigned expected = 0;
    for (auto const& part : parts) {
        if (part.first != expected) {
            return expected;
        }
        ++expected;
    }
    return hasEnd ? std::nullopt : std::optional(expected);
}

standard::Octets AnswerSegments::Content() const {
    standard::Octets content;
    for (auto const& part : parts) {
        content.insert(content.end(), part.second.begin(), part.second.end());
    }
    return content;
}

}  // namespace workbench
