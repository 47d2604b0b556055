#pragma once

#include <cstdint>

#include "OctetWriter.h"

namespace standard {

// The application tag numbers of the primitive datatypes (clause 20.2.1.4).
enum class ApplicationTag : std::uint8_t {
    Null = 0,
    Boolean = 1,
    Unsigned = 2,
    Signed = 3,
    Real = 4,
    Double = 5,
    OctetString = 6,
    CharacterString = 7,
    BitString = 8,
    Enumerated = 9,
    Date = 10,
    Time = 11,
    ObjectIdentifier = 12
};

// Writes tagged values (clause 20.2.1). Content.h makes the contents.
class TagWriter {
public:
    void Null() { Header(0, 0, 0); }
    // An application Boolean has no contents: its value is in the tag (clause 20.2.3).
    void Boolean(bool value) { Header(1, 0, value ? 1 : 0); }
    // Any other primitive value.
    void Application(ApplicationTag tag, Octets const& content);
    void Context(std::uint8_t number, Octets const& content);
    void Opening(std::uint8_t number) { Bracket(number, 6); }
    void Closing(std::uint8_t number) { Bracket(number, 7); }
    // Octets of values that have their tags already.
    void Encoded(Octets const& octets) { writer.Append(octets); }

    std::size_t size() const { return writer.size(); }
    Octets Take() { return writer.Take(); }

private:
    void Header(std::uint8_t number, std::uint8_t classBit, std::size_t length);
    void Bracket(std::uint8_t number, std::uint8_t kind);

    OctetWriter writer;
};

}  // namespace standard
