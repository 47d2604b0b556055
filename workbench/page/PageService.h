#pragma once

#include <optional>
#include <string>
#include <vector>

#include "PageFile.h"
#include "PagePlant.h"
#include "PageRequest.h"
#include "RequestGuard.h"

namespace workbench {

// Answers the requests of browsers and programs (docs/page.md). Needs no socket. Thread-safe.
class PageService {
public:
    // All references must outlive the service.
    PageService(PagePlant& runPlant, RequestGuard& requestGuard, std::vector<PageFile> const& pageFiles)
        : plant(runPlant), guard(requestGuard), files(pageFiles) {}

    // The answer to a request that is refused by its head; none if its body may be read.
    std::optional<PageResponse> Refusal(PageRequest const& head) const;
    PageResponse Answer(PageRequest const& request) const;
    // An error of the server itself, or of the connection.
    static PageResponse Failure(int status, std::string const& text);

    // The events for an answer with isStream; null if there are too many readers.
    std::unique_ptr<StreamReader> OpenStream(PageRequest const& request) const;
    // The answer then.
    static PageResponse TooManyStreams();

private:
    PageResponse AnswerAllowed(PageRequest const& request) const;
    PageFile const* FindFile(std::string const& path) const;

    PagePlant& plant;
    RequestGuard& guard;
    std::vector<PageFile> const& files;
};

}  // namespace workbench
