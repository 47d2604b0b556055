#pragma once

#include <deque>
#include <map>
#include <memory>
#include <vector>

#include "BlockObserver.h"
#include "ForwardingEnvironment.h"

namespace workbench {

// Follows the datagrams of all blocks by the standard and changes nothing: each call is forwarded, octets,
// results and order are those of the environment below. It listens for a while to sockets that the driver
// has left without an answer, so that late answers are seen. A socket call belongs to the block whose cycle
// runs on the thread (Whereabouts.h); calls of other threads are only forwarded. Observing never throws.
class Observation : public ForwardingEnvironment {
public:
    using ForwardingEnvironment::ForwardingEnvironment;
    ~Observation() override;

    // Begins to observe these blocks. To be called before the runtime starts; the blocks must outlive the
    // observation.
    void Watch(std::deque<BlockConfig> const& blocks);

    void Close(int handle) override;
    bool Send(int handle, sockaddr_in const& peer, void const* data, int length) override;
    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) override;

    // Both are called on the thread of the block's task.
    void BeginCycle(BlockConfig const& block);
    std::vector<Cause> EndCycle(BlockConfig const& block);

    // Null for a block that is not watched. Use it on the thread of the block's task, or when the runtime has
    // stopped.
    BlockObserver* Of(BlockConfig const& block);
    BlockObserver const* Of(BlockConfig const& block) const;

    Moment Time();

private:
    // A socket that the driver has left.
    struct LeftSocket {
        int handle;
        long long since;
        long long looked;  // when it was last looked whether a datagram has come
    };

    struct Watched {
        explicit Watched(BlockConfig const& block) : observer(block) {}
        BlockObserver observer;
        std::vector<LeftSocket> left;
        long long looked = 0;  // as in LeftSocket, for the socket that the driver uses
        std::vector<char> buffer;
    };

    Watched* Current();
    bool Keep(Watched& watched, int handle);
    void ListenToLeft(Watched& watched);
    // earliest as in Moment.
    void Take(Watched& watched, int handle, sockaddr_in const& sender, void const* data, int length,
              long long earliest, bool isTaken);
    int ReceiveSlowly(Watched& watched, int handle, sockaddr_in& sender, void* buffer, int size, int timeout);

    std::map<BlockConfig const*, std::unique_ptr<Watched>> watchedBlocks;  // not changed after Watch
};

}  // namespace workbench
