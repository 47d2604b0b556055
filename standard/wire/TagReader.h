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

// Reads the parameters of a service request (clause 20.2.1). Whatever is not as the service wants it
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
    explicit TagReader(Octets const& octets, std::size_t position = 0) : m_reader(octets, position) {}

    ObjectId objectIdentifier(std::uint8_t contextNumber);
    // At most 32 bits.
    std::uint32_t unsignedNumber(std::uint8_t contextNumber);
    // Nothing, and nothing taken, when the next tag is another one.
    std::optional<std::uint32_t> optionalUnsigned(std::uint8_t contextNumber);
    void opening(std::uint8_t number);
    // Takes the closing tag, if that is the next one.
    bool closes(std::uint8_t number);
    bool nextIsOpening(std::uint8_t number) const;
    bool nextIsContext(std::uint8_t number) const;
    // The contents octets of a primitive context tag.
    Octets contextOctets(std::uint8_t number);
    Primitive application();
    // What stands between an opening tag and its closing one, tags included. It holds whole tags, and
    // brackets that match.
    Octets enclosed(std::uint8_t number);
    // Takes whatever tag comes next, with the contents of a primitive one.
    Any any();

    bool atEnd() const { return m_reader.atEnd(); }
    // Where the next tag begins in the octets.
    std::size_t position() const { return m_reader.position(); }
    // To be called when all parameters were read.
    void expectEnd() const;

private:
    struct Tag {
        std::uint8_t number;
        bool isContext;
        Kind kind;
        std::uint32_t length;
    };

    Tag next();
    std::uint32_t length(std::uint8_t firstOctet);
    std::uint32_t contextLength(std::uint8_t number);

    OctetReader m_reader;
};

}  // namespace standard
