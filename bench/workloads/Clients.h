#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "PreparedNetwork.h"
#include "Subject.h"
#include "TBACnet.h"

namespace bench {

// Device clients without the block around them, each with so many objects of one subject, over a network that
// answers at once. There is one at a time.
class Clients {
public:
    // Throws as SubjectNamed does.
    Clients(std::string const& subject, int objects, int clients = 1);
    ~Clients();
    Clients(Clients const&) = delete;
    Clients& operator=(Clients const&) = delete;

    // Every object is read or written once. The driver's work, all of it and nothing else, is counted. Throws
    // std::runtime_error unless every value came and every write left.
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
