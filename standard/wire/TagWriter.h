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

// Writes tagged values (clause 20.2.1); the contents come from standard::content.
class TagWriter {
public:
    void null() { header(0, 0, 0); }
    // An application Boolean has no contents: its value stands in the tag itself (clause 20.2.3).
    void boolean(bool value) { header(1, 0, value ? 1 : 0); }
    // Any other primitive value.
    void application(ApplicationTag tag, Octets const& content);
    void context(std::uint8_t number, Octets const& content);
    void opening(std::uint8_t number) { bracket(number, 6); }
    void closing(std::uint8_t number) { bracket(number, 7); }
    // Octets that are tagged values already.
    void encoded(Octets const& octets) { m_writer.append(octets); }

    std::size_t size() const { return m_writer.size(); }
    Octets take() { return m_writer.take(); }

private:
    void header(std::uint8_t number, std::uint8_t classBit, std::size_t length);
    void bracket(std::uint8_t number, std::uint8_t kind);

    OctetWriter m_writer;
};

}  // namespace standard
