#pragma once

#include <memory>
#include <string>
#include <vector>

#include "PageOptions.h"
#include "PagePlant.h"

namespace workbench {

// The page of a run, from its start to its end.
class RunPage {
public:
    // Binds the address. std::runtime_error if that is not possible, for a token file with a mistake, and if
    // the program was built without the page.
    RunPage(PageOptions const& options, PagePlant::Parts const& parts);
    RunPage(RunPage const&) = delete;
    RunPage& operator=(RunPage const&) = delete;
    ~RunPage();

    void Start();
    // Ends all connections at once.
    void End();

    // The link with the token, and what its user should know.
    std::string const& Link() const { return link; }
    std::vector<std::string> const& Warnings() const { return warnings; }

private:
    struct Parts;

    std::unique_ptr<Parts> page;
    std::string link;
    std::vector<std::string> warnings;
};

}  // namespace workbench
