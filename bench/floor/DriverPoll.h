#pragma once

#include <memory>

#include "TBACnet.h"
#include "dorvelshare/NLSocket.h"

namespace bench {

// The driver's client of a device, with the three properties of Frames.h of each object as variables of type
// DataValue, on the operating system's sockets.
class DriverPoll {
public:
    // Reads the objects 1 to `objects`, MostObjects at most.
    DriverPoll(unsigned short port, int objects);

    // Polls all objects once. Returns microseconds per object, without the time for checking the values.
    // Throws std::runtime_error unless every variable got its own object's value, with good quality.
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
