#pragma once

#include <optional>
#include <string>
#include <string_view>
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

// The variable with that id; null for any other text.
PageVariable const* FindVariable(PagePlant const& plant, std::string_view id);
PageResponse UnknownVariable(std::string_view id);
// A file that a browser saves under that name.
PageResponse CsvFile(std::string const& name, std::string const& text);

// The answer about a device; localDiff as in TimeText.h.
std::string InspectionJson(Inspection const& inspection, long long localDiff);

// The answers, by subject.
PageResponse AnswerSession(PageCall const& call);
PageResponse AnswerPlant(PageCall const& call);
PageResponse AnswerValues(PageCall const& call);
PageResponse AnswerStream(PageCall const& call);
PageResponse AnswerEvents(PageCall const& call);
PageResponse AnswerEventsCsv(PageCall const& call);
PageResponse AnswerVariable(PageCall const& call);
PageResponse AnswerTrend(PageCall const& call);
PageResponse AnswerTrendCsv(PageCall const& call);
PageResponse AnswerTrendsCsv(PageCall const& call);
PageResponse AnswerDevice(PageCall const& call);
PageResponse AnswerSchedule(PageCall const& call);
PageResponse AnswerComposed(PageCall const& call);
PageResponse AnswerWrite(PageCall const& call);

}  // namespace workbench
