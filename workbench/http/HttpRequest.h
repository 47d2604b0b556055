#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace workbench {

// A request of a browser or a program, and its answer, without the connection that they use.

// The longest body, in octets.
constexpr std::size_t LongestBody = 1 << 20;

struct HttpRequest {
    std::string method;  // "GET", "POST", ...
    std::string path;    // "/api/values", without escapes and parameters
    std::multimap<std::string, std::string> parameters;
    std::multimap<std::string, std::string> headers;  // names in lower case
    std::string body;
    std::string sender;  // the address of the other side

    // The value of a header; empty without it. One that is there several times has all values, with ", "
    // between them, which no check takes for a single one.
    std::string Header(std::string const& name) const;
    // The first value of a parameter; empty without it.
    std::string Parameter(std::string const& name) const;
};

struct HttpResponse {
    int status = 200;
    std::string type = "application/json";
    std::string body;
    std::vector<std::pair<std::string, std::string>> headers;
    // A stream follows instead of the body (HttpService.h).
    bool isStream = false;
};

// {"error":"..."}.
HttpResponse Problem(int status, std::string const& text);

}  // namespace workbench
