#include "PropertyServices.h"

#include <utility>

#include "DatumReader.h"
#include "TotalRead.h"

namespace standard::parameters {

namespace {

// Object, property and index in the tags 0 to 2, as in ReadProperty and WriteProperty.
PropertyReference ReadReference(TagReader& reader) {
    PropertyReference reference;
    reference.object = reader.ObjectIdentifier(0);
    reference.property = reader.UnsignedNumber(1);
    reference.index = reader.OptionalUnsigned(2);
    return reference;
}

std::vector<Datum> ReadValues(TagReader& reader, std::uint8_t number) {
    auto values = DatumsOf(reader.Enclosed(number));
    if (!values) {
        throw Reject{RejectReason::TooManyArguments};
    }
    return *std::move(values);
}

Failure ReadError(TagReader& reader, std::uint8_t number) {
    reader.Opening(number);
    Failure failure;
    failure.kind = Failure::Kind::Error;
    failure.errorClass = reader.ApplicationNumber(ApplicationTag::Enumerated);
    failure.code = reader.ApplicationNumber(ApplicationTag::Enumerated);
    if (!reader.Closes(number)) {
        throw Reject{RejectReason::InvalidTag};
    }
    return failure;
}

// One property of an object in an answer to ReadPropertyMultiple: tags 2 and 3, and the value in 4 or an
// error in 5.
ReadResult ReadOneResult(TagReader& reader, ObjectId const& object) {
    ReadResult result;
    result.reference.object = object;
    result.reference.property = reader.UnsignedNumber(2);
    result.reference.index = reader.OptionalUnsigned(3);
    if (reader.NextIsOpening(5)) {
        result.failure = ReadError(reader, 5);
    } else {
        result.values = ReadValues(reader, 4);
    }
    return result;
}

// Calls one(object) for each element of the lists in tag 1 of all objects.
template <class One>
void ForEachProperty(TagReader& reader, One one) {
    while (!reader.AtEnd()) {
        ObjectId const object = reader.ObjectIdentifier(0);
        reader.Opening(1);
        while (!reader.Closes(1)) {
            one(object);
        }
    }
}

}  // namespace

std::optional<PropertyReference> OfReadProperty(Octets const& content, std::size_t at) {
    return TotalRead(content, at, ReadReference);
}

std::optional<std::vector<PropertyReference>> OfReadPropertyMultiple(Octets const& content, std::size_t at) {
    return TotalRead(content, at, [](TagReader& reader) {
        std::vector<PropertyReference> references;
        ForEachProperty(reader, [&](ObjectId const& object) {
            std::uint32_t const property = reader.UnsignedNumber(0);
            references.push_back({object, property, reader.OptionalUnsigned(1)});
        });
        return references;
    });
}

std::optional<ReadResult> OfReadPropertyAck(Octets const& content, std::size_t at) {
    return TotalRead(content, at, [](TagReader& reader) {
        ReadResult result;
        result.reference = ReadReference(reader);
        result.values = ReadValues(reader, 3);
        return result;
    });
}

std::optional<std::vector<ReadResult>> OfReadPropertyMultipleAck(Octets const& content, std::size_t at) {
    return TotalRead(content, at, [](TagReader& reader) {
        std::vector<ReadResult> results;
        ForEachProperty(reader,
                        [&](ObjectId const& object) { results.push_back(ReadOneResult(reader, object)); });
        return results;
    });
}

std::optional<WriteParameters> OfWriteProperty(Octets const& content, std::size_t at) {
    return TotalRead(content, at, [](TagReader& reader) {
        WriteParameters written;
        written.reference = ReadReference(reader);
        written.values = ReadValues(reader, 3);
        written.priority = reader.OptionalUnsigned(4);
        return written;
    });
}

}  // namespace standard::parameters
