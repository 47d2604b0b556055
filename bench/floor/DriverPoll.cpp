#include "DriverPoll.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "Frames.h"
#include "StopWatch.h"

namespace bench {

namespace {

// Codes of the configuration.
constexpr int AnalogValue = 3;
constexpr int CodeOfPresentValue = 0;
constexpr int CodeOfStatusFlags = 16;
constexpr int CodeOfOutOfService = 17;

// One attempt, so that a lost datagram is an error and not a slow round.
constexpr int CountRepeat = 1;

std::unique_ptr<dorvel::BACnet::TBACnet> MakeDevice(NLSocket& socket, unsigned short port) {
    NLInitSocket(&socket);
    auto peer = std::make_unique<sockaddr_in>();
    NLMakeAddress(peer.get(), INADDR_LOOPBACK, port);
    std::string const address = "127.0.0.1:" + std::to_string(port);
    return std::make_unique<dorvel::BACnet::TBACnet>(socket, peer.release(), 1, address, address, 1000,
                                                     CountRepeat, 1, 0, 0);
}

// The value of a record as a number. The record must be of this variable and have good quality.
double Number(WriteDataRec& record, long long id) {
    unsigned int status = OpcUa_Bad;
    double number = 0;
    record.Value.Normalize(&status, nullptr);
    if (record.Id != id || status != OpcUa_Good || record.Value.GetDouble(number) != OpcUa_Good) {
        throw std::runtime_error("no good value for variable " + std::to_string(id));
    }
    return number;
}

}  // namespace

DriverPoll::DriverPoll(unsigned short port, int objectCount)
    : objects(objectCount), device(MakeDevice(socket, port)) {
    for (int number = 1; number <= objects; ++number) {
        AddVariable(CodeOfPresentValue, number, OpcUaType_Float);
        AddVariable(CodeOfOutOfService, number, OpcUaType_Boolean);
        AddVariable(CodeOfStatusFlags, number, OpcUaType_UInt64);
    }
}

void DriverPoll::AddVariable(int property, int number, _OpcUa_BuiltInType type) {
    auto descriptor = std::make_unique<DriverVarDsc>();
    descriptor->ReadId = ++lastId;
    descriptor->ReadType = {OpcUaType_DataValue, type};
    dorvel::BACnet::VelaBufferParameters record{descriptor.release(), AnalogValue, property, number};
    device->InitTags({&record});
}

double DriverPoll::Round() {
    std::vector<WriteDataRec> values;
    device->ClearFault();
    StopWatch const watch;
    device->Read(values);
    double const figure = watch.MicrosecondsPer(static_cast<std::size_t>(objects));
    Check(values);
    return figure;
}

void DriverPoll::Check(std::vector<WriteDataRec>& values) const {
    if (device->HasFault() || values.size() != static_cast<std::size_t>(objects) * Properties) {
        throw std::runtime_error("the poll did not bring all values");
    }
    // An object's values come in the order of its properties' numbers.
    std::sort(values.begin(), values.end(),
              [](auto const& left, auto const& right) { return left.Id < right.Id; });
    auto record = values.begin();
    long long id = 0;
    for (int number = 1; number <= objects; ++number) {
        bool const isOwn = Number(*record++, ++id) == static_cast<double>(PresentValue(number));
        bool const isInService = Number(*record++, ++id) == 0;
        bool const hasNoFlag = Number(*record++, ++id) == 0;
        if (!isOwn || !isInService || !hasNoFlag) {
            throw std::runtime_error("wrong values for object " + std::to_string(number));
        }
    }
}

}  // namespace bench
