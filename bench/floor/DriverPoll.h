#pragma once

#include <memory>

#include "TBACnet.h"
#include "dorvelshare/NLSocket.h"

namespace bench {

// The driver's client of a device, with the three properties of Frames.h of each object as variables of type
// DataValue, on the operating system's sockets.
class DriverPoll {
public:
    // Reads the objects from 1 to that number, at the most MostObjects.
    DriverPoll(unsigned short port, int objects);

    // One poll of all objects. The result is in microseconds per object; looking at the values does not
    // count. Throws std::runtime_error unless every variable got its own object's value, in good quality.
    double Round();

private:
    void AddVariable(int property, int number, _OpcUa_BuiltInType type);
    void Check(std::vector<WriteDataRec>& values) const;

    int objects;
    long long lastId = 0;
    NLSocket socket{};
    std::unique_ptr<dorvel::BACnet::TBACnet> device;
};

}  // namespace bench
