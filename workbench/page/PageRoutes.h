#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "HttpRequest.h"
#include "PagePlant.h"
#include "Sessions.h"

namespace workbench {

// What a route is answered from.
struct PageCall {
    PagePlant& plant;
    HttpRequest const& request;
    Sessions::Session const& session;
    PageVariable const* variable = nullptr;  // of a path with ID
};

struct PageRoute {
    char const* method;  // "GET" answers HEAD too
    char const* path;    // "ID" is the id of a variable
    HttpResponse (*answer)(PageCall const& call);
};

// All of the interface below /api/, in the order of the document.
std::vector<PageRoute> const& PageRoutes();

// The answer to a request that is allowed; a problem for an unknown path, another method or an unknown
// variable.
HttpResponse AnswerRoute(PagePlant& plant, HttpRequest const& request, Sessions::Session const& session);

// The variable with that id; null for any other text.
PageVariable const* FindVariable(PagePlant const& plant, std::string_view id);
HttpResponse UnknownVariable(std::string_view id);
// A file that a browser saves under that name.
HttpResponse CsvFile(std::string const& name, std::string const& text);

// The answer about a device; localDiff as in TimeText.h.
std::string InspectionJson(Inspection const& inspection, long long localDiff);

// The answers, by subject.
HttpResponse AnswerSession(PageCall const& call);
HttpResponse AnswerPlant(PageCall const& call);
HttpResponse AnswerValues(PageCall const& call);
HttpResponse AnswerStream(PageCall const& call);
HttpResponse AnswerEvents(PageCall const& call);
HttpResponse AnswerEventsCsv(PageCall const& call);
HttpResponse AnswerVariable(PageCall const& call);
HttpResponse AnswerTrend(PageCall const& call);
HttpResponse AnswerTrendCsv(PageCall const& call);
HttpResponse AnswerTrendsCsv(PageCall const& call);
HttpResponse AnswerDevice(PageCall const& call);
HttpResponse AnswerSchedule(PageCall const& call);
HttpResponse AnswerComposed(PageCall const& call);
HttpResponse AnswerWrite(PageCall const& call);

}  // namespace workbench
