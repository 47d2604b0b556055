#pragma once

#include <string>
#include <vector>

#include "FindingFormat.h"
#include "ProjectCheck.h"

namespace test {

constexpr char Device[] = "192.168.1.20:47808";

// A project with one block at line 1 and each variable on a line of its own, from line 2 on.
inline std::string ProjectOf(std::string const& fields, std::vector<std::string> const& variables) {
    std::string text = "BACnet.new{Name='B', " + fields + ", Vars={";
    for (std::string const& variable : variables) {
        text += "\n{" + variable + "},";
    }
    return text + "}}\n";
}

inline std::string const Local = std::string("Address='") + Device + "', MAC='" + Device + "'";

// The fields of a variable; more are fields in front of them that may replace these.
inline std::string Variable(char const* name, char const* element, char const* object, int number,
                            char const* property = "present-value", char const* more = "") {
    return std::string("Name='") + name + "', Type='DataValue', ElementType='" + element + "', ObjectType='" +
           object + "', ObjectNumber=" + std::to_string(number) + ", ObjectProperties='" + property + "'" +
           more;
}

inline workbench::ProjectReport Check(std::string const& text) {
    return workbench::CheckProjectText("p.lua", text, {});
}

// What people compare first: "code line block.variable field", one for each finding.
inline std::vector<std::string> Found(std::string const& text) {
    std::vector<std::string> found;
    for (workbench::Finding const& finding : Check(text).findings) {
        found.push_back(std::string(workbench::RowOf(finding.code).name) + " " +
                        std::to_string(finding.where.line) + " " + finding.block +
                        (finding.variable.empty() ? "" : "." + finding.variable) + " " + finding.field);
    }
    return found;
}

// The message of the first finding with that code; "" without one.
inline std::string MessageOf(workbench::FindingCode code, std::string const& text) {
    for (workbench::Finding const& finding : Check(text).findings) {
        if (finding.code == code) {
            return finding.message;
        }
    }
    return {};
}

using Lines = std::vector<std::string>;

}  // namespace test
