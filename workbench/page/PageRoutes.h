#pragma once

#include <optional>
#include <string>
#include <vector>

#include "PagePlant.h"
#include "PageRequest.h"
#include "Sessions.h"

namespace workbench {

// What a route is answered from.
struct PageCall {
    PagePlant& plant;
    PageRequest const& request;
    Sessions::Session const& session;
    PageVariable const* variable = nullptr;  // of a path with ID
};

struct PageRoute {
    char const* method;  // "GET" answers HEAD too
    char const* path;    // "ID" is the id of a variable
    PageResponse (*answer)(PageCall const& call);
};

// All of the interface below /api/, in the order of the document.
std::vector<PageRoute> const& PageRoutes();

// The answer to a request that is allowed; a problem for an unknown path, another method or an unknown
// variable.
PageResponse AnswerRoute(PagePlant& plant, PageRequest const& request, Sessions::Session const& session);

// The answers, by subject.
PageResponse AnswerSession(PageCall const& call);
PageResponse AnswerPlant(PageCall const& call);
PageResponse AnswerValues(PageCall const& call);
PageResponse AnswerStream(PageCall const& call);

}  // namespace workbench
