#pragma once

#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace workbench {

// Who may see the page: browsers that have opened the link with the token have a session, by a random id in
// their cookie. A session has a token too, which each write needs in a header. Sessions end with the program.
// Thread-safe. Times are those of the host's environment.
class Sessions {
public:
    // The oldest session ends when there is one more.
    static constexpr std::size_t Most = 256;
    // Wrong tokens in a minute, of one sender and of all, after which further wrong ones are too many. The
    // right token always works: it is too long to be guessed, all clients of a proxy are one sender, and
    // nobody may lock the operators out.
    static constexpr unsigned MostFailures = 10;
    static constexpr unsigned MostFailuresOfAll = 100;

    struct Session {
        std::string id;
        std::string token;
    };

    explicit Sessions(std::string linkToken) : secret(std::move(linkToken)) {}

    enum class SignIn { Done, WrongToken, TooManyFailures };
    // Makes a session if the token is right.
    SignIn Open(std::string_view token, std::string const& sender, Session& session);
    std::optional<Session> Find(std::string_view id) const;
    std::string const& LinkToken() const { return secret; }

private:
    SignIn CountFailure(std::string const& sender);

    std::string secret;
    mutable std::mutex mutex;
    std::deque<Session> sessions;  // oldest first
    long long minute = 0;
    unsigned allFailures = 0;
    std::map<std::string, unsigned> failures;  // by sender, in the current minute
};

}  // namespace workbench
