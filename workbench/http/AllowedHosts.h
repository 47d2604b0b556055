#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace workbench {

// Where a server listens, as the option of the command line has it.
struct HttpAddress {
    std::string address = "127.0.0.1";  // an IP address, without brackets
    int port = 0;                       // 0: a free one
};

// Reads "ADDRESS", "ADDRESS:PORT", "[IPV6]:PORT", ":PORT" or "PORT"; a missing address is 127.0.0.1,
// "localhost" too. std::runtime_error for anything else, with what is allowed.
HttpAddress ReadHttpAddress(std::string const& text);

bool IsLoopback(std::string const& address);
// "127.0.0.1:8080", "[::1]:8080".
std::string HostText(HttpAddress const& address);

// Which Host headers a request may have. A page of another site that makes its name point to this server
// sends that name (DNS rebinding), so names are those that are given here; an IP address was typed by
// somebody.
class AllowedHosts {
public:
    // names are "NAME" or "NAME:PORT" of a proxy; without a port, any is allowed.
    AllowedHosts(HttpAddress const& listening, std::vector<std::string> const& proxyNames);

    bool Allows(std::string_view host) const;
    // Whether an Origin header belongs to a page of this server. host is the Host header of the same request,
    // which is allowed.
    bool IsOwnOrigin(std::string_view origin, std::string_view host) const;

private:
    bool IsProxyName(std::string const& host) const;

    HttpAddress listening;
    std::vector<std::string> names;  // in lower case
};

}  // namespace workbench
