#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Hex.h"
#include "opcua/OpcUa_BuiltInType.h"

namespace bench {

// The requests for one object, and the answers of its device.
struct Subject {
    // A variable of the object: the property as the configuration numbers it, and the variable's type.
    struct Variable {
        int property = 0;
        OpcUa_BuiltInTypeHlp type;
    };

    int objectType = 0;  // as the configuration numbers it
    std::vector<Variable> variables;
    bool isWritten = false;  // instead of read
    // The answer's datagrams; object and invoke id are filled in later. Without any the device is silent.
    std::vector<test::Octets> answers;
    // The number of records that a poll of the object returns.
    std::size_t records = 0;
};

// The subject of a name of the form KIND-NUMBER:
//
//   properties-N  N variables on a loop; above eleven its properties repeat, and then the first variable of
//                 each gets the value
//   segments-N    three properties in N segments of the largest size that the driver accepts, filled by a
//                 description
//   schedule-N    a weekly schedule of 7 days with N entries each
//   write-1       a Real that is written and acknowledged
//   silent-N      N variables on a loop whose device never answers
//
// Another name throws std::invalid_argument.
Subject SubjectNamed(std::string const& name);

}  // namespace bench
