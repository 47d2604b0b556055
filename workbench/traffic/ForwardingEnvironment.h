#pragma once

#include "dorvelshare/HostEnvironment.h"

namespace workbench {

// Base of environments that observe the traffic and forward every call to another environment, which must
// outlive them.
class ForwardingEnvironment : public dorvel::HostEnvironment {
public:
    explicit ForwardingEnvironment(dorvel::HostEnvironment& innerEnvironment) : inner(innerEnvironment) {}

    int Open(unsigned short port) override { return inner.Open(port); }
    unsigned short LocalPort(int handle) override { return inner.LocalPort(handle); }
    void Close(int handle) override { inner.Close(handle); }
    bool Send(int handle, sockaddr_in const& peer, void const* data, int length) override {
        return inner.Send(handle, peer, data, length);
    }
    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) override {
        return inner.Receive(handle, sender, buffer, size, timeout);
    }
    long long Now() override { return inner.Now(); }
    long long SteadyNow() override { return inner.SteadyNow(); }
    long long LocalTimeDiff() override { return inner.LocalTimeDiff(); }

protected:
    dorvel::HostEnvironment& inner;
};

}  // namespace workbench
