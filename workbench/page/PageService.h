#pragma once

#include <optional>
#include <string>
#include <vector>

#include "HttpService.h"
#include "PageFile.h"
#include "PagePlant.h"
#include "RequestGuard.h"

namespace workbench {

// Answers the requests of browsers and programs (docs/page.md).
class PageService : public HttpService {
public:
    // All references must outlive the service.
    PageService(PagePlant& runPlant, RequestGuard& requestGuard, std::vector<PageFile> const& pageFiles)
        : plant(runPlant), guard(requestGuard), files(pageFiles) {}

    std::optional<HttpResponse> Refusal(HttpRequest const& head) const override;
    HttpResponse Answer(HttpRequest const& request) const override;
    HttpResponse Failure(int status, std::string const& text) const override;

    // The streams are those of events.
    std::size_t MostStreams() const override { return PlantStream::MostReaders; }
    std::unique_ptr<HttpStream> OpenStream(HttpRequest const& request) const override;
    HttpResponse TooManyStreams() const override;

private:
    HttpResponse AnswerAllowed(HttpRequest const& request) const;
    PageFile const* FindFile(std::string const& path) const;

    PagePlant& plant;
    RequestGuard& guard;
    std::vector<PageFile> const& files;
};

}  // namespace workbench
