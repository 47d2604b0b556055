#pragma once

#include <arpa/inet.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstring>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "dorvelshare/HostEnvironment.h"

namespace test {

inline sockaddr_in Address(char const* ip, unsigned short port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    inet_pton(AF_INET, ip, &address.sin_addr);
    return address;
}

// The environment below a decorator: records what is sent, delivers what the test makes arrive, and has the
// time that the test sets.
class FakeEnvironment : public dorvel::HostEnvironment {
public:
    int Open(unsigned short port) override { return 100 + port; }
    unsigned short LocalPort(int handle) override { return static_cast<unsigned short>(5000 + handle); }
    void Close(int handle) override { closed.push_back(handle); }
    bool Send(int, sockaddr_in const&, void const* data, int length) override {
        if (sends) {
            sent.emplace_back(static_cast<char const*>(data), static_cast<std::size_t>(length));
        }
        return sends;
    }
    int Receive(int, sockaddr_in& sender, void* buffer, int size, int) override {
        if (arriving.empty()) {
            return -1;
        }
        sender = arriving.front().first;
        std::string const data = arriving.front().second;
        arriving.pop_front();
        std::size_t const length = std::min(data.size(), static_cast<std::size_t>(size));
        std::memcpy(buffer, data.data(), length);
        return static_cast<int>(length);
    }
    long long Now() override { return time; }
    long long SteadyNow() override { return Now(); }
    long long LocalTimeDiff() override { return 36000000000LL; }

    void Arrives(sockaddr_in const& sender, std::string data) {
        arriving.emplace_back(sender, std::move(data));
    }

    long long time = 0;
    bool sends = true;
    std::vector<std::string> sent;
    std::vector<int> closed;

private:
    std::deque<std::pair<sockaddr_in, std::string>> arriving;
};

}  // namespace test
