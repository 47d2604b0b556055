#pragma once

#include "Content.h"
#include "ObjectType.h"
#include "StationFixture.h"

namespace test {

// A client that writes. Objects are written as in device files, values in hexadecimal with their tags.
class WriteFixture : public StationFixture {
protected:
    static constexpr unsigned PresentValue = 85;
    static constexpr char const* Ack = "20 01 0F";
    static constexpr char const* InvalidDataType = "50 01 0F 91 02 91 09";
    static constexpr char const* OutOfRange = "50 01 0F 91 02 91 25";
    static constexpr char const* Denied = "50 01 0F 91 02 91 28";

    static std::string Parameters(std::string const& type, unsigned property, int index = -1) {
        simulator::TagWriter writer;
        writer.Context(0, simulator::content::ObjectIdentifier({simulator::ObjectTypeOfName(type)->code, 1}));
        writer.Context(1, simulator::content::UnsignedNumber(property));
        if (index >= 0) {
            writer.Context(2, simulator::content::UnsignedNumber(static_cast<unsigned>(index)));
        }
        return ToHex(writer.Take());
    }

    // The answer to a write to instance 1 of a type. Priority 0 stands for none.
    std::string Write(std::string const& type, unsigned property, std::string const& value,
                      unsigned priority = 0, int index = -1) {
        std::string const tail = priority == 0 ? "" : " 49 " + ToHex({static_cast<char>(priority)});
        return Answer("02 75 01 0F " + Parameters(type, property, index) + " 3E " + value + " 3F" + tail);
    }

    std::string WriteElement(std::string const& type, unsigned property, int index,
                             std::string const& value) {
        return Write(type, property, value, 0, index);
    }

    // The value from a read, or the error response.
    std::string Read(std::string const& type, unsigned property, int index = -1) {
        std::string const text = Answer("02 75 01 0C " + Parameters(type, property, index));
        std::size_t const start = text.find(" 3E");
        if (text.substr(0, 2) != "30") {
            return text;
        }
        std::string const value = text.substr(start + 3, text.size() - start - 6);
        return value.empty() ? "" : value.substr(1);
    }
};

}  // namespace test
