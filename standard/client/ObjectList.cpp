#include "ObjectList.h"

#include <algorithm>

#include "PropertyId.h"

namespace standard {

namespace {

constexpr std::uint32_t ObjectClass = 1;
constexpr std::uint32_t PropertyClass = 2;
constexpr std::uint32_t UnknownObject = 31;
constexpr std::uint32_t UnknownProperty = 32;
constexpr std::uint32_t InvalidArrayIndex = 42;

bool IsError(Failure const& failure, std::uint32_t errorClass, std::uint32_t code) {
    return failure.kind == Failure::Kind::Error && failure.errorClass == errorClass && failure.code == code;
}

// Whether the elements cannot be read either.
bool IsFinal(Failure const& failure) {
    return failure.kind == Failure::Kind::Stopped || IsError(failure, ObjectClass, UnknownObject) ||
           IsError(failure, PropertyClass, UnknownProperty);
}

bool EndsReading(Failure const& failure) {
    return failure.kind == Failure::Kind::Stopped || failure.kind == Failure::Kind::Silent;
}

}  // namespace

ObjectListReader::ObjectListReader(Client& deviceClient, Peer const& devicePeer, ObjectId const& deviceObject,
                                   ObjectListSettings const& listSettings)
    : client(deviceClient), peer(devicePeer), device(deviceObject), settings(listSettings) {}

ObjectListResult ObjectListReader::Read() {
    result = ObjectListResult();
    ReadResult const whole = client.Read(peer, Reference(std::nullopt));
    if (!whole.failure && TakeWhole(whole.values)) {
        return std::move(result);
    }
    if (whole.failure && IsFinal(*whole.failure)) {
        End(*whole.failure, "the object list");
        return std::move(result);
    }
    chunk = std::max<std::size_t>(settings.chunk, 1);
    for (unsigned attempt = 0; attempt < std::max(settings.attempts, 1u); ++attempt) {
        if (ReadElements()) {
            return std::move(result);
        }
    }
    result.isComplete = false;
    result.reason = "the list changed each time that it was read";
    return std::move(result);
}

// A list without elements is not possible: a device has a Device object. Its length is read then.
bool ObjectListReader::TakeWhole(std::vector<Datum> const& values) {
    if (values.empty()) {
        return false;
    }
    result.isWhole = result.isComplete = true;
    result.length = values.size();
    seen.clear();
    TakeValues(values);
    return true;
}

void ObjectListReader::TakeValues(std::vector<Datum> const& values) {
    for (Datum const& value : values) {
        if (value.kind != DatumKind::ObjectIdentifier) {
            ++result.withoutObject;
        } else if (result.objects.size() >= settings.mostObjects) {
            Incomplete("the list has " + std::to_string(result.length) + " elements; the first " +
                       std::to_string(settings.mostObjects) + " objects were read");
            return;
        } else if (seen.insert(value.Object()).second) {
            result.objects.push_back(value.Object());
        } else {
            ++result.repeated;
        }
    }
}

// Returns false if the list changed and has to be read again.
bool ObjectListReader::ReadElements() {
    auto const before = ReadStamp();
    if (!before) {
        return true;
    }
    unsigned const changes = result.changes;
    result = ObjectListResult();
    result.changes = changes;
    result.length = before->length;
    result.isComplete = true;
    seen.clear();
    unreadable = 0;
    endsEarly = false;
    if (!ReadChunks()) {
        return true;
    }
    return !HasChanged(*before);
}

// Returns false if the device does not answer any more, or if the reading was stopped.
bool ObjectListReader::ReadChunks() {
    std::size_t const last = std::min(result.length, settings.mostObjects);
    for (std::size_t done = 0; done < last && !endsEarly;) {
        std::vector<PropertyReference> references;
        for (std::size_t i = done; i < std::min(done + chunk, last); ++i) {
            references.push_back(Reference(static_cast<std::uint32_t>(i + 1)));
        }
        std::size_t const requestsBefore = client.RequestCount();
        for (ReadResult const& element : client.ReadMultiple(peer, references)) {
            if (!TakeElement(element)) {
                return false;
            }
        }
        chunk = client.RequestCount() - requestsBefore > 1 ? std::max<std::size_t>(chunk / 2, 1) : chunk;
        done += references.size();
        if (progress) {
            progress(done, result.length);
        }
    }
    if (last < result.length) {
        Incomplete("the list has " + std::to_string(result.length) + " elements; the first " +
                   std::to_string(last) + " were read");
    }
    return true;
}

bool ObjectListReader::TakeElement(ReadResult const& element) {
    if (!element.failure) {
        result.withoutObject += element.values.empty() ? 1 : 0;
        TakeValues(element.values);
        return true;
    }
    std::string const index = "element " + std::to_string(element.reference.index.value_or(0));
    if (EndsReading(*element.failure)) {
        End(*element.failure, index);
        return false;
    }
    endsEarly = endsEarly || IsError(*element.failure, PropertyClass, InvalidArrayIndex);
    if (++unreadable == 1) {
        Incomplete(index + " of the list cannot be read: " + FailureText(*element.failure));
    }
    return true;
}

std::optional<ObjectListReader::Stamp> ObjectListReader::ReadStamp() {
    constexpr auto revision = static_cast<std::uint32_t>(PropertyId::Database_Revision);
    auto const results = client.ReadMultiple(peer, {Reference(0), {device, revision, {}}});
    ReadResult const& length = results.front();
    if (length.failure) {
        End(*length.failure, "the length of the object list");
        return std::nullopt;
    }
    if (length.values.size() != 1 || length.values[0].kind != DatumKind::Unsigned) {
        End({Failure::Kind::Malformed, 0, 0, "the length of a list is a number"},
            "the length of the object list");
        return std::nullopt;
    }
    constexpr std::uint64_t longest = UINT32_MAX;  // the indices of an array (clause 21)
    std::uint64_t const stated = std::min(length.values[0].number, longest);
    return Stamp{static_cast<std::size_t>(stated), results.back().values};
}

// The list is complete only if it was the same before and after its elements.
bool ObjectListReader::HasChanged(Stamp const& before) {
    auto const after = ReadStamp();
    if (!after) {
        return false;
    }
    bool const hasRevisions = !before.revision.empty() && !after->revision.empty();
    bool const hasChanged =
        endsEarly || after->length != before.length || (hasRevisions && after->revision != before.revision);
    result.changes += hasChanged ? 1 : 0;
    return hasChanged;
}

void ObjectListReader::End(Failure const& failure, std::string const& what) {
    result.failure = failure;
    Incomplete(what + ": " + FailureText(failure));
}

// The first reason counts.
void ObjectListReader::Incomplete(std::string const& reason) {
    result.isComplete = false;
    if (result.reason.empty()) {
        result.reason = reason;
    }
}

PropertyReference ObjectListReader::Reference(std::optional<std::uint32_t> index) const {
    return {device, static_cast<std::uint32_t>(PropertyId::Object_List), index};
}

}  // namespace standard
