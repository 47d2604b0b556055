#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "Hex.h"
#include "opcua/OpcUa_BuiltInType.h"

namespace fuzz {

using test::Octets;

// One variable of the fuzzed block: the codes of object type and property in a project and in BACnet, the
// declared type, the tags with which an honest device answers, and the value of these tags as a text.
struct ModelVariable {
    int typeCode;
    unsigned objectType;
    int propertyCode;
    unsigned property;
    OpcUa_BuiltInTypeHlp declared;
    char const* tags;
    char const* text;
};

// In the order in which the client keeps its tags.
inline ModelVariable const ModelVariables[] = {
    {1, 0, 0, 85, {OpcUaType_DataValue, OpcUaType_Float}, "44 42 28 00 00", "42"},
    {1, 0, 28, 28, OpcUaType_String, "75 04 00 41 42 43", "ABC"},
    {1, 0, 17, 81, OpcUaType_Boolean, "11", "true"},
    {6, 5, 0, 85, OpcUaType_Boolean, "91 01", "true"},
    {6, 5, 32, 84, OpcUaType_UInt32, "91 01", "1"},
    {16, 12, 9, 93, OpcUaType_Double, "44 3F 80 00 00", "1"},
    {22, 17, 0, 85, OpcUaType_Float, "44 41 A0 00 00", "20"},
    {22, 17, 30, 123, OpcUaType_String,
     "0E B4 08 00 00 00 44 41 A0 00 00 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E B4 12 1E 00 00 44 41 90 00 00 0F",
     "08000000,4,9,20.000000;;;;;;18300000,4,9,18.000000;"},
    {22, 17, 31, 38, OpcUaType_String, "0E 0C 7C 03 0F 03 0F 2E B4 08 00 00 00 44 41 A0 00 00 2F 39 10",
     "0,315032024,16,08000000,4,9,20.000000;"},
    {18, 19, 0, 85, {OpcUaType_DataValue, OpcUaType_UInt32}, "21 03", "3"},
    {11, 39, 0, 85, OpcUaType_String, "82 04 50", "0101"},
    {12, 42, 0, 85, OpcUaType_DateTime, "A4 7C 03 0F 05", "2024-03-15T00:00:00Z"},
    {13,
     44,
     0,
     85,
     {OpcUaType_DataValue, OpcUaType_DateTime},
     "A4 7C 03 0F 05 B4 0C 00 00 00",
     "2024-03-15T12:00:00Z"},
    {7, 45, 0, 85, OpcUaType_Int32, "31 FE", "254"},
    {8, 46, 0, 85, OpcUaType_Double, "55 08 40 45 00 00 00 00 00 00", "42"},
    {20, 47, 0, 85, OpcUaType_String, "62 0A FF", "0aff"},
    {14, 50, 0, 85, OpcUaType_UInt32, "B4 01 02 03 04", "3723400"},
};
inline constexpr std::size_t ModelCount = sizeof ModelVariables / sizeof *ModelVariables;

// The index of the first variable of each object, and the number of variables.
inline std::vector<std::size_t> const& ModelObjects() {
    static std::vector<std::size_t> const indices = [] {
        std::vector<std::size_t> starts = {0};
        for (std::size_t i = 1; i < ModelCount; ++i) {
            if (ModelVariables[i].objectType != ModelVariables[i - 1].objectType) {
                starts.push_back(i);
            }
        }
        starts.push_back(ModelCount);
        return starts;
    }();
    return indices;
}

// The instance of every object.
inline constexpr unsigned ModelInstance = 1;

inline Octets ObjectOctets(unsigned objectType) {
    unsigned const packed = objectType << 22 | ModelInstance;
    return {static_cast<char>(packed >> 24), static_cast<char>(packed >> 16), static_cast<char>(packed >> 8),
            static_cast<char>(packed)};
}

// The tags with which the honest device answers for a property.
inline Octets const& ModelTags(unsigned objectType, unsigned property) {
    static std::map<std::pair<unsigned, unsigned>, Octets> const tags = [] {
        std::map<std::pair<unsigned, unsigned>, Octets> all;
        for (ModelVariable const& variable : ModelVariables) {
            all[{variable.objectType, variable.property}] = test::Hex(variable.tags);
        }
        return all;
    }();
    static Octets const noFlags = test::Hex("82 04 00");
    auto const known = tags.find({objectType, property});
    return known == tags.end() ? noFlags : known->second;
}

// Appends one result of a ReadPropertyMultiple-ACK: a property, and its tags between opening and closing tag.
inline void AppendResult(Octets& octets, unsigned property, char opening, Octets const& tags, char closing) {
    octets.insert(octets.end(), {0x29, static_cast<char>(property), opening});
    octets.insert(octets.end(), tags.begin(), tags.end());
    octets.push_back(closing);
}

}  // namespace fuzz
