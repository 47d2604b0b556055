#pragma once

#include "Content.h"
#include "ObjectType.h"
#include "StationFixture.h"

namespace test {

// A client that writes. Objects are told as in device files, values in hexadecimal with their tags.
class WriteFixture : public StationFixture {
protected:
    static constexpr unsigned kPresentValue = 85;
    static constexpr char const* kAck = "20 01 0F";
    static constexpr char const* kInvalidDataType = "50 01 0F 91 02 91 09";
    static constexpr char const* kOutOfRange = "50 01 0F 91 02 91 25";
    static constexpr char const* kDenied = "50 01 0F 91 02 91 28";

    static std::string parameters(std::string const& type, unsigned property, int index = -1) {
        simulator::TagWriter writer;
        writer.context(0, simulator::content::objectIdentifier({simulator::objectTypeOfName(type)->code, 1}));
        writer.context(1, simulator::content::unsignedNumber(property));
        if (index >= 0) {
            writer.context(2, simulator::content::unsignedNumber(static_cast<unsigned>(index)));
        }
        return ToHex(writer.take());
    }

    // The answer to a write to instance 1 of a type. Priority 0 stands for none.
    std::string write(std::string const& type, unsigned property, std::string const& value,
                      unsigned priority = 0, int index = -1) {
        std::string const tail = priority == 0 ? "" : " 49 " + ToHex({static_cast<char>(priority)});
        return answer("02 75 01 0F " + parameters(type, property, index) + " 3E " + value + " 3F" + tail);
    }

    std::string writeElement(std::string const& type, unsigned property, int index,
                             std::string const& value) {
        return write(type, property, value, 0, index);
    }

    // The value that a read gives, or the refusal.
    std::string read(std::string const& type, unsigned property, int index = -1) {
        std::string const text = answer("02 75 01 0C " + parameters(type, property, index));
        std::size_t const start = text.find(" 3E");
        if (text.substr(0, 2) != "30") {
            return text;
        }
        std::string const value = text.substr(start + 3, text.size() - start - 6);
        return value.empty() ? "" : value.substr(1);
    }
};

}  // namespace test
