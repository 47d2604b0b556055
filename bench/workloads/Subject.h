#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Hex.h"
#include "opcua/OpcUa_BuiltInType.h"

namespace bench {

// What is asked of one object, and what its device answers.
struct Subject {
    // A variable of the object: the property as the configuration numbers it, and the variable's type.
    struct Variable {
        int property = 0;
        OpcUa_BuiltInTypeHlp type;
    };

    int objectType = 0;  // as the configuration numbers it
    std::vector<Variable> variables;
    bool isWritten = false;  // instead of read
    // The answer's datagrams, for an object and an invoke id that are put in later.
    std::vector<test::Octets> answers;
    // Records that a poll of the object yields.
    std::size_t records = 0;
};

// The subject of a name of the form KIND-NUMBER:
//
//   properties-N  N variables on a loop; of its eleven properties those beyond are asked for over again, and
//                 then the first variable of each gets its value
//   segments-N    three properties in N segments, as large as the driver takes them, filled by a description
//   schedule-N    a weekly schedule of 7 days with N entries each
//   write-1       a Real that is written and acknowledged
//
// Another name throws std::invalid_argument.
Subject SubjectNamed(std::string const& name);

}  // namespace bench
