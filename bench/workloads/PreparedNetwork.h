#pragma once

#include <cstddef>
#include <vector>

#include "Hex.h"
#include "dorvelshare/HostEnvironment.h"

namespace bench {

// A network in which one device answers at once with prepared octets, into which it copies the invoke id and
// the object of the request. It allocates nothing and is not counted. The clock stands still, and receiving
// without an answer returns at once. For one thread.
class PreparedNetwork final : public dorvel::HostEnvironment {
public:
    // The datagrams that answer a read or a write: the first one answers the request, each further one the
    // acknowledgement of its predecessor. Without any the device is silent.
    explicit PreparedNetwork(std::vector<test::Octets> answers);
    ~PreparedNetwork() override;
    PreparedNetwork(PreparedNetwork const&) = delete;
    PreparedNetwork& operator=(PreparedNetwork const&) = delete;

    // The number of requests, without acknowledgements.
    unsigned long Requests() const { return requests; }

    int Open(unsigned short port) override;
    unsigned short LocalPort(int handle) override;
    void Close(int handle) override;
    bool Send(int handle, sockaddr_in const& peer, void const* data, int length) override;
    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) override;
    long long Now() override;
    long long SteadyNow() override { return Now(); }
    long long LocalTimeDiff() override;

private:
    void Begin(char const* request);

    std::vector<test::Octets> answers;
    // The answer that is received next, and the one after it if that has been requested already.
    std::size_t next = 0;
    std::size_t asked = 0;
    unsigned long requests = 0;
};

}  // namespace bench
