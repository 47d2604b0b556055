#pragma once

#include <cstdint>
#include <optional>

#include "ObjectId.h"
#include "OctetReader.h"

namespace simulator {

// Reads the parameters of a service request (clause 20.2.1). Whatever is not as the service wants it
// throws a Reject with the reason of clause 18.9. Nothing is skipped and nothing is nested deeper than a
// service asks for, so the work is bounded by the request's length.
class TagReader {
public:
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

    bool atEnd() const { return m_reader.atEnd(); }
    // To be called when all parameters were read.
    void expectEnd() const;

private:
    enum class Kind { Primitive, Opening, Closing };
    struct Tag {
        std::uint8_t number;
        bool isContext;
        Kind kind;
        std::uint32_t length;
    };

    Tag next();
    std::uint32_t length(std::uint8_t firstOctet);
    std::uint32_t contextLength(std::uint8_t number);
    bool nextIsContext(std::uint8_t number) const;

    OctetReader m_reader;
};

}  // namespace simulator
