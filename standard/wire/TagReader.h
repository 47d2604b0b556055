#pragma once

#include <cstdint>
#include <optional>

#include "ObjectId.h"
#include "OctetReader.h"
#include "TagWriter.h"

namespace standard {

// A primitive value with the application tag it had. A Boolean, which has no contents, gets one octet of 0
// or 1; anything else has its contents octets, which are not checked.
struct Primitive {
    ApplicationTag tag;
    Octets content;
};

// Reads the parameters of a service request (clause 20.2.1). Whatever the service does not allow
// throws a Reject with the reason of clause 18.9. Nothing recurses, whatever the nesting, and the work
// is bounded by the request's length.
class TagReader {
public:
    enum class Kind { Primitive, Opening, Closing };
    struct Any {
        std::uint8_t number;
        bool isContext;
        Kind kind;
        Octets content;  // as Primitive has it
    };

    // The octets must outlive the reader.
    explicit TagReader(Octets const& octets, std::size_t position = 0) : reader(octets, position) {}

    ObjectId ObjectIdentifier(std::uint8_t contextNumber);
    // At most 32 bits.
    std::uint32_t UnsignedNumber(std::uint8_t contextNumber);
    // Nothing, and nothing taken, when the next tag is another one.
    std::optional<std::uint32_t> OptionalUnsigned(std::uint8_t contextNumber);
    void Opening(std::uint8_t number);
    // Takes the closing tag, if that is the next one.
    bool Closes(std::uint8_t number);
    bool NextIsOpening(std::uint8_t number) const;
    bool NextIsContext(std::uint8_t number) const;
    // The contents octets of a primitive context tag.
    Octets ContextOctets(std::uint8_t number);
    Primitive Application();
    // What stands between an opening tag and its closing one, tags included. It holds whole tags, and
    // brackets that match.
    Octets Enclosed(std::uint8_t number);
    // Takes whatever tag comes next, with the contents of a primitive one.
    Any TakeAny();

    bool AtEnd() const { return reader.AtEnd(); }
    // Where the next tag begins in the octets.
    std::size_t Position() const { return reader.Position(); }
    // To be called after all parameters were read.
    void ExpectEnd() const;

private:
    struct Tag {
        std::uint8_t number;
        bool isContext;
        Kind kind;
        std::uint32_t length;
    };

    Tag Next();
    std::uint32_t Length(std::uint8_t firstOctet);
    std::uint32_t ContextLength(std::uint8_t number);

    OctetReader reader;
};

}  // namespace standard
