#include "PageService.h"

#include "PageRoutes.h"
#include "Printable.h"

namespace workbench {

namespace {

constexpr char Api[] = "/api/";

HttpResponse AnswerFile(PageFile const& file, HttpRequest const& request) {
    HttpResponse response;
    response.type = std::string(file.type);
    // A browser asks each time, so that it never mixes files of two versions.
    response.headers.emplace_back("Cache-Control", "no-cache");
    response.headers.emplace_back("ETag", std::string(file.tag));
    if (request.Header("if-none-match") == file.tag) {
        response.status = 304;
    } else {
        response.body = std::string(file.content);
    }
    return response;
}

HttpResponse Secured(HttpResponse response) {
    AddSecurityHeaders(response);
    return response;
}

}  // namespace

std::optional<HttpResponse> PageService::Refusal(HttpRequest const& head) const {
    auto refusal = guard.Refusal(head);
    if (refusal) {
        AddSecurityHeaders(*refusal);
    }
    return refusal;
}

HttpResponse PageService::Failure(int status, std::string const& text) const {
    return Secured(Problem(status, text));
}

HttpResponse PageService::Answer(HttpRequest const& request) const {
    if (auto const refusal = Refusal(request)) {
        return *refusal;
    }
    return Secured(AnswerAllowed(request));
}

HttpResponse PageService::AnswerAllowed(HttpRequest const& request) const {
    if (RequestGuard::IsSignIn(request)) {
        return guard.SignIn(request);
    }
    if (request.path.compare(0, sizeof(Api) - 1, Api) == 0) {
        // The session may have ended since the head was looked at.
        auto const session = guard.SessionOf(request);
        return session ? AnswerRoute(plant, request, *session) : Problem(401, "the session has ended");
    }
    PageFile const* const file = FindFile(request.path);
    if (!file) {
        return Problem(404, tools::Quoted(request.path) + " is not a file of this page");
    }
    if (request.method == "POST") {
        HttpResponse response = Problem(405, "files can be read only; allowed: GET");
        response.headers.emplace_back("Allow", "GET");
        return response;
    }
    return AnswerFile(*file, request);
}

PageFile const* PageService::FindFile(std::string const& path) const {
    std::string const name = path == "/" ? "/index.html" : path;
    for (PageFile const& file : files) {
        if (file.path == name) {
            return &file;
        }
    }
    return nullptr;
}

std::unique_ptr<HttpStream> PageService::OpenStream(HttpRequest const& request) const {
    std::string const after = request.Parameter("after");
    return plant.Stream().Open(after.empty() ? request.Header("last-event-id") : after);
}

HttpResponse PageService::TooManyStreams() const {
    HttpResponse response = Problem(503, "all " + std::to_string(PlantStream::MostReaders) +
                                             " event streams are in use; close other windows of this page");
    response.headers.emplace_back("Retry-After", "10");
    return Secured(response);
}

}  // namespace workbench
