#pragma once

#include <cstddef>
#include <unordered_map>

namespace workbench {

// The messages of a connection that the broker has not taken yet: those of quality of service 0 until they
// are written to the network, those of 1 until they are acknowledged. For one thread.
class InFlight {
public:
    static constexpr std::size_t MostMessages = 1000;
    static constexpr std::size_t MostOctets = 1 << 20;

    // False from the moment when one of the limits is reached until both are half free again, so that a
    // publisher is not asked after every single message. The message that reaches a limit may exceed it.
    bool HasRoom() const { return !isFull; }
    void Sent(int id, std::size_t octets);
    // One that is not known is ignored.
    void Done(int id);
    void Clear();

    std::size_t Messages() const { return messages.size(); }
    std::size_t Octets() const { return octets; }

private:
    // Ids have 16 bits and come again, perhaps while one is still on its way.
    std::unordered_multimap<int, std::size_t> messages;
    std::size_t octets = 0;
    bool isFull = false;
};

}  // namespace workbench
