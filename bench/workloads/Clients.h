#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "PreparedNetwork.h"
#include "Subject.h"
#include "TBACnet.h"

namespace bench {

// Device clients without a block, each with `objects` objects of one subject, over a network that answers at
// once. Only one instance may exist at a time.
//
// The first object that fails ends a poll, so the clients of a silent device have one object each, which they
// attempt to read `objects` times in a poll: what is said of an object is then said of an attempt.
class Clients {
public:
    // Throws as SubjectNamed does.
    Clients(std::string const& subject, int objects, int clients = 1);
    ~Clients();
    Clients(Clients const&) = delete;
    Clients& operator=(Clients const&) = delete;

    // Reads or writes every object once and counts the driver's instructions alone. Throws std::runtime_error
    // unless every value was received and every write was sent.
    void Poll();

    int Objects() const { return objects; }  // of all clients

private:
    struct Client;

    void PollClient(Client& client);
    void WriteClient(Client& client);

    Subject const subject;
    int const objects;
    PreparedNetwork network;
    std::vector<std::unique_ptr<Client>> clients;
};

}  // namespace bench
