#include "PageRoutes.h"

#include <charconv>
#include <string_view>
#include <system_error>

#include "Printable.h"

namespace workbench {

namespace {

// Takes what is before the next slash.
std::string_view TakeSegment(std::string_view& path) {
    std::size_t const end = std::min(path.find('/', 1), path.size());
    std::string_view const segment = path.substr(0, end);
    path.remove_prefix(end);
    return segment;
}

// Whether the path is that of the route; id becomes the text at "ID".
bool IsPathOf(PageRoute const& route, std::string_view path, std::string_view& id) {
    std::string_view pattern = route.path;
    while (!pattern.empty() && !path.empty()) {
        std::string_view const expected = TakeSegment(pattern);
        std::string_view const given = TakeSegment(path);
        if (expected == "/ID" && given.size() > 1) {
            id = given.substr(1);
        } else if (expected != given) {
            return false;
        }
    }
    return pattern.empty() && path.empty();
}

bool IsMethodOf(PageRoute const& route, std::string const& method) {
    std::string_view const expected = route.method;
    return expected == method || (expected == "GET" && method == "HEAD");
}

HttpResponse CallRoute(PageRoute const& route, PageCall call, std::string_view id) {
    if (!id.empty()) {
        call.variable = FindVariable(call.plant, id);
        if (!call.variable) {
            return UnknownVariable(id);
        }
    }
    return route.answer(call);
}

HttpResponse MethodProblem(HttpRequest const& request, std::string const& allowed) {
    HttpResponse response = Problem(405, request.method + " is not possible with " +
                                             tools::Quoted(request.path) + "; allowed: " + allowed);
    response.headers.emplace_back("Allow", allowed);
    return response;
}

}  // namespace

PageVariable const* FindVariable(PagePlant const& plant, std::string_view id) {
    std::size_t number = 0;
    auto const [end, error] = std::from_chars(id.data(), id.data() + id.size(), number);
    return error == std::errc() && end == id.data() + id.size() ? plant.Find(number) : nullptr;
}

HttpResponse UnknownVariable(std::string_view id) {
    return Problem(404, tools::Quoted(id) + " is not the id of a variable; GET /api/plant has all of them");
}

HttpResponse CsvFile(std::string const& name, std::string const& text) {
    HttpResponse response;
    response.type = "text/csv; charset=utf-8";
    response.headers.emplace_back("Content-Disposition", "attachment; filename=\"" + name + "\"");
    response.body = text;
    return response;
}

std::vector<PageRoute> const& PageRoutes() {
    static std::vector<PageRoute> const routes = {
        {"GET", "/api/session", AnswerSession},
        {"GET", "/api/plant", AnswerPlant},
        {"GET", "/api/values", AnswerValues},
        {"GET", "/api/stream", AnswerStream},
        {"GET", "/api/events", AnswerEvents},
        {"GET", "/api/events.csv", AnswerEventsCsv},
        {"GET", "/api/variables/ID", AnswerVariable},
        {"GET", "/api/variables/ID/trend", AnswerTrend},
        {"GET", "/api/variables/ID/trend.csv", AnswerTrendCsv},
        {"GET", "/api/trends.csv", AnswerTrendsCsv},
        {"GET", "/api/variables/ID/device", AnswerDevice},
        {"GET", "/api/variables/ID/schedule", AnswerSchedule},
        {"POST", "/api/variables/ID/schedule", AnswerComposed},
        {"POST", "/api/variables/ID/write", AnswerWrite},
    };
    return routes;
}

HttpResponse AnswerRoute(PagePlant& plant, HttpRequest const& request, Sessions::Session const& session) {
    std::string allowed;
    for (PageRoute const& route : PageRoutes()) {
        std::string_view id;
        if (!IsPathOf(route, request.path, id)) {
            continue;
        }
        if (IsMethodOf(route, request.method)) {
            return CallRoute(route, {plant, request, session}, id);
        }
        allowed += (allowed.empty() ? "" : ", ") + std::string(route.method);
    }
    return allowed.empty() ? Problem(404, tools::Quoted(request.path) +
                                              " is not a path of this page; docs/page.md has all")
                           : MethodProblem(request, allowed);
}

}  // namespace workbench
