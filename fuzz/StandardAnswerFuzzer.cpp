// The decoders of what devices answer. For every input: an answer has the numbers that are in its octets;
// values that are encoded and read again are the same; encoding them a second time changes nothing; nesting
// and text are bounded; parameters that are read from within an APDU are those of their own octets.
#include <cstddef>
#include <cstdint>
#include <optional>

#include "AnswerPdu.h"
#include "Content.h"
#include "DatumReader.h"
#include "DatumText.h"
#include "Printable.h"
#include "PropertyServices.h"
#include "ReadRequests.h"
#include "Require.h"
#include "TagWriter.h"

using namespace standard;
using fuzz::Require;

namespace {

Octets ContentOf(Datum const& datum) {
    switch (datum.kind) {
        case DatumKind::Signed:
            return content::SignedNumber(datum.Signed());
        case DatumKind::Real:
            return content::Real(static_cast<float>(datum.real));
        case DatumKind::Double:
            return content::DoubleNumber(datum.real);
        case DatumKind::CharacterString:
            return content::CharacterString(datum.text);
        case DatumKind::BitString:
            return content::BitString(datum.text);
        case DatumKind::Date:
        case DatumKind::Time:
            return content::Date(datum.calendar);
        case DatumKind::ObjectIdentifier:
            return content::ObjectIdentifier(datum.Object());
        case DatumKind::Unsigned:
        case DatumKind::Enumerated:
            return content::UnsignedNumber(datum.number);
        default:
            return datum.octets;
    }
}

void Encode(TagWriter& writer, std::vector<Datum> const& values, unsigned depth);

// An Unknown value that is deeper than the deepest nesting may be a constructed one; its octets are tags
// then, or contents of a primitive.
void EncodeOne(TagWriter& writer, Datum const& datum, unsigned depth) {
    if (datum.kind == DatumKind::Null) {
        writer.Null();
    } else if (datum.kind == DatumKind::Boolean) {
        writer.Boolean(datum.number != 0);
    } else if (datum.kind == DatumKind::Constructed) {
        writer.Opening(datum.tag);
        Encode(writer, datum.children, depth + 1);
        writer.Closing(datum.tag);
    } else if (datum.isContext) {
        writer.Context(datum.tag, datum.octets);
    } else {
        writer.Application(static_cast<ApplicationTag>(datum.tag), ContentOf(datum));
    }
}

void Encode(TagWriter& writer, std::vector<Datum> const& values, unsigned depth) {
    Require(depth <= Datum::DeepestNesting, "nesting is bounded");
    for (Datum const& datum : values) {
        EncodeOne(writer, datum, depth);
    }
}

Octets Encoded(std::vector<Datum> const& values) {
    TagWriter writer;
    Encode(writer, values, 0);
    return writer.Take();
}

void CheckValues(std::vector<Datum> const& values, std::size_t octets) {
    Octets const encoded = Encoded(values);
    auto const again = DatumsOf(encoded);
    Require(again.has_value(), "values that are encoded can be read");
    Require(*again == values, "they are the same");
    Require(Encoded(*again) == encoded, "and are encoded in the same way");
    constexpr std::size_t charactersPerOctet = 40;
    std::string const text = DatumText(values, {{0, 1}, 85, {}});
    Require(text.size() <= charactersPerOctet * (octets + 1), "a text is in proportion to its octets");
    Require(tools::ValidUtf8(text) == text, "and is valid UTF-8");
}

void CheckAnswer(Octets const& apdu) {
    auto const answer = AnswerPdu::Decode(apdu);
    if (!answer) {
        return;
    }
    unsigned const type = OctetValue(apdu.at(0)) >> 4;
    Require(static_cast<unsigned>(answer->kind) + 2 == type, "the kind is the type in the first octet");
    Require(answer->invokeId == OctetValue(apdu.at(1)), "the invoke id is the second octet");
    Require(answer->contentAt <= apdu.size(), "the content is within the APDU");
    bool const isFailure = answer->kind == AnswerPdu::Kind::Error ||
                           answer->kind == AnswerPdu::Kind::Reject || answer->kind == AnswerPdu::Kind::Abort;
    Require(isFailure == answer->failure.has_value(), "errors, rejects and aborts have their reason");
    Require(!isFailure || !FailureText(*answer->failure).empty(), "which is a text");
}

void CheckResults(std::vector<ReadResult> const& results, std::size_t octets) {
    for (ReadResult const& result : results) {
        Require(!result.failure || result.values.empty(), "a property has values or a failure");
        CheckValues(result.values, octets);
    }
}

// The parameters that begin at `at`, and the same from a sequence that begins there.
void CheckParameters(Octets const& octets, std::size_t at) {
    Octets const rest(octets.begin() + static_cast<std::ptrdiff_t>(at), octets.end());
    auto const read = parameters::OfReadProperty(octets, at);
    Require(read == parameters::OfReadProperty(rest), "parameters do not depend on what is before them");
    if (read) {
        Octets const request = requests::ReadProperty(1, *read);
        Require(parameters::OfReadProperty(request, 4) == read, "a request is read as it was written");
    }
    auto const multiple = parameters::OfReadPropertyMultiple(octets, at);
    if (multiple && !multiple->empty()) {
        Octets const request = requests::ReadPropertyMultiple(1, *multiple);
        Require(parameters::OfReadPropertyMultiple(request, 4) == multiple, "and so is a list");
    }
    if (auto const ack = parameters::OfReadPropertyAck(octets, at)) {
        CheckResults({*ack}, rest.size());
    }
    if (auto const acks = parameters::OfReadPropertyMultipleAck(octets, at)) {
        Require(acks->size() <= rest.size(), "each property takes octets");
        CheckResults(*acks, rest.size());
    }
    if (auto const written = parameters::OfWriteProperty(octets, at)) {
        CheckValues(written->values, rest.size());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Octets const octets(data, data + size);
    CheckAnswer(octets);
    if (auto const values = DatumsOf(octets)) {
        CheckValues(*values, octets.size());
    }
    for (std::size_t const head : {0, 3}) {
        if (head <= size) {
            CheckParameters(octets, head);
        }
    }
    return 0;
}
