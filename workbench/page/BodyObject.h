#pragma once

#include <rapidjson/document.h>

#include <optional>
#include <string>

namespace workbench {

// The JSON object of a request's body. Nesting is bounded by the length of the body only: it is read without
// recursion.
class BodyObject {
public:
    explicit BodyObject(std::string const& body);

    // What is wrong with the body; empty if it is an object.
    std::string const& Mistake() const { return mistake; }
    // A member that is a text; none without it, or if it is something else.
    std::optional<std::string> Text(char const* name) const;
    // Null without it.
    rapidjson::Value const* Member(char const* name) const;

private:
    rapidjson::Document document;
    std::string mistake;
};

}  // namespace workbench
