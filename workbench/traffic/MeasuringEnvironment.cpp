#include "MeasuringEnvironment.h"

namespace workbench {

void MeasuringEnvironment::Close(int handle) {
    {
        std::lock_guard<std::mutex> const lock(mutex);
        sent.erase(handle);
    }
    inner.Close(handle);
}

bool MeasuringEnvironment::Send(int handle, sockaddr_in const& peer, void const* data, int length) {
    long long const start = inner.Now();
    if (!inner.Send(handle, peer, data, length)) {
        return false;
    }
    std::lock_guard<std::mutex> const lock(mutex);
    ++figures.requests;
    sent[handle] = start;
    return true;
}

int MeasuringEnvironment::Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) {
    int const length = inner.Receive(handle, sender, buffer, size, timeout);
    long long const end = inner.Now();
    std::lock_guard<std::mutex> const lock(mutex);
    auto const request = sent.find(handle);
    if (length >= 0) {
        ++figures.answers;
        if (request != sent.end()) {
            figures.trips.Add(end - request->second);
        }
    }
    if (request != sent.end()) {
        sent.erase(request);
    }
    return length;
}

TrafficFigures MeasuringEnvironment::Figures() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return figures;
}

}  // namespace workbench
