#include "RunPage.h"

#include <stdexcept>

#ifdef WORKBENCH_HAS_PAGE

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>

#include "HttpServer.h"
#include "PageService.h"
#include "RequestGuard.h"
#include "Secret.h"
#include "Sessions.h"

namespace workbench {

namespace {

// An address of this machine for a link, where the server listens at all of them.
std::string OwnAddress() {
    ifaddrs* all = nullptr;
    std::string found = "127.0.0.1";
    if (getifaddrs(&all) != 0) {
        return found;
    }
    for (ifaddrs const* one = all; one; one = one->ifa_next) {
        bool const isUsable = one->ifa_addr && one->ifa_addr->sa_family == AF_INET &&
                              (one->ifa_flags & IFF_UP) != 0 && (one->ifa_flags & IFF_LOOPBACK) == 0;
        char text[INET_ADDRSTRLEN] = "";
        if (isUsable && inet_ntop(AF_INET, &reinterpret_cast<sockaddr_in const*>(one->ifa_addr)->sin_addr,
                                  text, sizeof text)) {
            found = text;
            break;
        }
    }
    freeifaddrs(all);
    return found;
}

std::string LinkOf(HttpAddress address, std::string const& token) {
    if (address.address == "0.0.0.0" || address.address == "::") {
        address.address = OwnAddress();
    }
    return "http://" + HostText(address) + "/?token=" + token;
}

}  // namespace

struct RunPage::Parts {
    Parts(PageOptions const& options, PagePlant::Parts const& run, std::string const& token)
        : server(ReadHttpAddress(options.address), "--page"),
          sessions(token),
          guard(sessions, AllowedHosts(server.Address(), options.hosts), server.Address().port),
          plant(run),
          service(plant, guard, PageFiles()) {}

    HttpServer server;
    Sessions sessions;
    RequestGuard guard;
    PagePlant plant;
    PageService service;
};

RunPage::RunPage(PageOptions const& options, PagePlant::Parts const& parts) {
    SecretFile secret;
    if (options.tokenFile.empty()) {
        secret.token = RandomSecret();
    } else {
        secret = ReadSecretFile(options.tokenFile);
    }
    if (!secret.warning.empty()) {
        warnings.push_back(secret.warning);
    }
    page = std::make_unique<Parts>(options, parts, secret.token);
    link = LinkOf(page->server.Address(), secret.token);
    if (!IsLoopback(page->server.Address().address)) {
        warnings.push_back(
            "the page is plain HTTP: who can listen to the network can read its token and its values; "
            "docs/page.md "
            "shows a proxy with TLS");
    }
}

RunPage::~RunPage() {
    End();
}

void RunPage::Start() {
    page->plant.Stream().Start();
    page->server.Start(page->service);
}

void RunPage::End() {
    page->plant.Stream().End("the run has ended");
    page->plant.Run().trends.EndReads();
    page->server.Stop();
}

}  // namespace workbench

#else

namespace workbench {

struct RunPage::Parts {};

RunPage::RunPage(PageOptions const&, PagePlant::Parts const&) {
    throw std::runtime_error("--page: this program was built without the page (DORVEL_PAGE)");
}

RunPage::~RunPage() = default;

void RunPage::Start() {}

void RunPage::End() {}

}  // namespace workbench

#endif
