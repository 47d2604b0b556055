#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <vector>

#include "BinaryAnswers.h"
#include "LineNetwork.h"

namespace test {

// Unreliable devices on all lines, for any number of threads: most requests are answered, some in segments,
// some late, with another invoke id, with invalid octets or not at all. A fuse counts down by one with each
// datagram that is sent, and Wait returns when it is zero.
class UnsteadyDevice {
public:
    // The most datagrams of one attempt to read: a request and the acknowledgements of its segments.
    static constexpr unsigned long MostOfAnAttempt = 4;

    explicit UnsteadyDevice(unsigned seed) : draws(seed) {}

    std::vector<LineAnswer> operator()(int /*line*/, Octets const& request) {
        Burn();
        if (IsSegmentAck(request)) {
            auto const number = static_cast<std::size_t>(static_cast<unsigned char>(request.at(8))) + 1;
            return number <= LastSegment ? Segment(request, number) : std::vector<LineAnswer>();
        }
        if (IsWrite(request)) {
            return Draw() % 8 == 0 ? std::vector<LineAnswer>()
                                   : std::vector<LineAnswer>{{WriteDone(request)}};
        }
        return Read(request);
    }

    void SetFuse(long datagrams) {
        std::lock_guard<std::mutex> const lock(mutex);
        fuse = datagrams;
    }
    void Wait() {
        std::unique_lock<std::mutex> lock(mutex);
        burnt.wait(lock, [this] { return fuse <= 0; });
    }

private:
    static constexpr std::size_t LastSegment = 2;
    static_assert(MostOfAnAttempt == 1 + LastSegment + 1);

    std::vector<LineAnswer> Read(Octets const& request) {
        switch (Draw() % 16) {
            case 0:
                return {};
            case 1:
                return {{ValueOf42(request), 1500}};
            case 2:
                return {{Hex("81 00 00 06 00 30")}};
            case 3:
                return {{Datagram({0x50, InvokeIdOf(request), 0x0E, '\x91', 2, '\x91', 31})}};
            case 4: {
                Octets other = request;
                other.at(8) = static_cast<char>(other.at(8) + 1);
                return {{ValueOf42(other)}};
            }
            case 5:
            case 6:
                return Segment(request, 0);
            default:
                return {{ValueOf42(request)}};
        }
    }

    // The results with a value, cut after their fourth and eighth octet.
    static std::vector<LineAnswer> Segment(Octets const& request, std::size_t number) {
        static Octets const payload =
            ResultsOf(Hex("00 00 00 01"), ResultOf(85, Real42Octets()) + ResultOf(111, FlagsClearOctets()));
        auto const cut = [](std::size_t position) {
            return payload.begin() +
                   static_cast<std::ptrdiff_t>(position > LastSegment ? payload.size() : 4 * position);
        };
        return {{SegmentAnswer(InvokeIdOf(request), number, number < LastSegment,
                               Octets(cut(number), cut(number + 1)))}};
    }

    // A sequence that depends on the seed and on the order of the threads' calls.
    unsigned Draw() {
        unsigned value = draws.fetch_add(1) * 2654435761u;
        value ^= value >> 15;
        return value * 2246822519u >> 13;
    }

    void Burn() {
        std::lock_guard<std::mutex> const lock(mutex);
        if (--fuse == 0) {
            burnt.notify_all();
        }
    }

    std::atomic<unsigned> draws;
    std::mutex mutex;
    std::condition_variable burnt;
    long fuse = 0;
};

}  // namespace test
