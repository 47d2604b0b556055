#include "NameLookup.h"

#include <netdb.h>

#include <cerrno>
#include <mutex>
#include <system_error>

#include "BackgroundThread.h"

namespace workbench {

namespace {

NameLookup::Result LookUp(std::string const& host, int flags) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = flags;
    addrinfo* all = nullptr;
    NameLookup::Result result;
    result.error = getaddrinfo(host.c_str(), nullptr, &hints, &all);
    result.systemError = errno;
    if (result.error != 0) {
        return result;
    }
    for (addrinfo const* one = all; one; one = one->ai_next) {
        char text[NI_MAXHOST] = "";
        if (getnameinfo(one->ai_addr, one->ai_addrlen, text, sizeof text, nullptr, 0, NI_NUMERICHOST) == 0) {
            result.addresses.emplace_back(text);
        }
    }
    freeaddrinfo(all);
    return result;
}

}  // namespace

struct NameLookup::Shared {
    void Put(Result found) {
        {
            std::lock_guard<std::mutex> const lock(mutex);
            result = std::move(found);
        }
        isThere.Notify();
    }

    std::mutex mutex;
    std::optional<Result> result;
    WakeEvent isThere;
};

NameLookup::NameLookup(std::string const& host) : shared(std::make_shared<Shared>()) {
    Result const address = LookUp(host, AI_NUMERICHOST);
    if (address.error == 0) {
        shared->Put(address);
        return;
    }
    try {
        StartBackgroundThread([to = shared, host] { to->Put(LookUp(host, 0)); }).detach();
    } catch (std::system_error const& failed) {
        shared->Put({{}, EAI_SYSTEM, failed.code().value()});
    }
}

std::optional<NameLookup::Result> NameLookup::Take() {
    std::lock_guard<std::mutex> const lock(shared->mutex);
    return shared->result;
}

int NameLookup::Handle() const {
    return shared->isThere.Handle();
}

}  // namespace workbench
