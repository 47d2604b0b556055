#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "Hex.h"
#include "dorvelshare/HostEnvironment.h"

namespace test {

// A network for several threads without an operating system: each socket has its own line, on which every
// request is answered at once. Waiting without an answer takes no time; the clock stands still.
class AnsweringNetwork final : public dorvel::HostEnvironment {
public:
    // The answers to a request. It may be called by several threads at once.
    using Responder = std::function<std::vector<Octets>(Octets const& request)>;

    explicit AnsweringNetwork(Responder respond) : responder(std::move(respond)) {
        dorvel::SetEnvironment(this);
    }
    ~AnsweringNetwork() override { dorvel::SetEnvironment(nullptr); }
    AnsweringNetwork(AnsweringNetwork const&) = delete;
    AnsweringNetwork& operator=(AnsweringNetwork const&) = delete;

    // The datagrams that were sent, by socket.
    std::vector<std::vector<Octets>> Sent() const {
        std::lock_guard<std::mutex> const lock(mutex);
        std::vector<std::vector<Octets>> all;
        for (auto const& [handle, line] : lines) {
            all.push_back(line.sent);
        }
        return all;
    }

    int Open(unsigned short /*port*/) override {
        std::lock_guard<std::mutex> const lock(mutex);
        int const handle = static_cast<int>(lines.size());
        lines[handle];
        return handle;
    }
    unsigned short LocalPort(int handle) override { return static_cast<unsigned short>(50000 + handle); }
    void Close(int /*handle*/) override {}

    bool Send(int handle, sockaddr_in const& /*peer*/, void const* data, int length) override {
        auto const* first = static_cast<char const*>(data);
        Octets request(first, first + length);
        std::vector<Octets> const answers = responder(request);
        std::lock_guard<std::mutex> const lock(mutex);
        Line& line = lines.at(handle);
        line.sent.push_back(std::move(request));
        line.arriving.insert(line.arriving.end(), answers.begin(), answers.end());
        return true;
    }

    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int /*timeout*/) override {
        std::lock_guard<std::mutex> const lock(mutex);
        std::deque<Octets>& arriving = lines.at(handle).arriving;
        if (arriving.empty()) {
            return -1;
        }
        sender = sockaddr_in();
        auto const count = std::min(arriving.front().size(), static_cast<std::size_t>(size));
        std::copy_n(arriving.front().begin(), count, static_cast<char*>(buffer));
        arriving.pop_front();
        return static_cast<int>(count);
    }

    // 1 January 2024, 00:00 UTC.
    long long Now() override { return 133485408000000000; }
    long long SteadyNow() override { return Now(); }
    long long LocalTimeDiff() override { return 0; }

private:
    struct Line {
        std::vector<Octets> sent;
        std::deque<Octets> arriving;
    };

    Responder const responder;
    mutable std::mutex mutex;
    std::map<int, Line> lines;
};

}  // namespace test
