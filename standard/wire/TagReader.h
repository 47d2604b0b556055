#pragma once

#include <cstdint>
#include <optional>

#include "ObjectId.h"
#include "OctetReader.h"
#include "TagWriter.h"

namespace standard {

// A primitive value and its application tag. The content of a Boolean is one octet, 0 or 1. Any other value
// has the contents octets of its tag, which are not checked.
struct Primitive {
    ApplicationTag tag;
    Octets content;
};

// Reads the parameters of a service request (clause 20.2.1). A parameter that the service does not allow
// throws a Reject with the reason of clause 18.9. Nested tags are read without recursion, and the work is
// linear in the length of the request.
class TagReader {
public:
    enum class Kind { Primitive, Opening, Closing };
    struct Any {
        std::uint8_t number;
        bool isContext;
        Kind kind;
        Octets content;  // as in Primitive
    };

    // The octets must outlive the reader.
    explicit TagReader(Octets const& octets, std::size_t position = 0) : reader(octets, position) {}

    ObjectId ObjectIdentifier(std::uint8_t contextNumber);
    // At most 32 bits.
    std::uint32_t UnsignedNumber(std::uint8_t contextNumber);
    // No value if the next tag is another one, which is then not consumed.
    std::optional<std::uint32_t> OptionalUnsigned(std::uint8_t contextNumber);
    void Opening(std::uint8_t number);
    // True if the next tag is this closing tag, which is then consumed. Throws a Reject at the end.
    bool Closes(std::uint8_t number);
    bool NextIsOpening(std::uint8_t number) const;
    bool NextIsContext(std::uint8_t number) const;
    // The contents octets of a primitive context tag.
    Octets ContextOctets(std::uint8_t number);
    Primitive Application();
    // The contents octets of that application tag.
    Octets ApplicationOctets(ApplicationTag tag);
    // An Unsigned or an Enumerated of at most 32 bits.
    std::uint32_t ApplicationNumber(ApplicationTag tag);
    ObjectId ApplicationObject();
    // The octets between an opening tag and its closing tag: whole tags, in which opening and closing tags
    // match.
    Octets Enclosed(std::uint8_t number);
    // Any tag, with the contents of a primitive one.
    Any TakeAny();

    bool AtEnd() const { return reader.AtEnd(); }
    // The index of the next tag in the octets.
    std::size_t Position() const { return reader.Position(); }
    // Returns to an earlier position of this reader.
    void Rewind(std::size_t earlier) { reader.Rewind(earlier); }
    // To be called after the last parameter. Throws a Reject if octets are left.
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
