#include "Sessions.h"

#include "Secret.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

constexpr long long Minute = 600000000;

}  // namespace

// Called with the mutex. There are at most MostFailuresOfAll senders.
Sessions::SignIn Sessions::CountFailure(std::string const& sender) {
    long long const now = dorvel::Environment().SteadyNow() / Minute;
    if (now != minute) {
        minute = now;
        allFailures = 0;
        failures.clear();
    }
    auto const found = failures.find(sender);
    if (allFailures >= MostFailuresOfAll || (found != failures.end() && found->second >= MostFailures)) {
        return SignIn::TooManyFailures;
    }
    ++allFailures;
    ++failures[sender];
    return SignIn::WrongToken;
}

Sessions::SignIn Sessions::Open(std::string_view token, std::string const& sender, Session& session) {
    std::lock_guard<std::mutex> const lock(mutex);
    if (!IsSameSecret(token, secret)) {
        return CountFailure(sender);
    }
    session = {RandomSecret(), RandomSecret()};
    sessions.push_back(session);
    if (sessions.size() > Most) {
        sessions.pop_front();
    }
    return SignIn::Done;
}

std::optional<Sessions::Session> Sessions::Find(std::string_view id) const {
    std::lock_guard<std::mutex> const lock(mutex);
    std::optional<Session> found;
    // All are compared, so that the time does not show where one is.
    for (Session const& session : sessions) {
        if (IsSameSecret(session.id, id)) {
            found = session;
        }
    }
    return found;
}

}  // namespace workbench
