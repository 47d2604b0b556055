// The number of system calls of a cycle. Functions that count replace those of the C library and call them.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <map>
#include <string>

#include "ClockedSystem.h"
#include "VirtualSocket.h"

namespace {

std::map<std::string, int> calls;
bool isCounting = false;
bool isAnswering = true;
int device = -1;

// The C library's function of this name.
template <class Function>
Function* Count(char const* name, Function* /*signature*/) {
    calls[name] += isCounting ? 1 : 0;
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

// The device receives a datagram and sends it back before the call that sent it returns.
void Echo() {
    if (!isCounting) {
        return;
    }
    isCounting = false;
    char datagram[16];
    sockaddr_in client{};
    socklen_t size = sizeof client;
    auto* const address = reinterpret_cast<sockaddr*>(&client);
    ssize_t const length = ::recvfrom(device, datagram, sizeof datagram, 0, address, &size);
    if (isAnswering) {
        EXPECT_EQ(::sendto(device, datagram, static_cast<std::size_t>(length), 0, address, size), length);
    }
    isCounting = true;
}

int Total() {
    int total = 0;
    for (auto const& [name, count] : calls) {
        total += count;
    }
    return total;
}

}  // namespace

// NOLINTBEGIN: the names and types are the C library's
#pragma GCC visibility push(default)
extern "C" {
ssize_t sendto(int handle, void const* data, size_t size, int flags, sockaddr const* to, socklen_t toSize) {
    ssize_t const sent = Count("sendto", &sendto)(handle, data, size, flags, to, toSize);
    Echo();
    return sent;
}
ssize_t recvfrom(int handle, void* data, size_t size, int flags, sockaddr* from, socklen_t* fromSize) {
    return Count("recvfrom", &recvfrom)(handle, data, size, flags, from, fromSize);
}
int poll(pollfd* entries, nfds_t count, int timeout) {
    return Count("poll", &poll)(entries, count, timeout);
}
int setsockopt(int handle, int level, int name, void const* value, socklen_t size) {
    return Count("setsockopt", &setsockopt)(handle, level, name, value, size);
}
int socket(int domain, int type, int protocol) noexcept {
    return Count("socket", &socket)(domain, type, protocol);
}
int bind(int handle, sockaddr const* address, socklen_t size) noexcept {
    return Count("bind", &bind)(handle, address, size);
}
int getsockname(int handle, sockaddr* address, socklen_t* size) noexcept {
    return Count("getsockname", &getsockname)(handle, address, size);
}
int close(int handle) {
    return Count("close", &close)(handle);
}
}
#pragma GCC visibility pop
// NOLINTEND

class SystemCalls : public testing::Test {
protected:
    SystemCalls() {
        device = environment.Open(0);
        NLMakeAddress(&client.peer, 0x7F000001, environment.LocalPort(device));
        EXPECT_EQ(NLTryOpenUDPSocket(&client.socket, 0, 1), 0);
    }
    ~SystemCalls() override { environment.Close(device); }

    // The number of calls of a cycle with so many exchanges.
    int CallsOf(int exchanges, int timeOut) {
        calls.clear();
        isCounting = true;
        for (int i = 0; i < exchanges; ++i) {
            EXPECT_EQ(client.Exchange(test::Hex("01 02"), timeOut), isAnswering ? 2 : 0);
        }
        isCounting = false;
        return Total();
    }

    test::ClockedSystem environment;
    test::VirtualSocket client;
};

// Each exchange is one call to send and one to receive; the first one also looks for waiting datagrams.
TEST_F(SystemCalls, OfACycleWithAnswersAreTwoForEachExchangeAndOneMore) {
    for (int const exchanges : {1, 2, 10}) {
        environment.Pass(1000);
        EXPECT_EQ(CallsOf(exchanges, 1000), 2 * exchanges + 1);
        EXPECT_EQ(calls["sendto"], exchanges);
        EXPECT_EQ(calls["recvfrom"], exchanges + 1);
    }
}

TEST_F(SystemCalls, OfAPortThatChangesAreSix) {
    isAnswering = false;
    CallsOf(1, 0);
    isAnswering = true;
    EXPECT_EQ(CallsOf(1, 1000), 2 + 6);
    EXPECT_EQ(CallsOf(1, 1000), 2);
}
