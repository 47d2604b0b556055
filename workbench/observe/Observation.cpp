#include "Observation.h"

#include <algorithm>
#include <cstddef>

#include "Whereabouts.h"

namespace workbench {

namespace {

constexpr long long Millisecond = 10'000;
constexpr std::size_t LongestDatagram = 2048;
// For this long, and on this many sockets of a block, late answers are listened for. The runtime avoids a
// local port that was left for the same time.
constexpr long long ListeningTime = 10 * BlockObserver::Timeout;
constexpr std::size_t MostLeft = 8;
constexpr int MostAtOnce = 16;
// While there are such sockets, a wait is divided into waits of this length.
constexpr int SliceMilliseconds = 20;

standard::Endpoint EndpointOf(sockaddr_in const& address) {
    return {ntohl(address.sin_addr.s_addr), ntohs(address.sin_port)};
}

standard::Octets OctetsOf(void const* data, int length) {
    char const* const first = static_cast<char const*>(data);
    return data && length > 0 ? standard::Octets(first, first + length) : standard::Octets();
}

// An observer that fails, such as for lack of memory, must not change what it observes.
template <class Body>
void Quietly(Body const& body) noexcept {
    try {
        body();
    } catch (...) {  // NOLINT(bugprone-empty-catch)
    }
}

}  // namespace

Observation::~Observation() {
    for (auto const& watched : watchedBlocks) {
        for (LeftSocket const& socket : watched.second->left) {
            inner.Close(socket.handle);
        }
    }
}

void Observation::Watch(std::deque<BlockConfig> const& blocks) {
    for (BlockConfig const& block : blocks) {
        watchedBlocks[&block] = std::make_unique<Watched>(block);
    }
}

Moment Observation::Time() {
    long long const steady = inner.SteadyNow();
    return {steady, inner.Now(), inner.LocalTimeDiff(), steady};
}

Observation::Watched* Observation::Current() {
    auto const found = watchedBlocks.find(Here().block);
    return found == watchedBlocks.end() ? nullptr : found->second.get();
}

BlockObserver* Observation::Of(BlockConfig const& block) {
    auto const found = watchedBlocks.find(&block);
    return found == watchedBlocks.end() ? nullptr : &found->second->observer;
}

BlockObserver const* Observation::Of(BlockConfig const& block) const {
    auto const found = watchedBlocks.find(&block);
    return found == watchedBlocks.end() ? nullptr : &found->second->observer;
}

void Observation::BeginCycle(BlockConfig const& block) {
    auto const found = watchedBlocks.find(&block);
    if (found != watchedBlocks.end()) {
        found->second->observer.BeginCycle();
        ListenToLeft(*found->second);
    }
}

std::vector<Cause> Observation::EndCycle(BlockConfig const& block) {
    std::vector<Cause> causes;
    auto const found = watchedBlocks.find(&block);
    if (found != watchedBlocks.end()) {
        ListenToLeft(*found->second);
        Quietly([&] { causes = found->second->observer.EndCycle(Time()); });
    }
    return causes;
}

bool Observation::Send(int handle, sockaddr_in const& peer, void const* data, int length) {
    Watched* const watched = Current();
    if (!watched) {
        return inner.Send(handle, peer, data, length);
    }
    ListenToLeft(*watched);
    Moment const now = Time();
    bool const isSent = inner.Send(handle, peer, data, length);
    if (isSent) {
        Quietly([&] { watched->observer.Sent(handle, EndpointOf(peer), OctetsOf(data, length), now); });
    }
    return isSent;
}

int Observation::Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) {
    Watched* const watched = Current();
    if (!watched) {
        return inner.Receive(handle, sender, buffer, size, timeout);
    }
    bool const isSlow = timeout > SliceMilliseconds && !watched->left.empty();
    int const length = isSlow ? ReceiveSlowly(*watched, handle, sender, buffer, size, timeout)
                              : inner.Receive(handle, sender, buffer, size, timeout);
    if (length >= 0) {
        Take(*watched, handle, sender, buffer, length, watched->looked, timeout > 0);
    } else if (timeout > 0) {
        Quietly([&] { watched->observer.ReceivedNothing(Time()); });
    }
    watched->looked = inner.SteadyNow();
    return length;
}

// The same wait in slices, between which late answers are received. It lasts as long as one wait would.
int Observation::ReceiveSlowly(Watched& watched, int handle, sockaddr_in& sender, void* buffer, int size,
                               int timeout) {
    long long const end = inner.SteadyNow() + timeout * Millisecond;
    int left = timeout;
    while (left > SliceMilliseconds) {
        int const length = inner.Receive(handle, sender, buffer, size, SliceMilliseconds);
        if (length >= 0) {
            return length;
        }
        ListenToLeft(watched);
        long long const rest = (end - inner.SteadyNow() + Millisecond - 1) / Millisecond;
        left = static_cast<int>(std::min<long long>(rest, left - 1));
    }
    return inner.Receive(handle, sender, buffer, size, std::max(left, 0));
}

void Observation::Take(Watched& watched, int handle, sockaddr_in const& sender, void const* data, int length,
                       long long earliest, bool isTaken) {
    Quietly([&] {
        Moment now = Time();
        now.earliest = earliest;
        watched.observer.Received(handle, EndpointOf(sender), OctetsOf(data, length), now, isTaken);
    });
}

void Observation::Close(int handle) {
    Watched* const watched = Current();
    if (!watched || !Keep(*watched, handle)) {
        inner.Close(handle);
    }
}

// True if the socket stays open for late answers.
bool Observation::Keep(Watched& watched, int handle) {
    bool isKept = false;
    Quietly([&] {
        Moment const now = Time();
        if (!watched.observer.Expects(handle, now)) {
            return;
        }
        watched.left.reserve(MostLeft + 1);
        watched.left.push_back({handle, now.steady, watched.looked});
        isKept = true;
    });
    if (watched.left.size() > MostLeft) {
        inner.Close(watched.left.front().handle);
        watched.left.erase(watched.left.begin());
    }
    return isKept;
}

void Observation::ListenToLeft(Watched& watched) {
    if (watched.left.empty()) {
        return;
    }
    Quietly([&] { watched.buffer.resize(LongestDatagram); });
    for (LeftSocket& socket : watched.left) {
        sockaddr_in sender{};
        int length = 0;
        for (int i = 0; i < MostAtOnce && length >= 0 && !watched.buffer.empty(); ++i) {
            length = inner.Receive(socket.handle, sender, watched.buffer.data(),
                                   static_cast<int>(watched.buffer.size()), 0);
            if (length >= 0) {
                Take(watched, socket.handle, sender, watched.buffer.data(), length, socket.looked, false);
            }
        }
        socket.looked = inner.SteadyNow();
    }
    long long const now = inner.SteadyNow();
    while (!watched.left.empty() && now - watched.left.front().since >= ListeningTime) {
        inner.Close(watched.left.front().handle);
        watched.left.erase(watched.left.begin());
    }
}

}  // namespace workbench
