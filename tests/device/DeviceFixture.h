#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Answers.h"
#include "CodeMaps.h"
#include "LogCapture.h"
#include "ProjectCodes.h"
#include "ScriptedNetwork.h"
#include "TBACnet.h"

namespace test {

// The parameters that a block passes to its device client.
struct DeviceParameters {
    std::string address = "127.0.0.1:47808";
    std::string mac = "192.168.10.7:47808";
    int timeout = 250;
    int countRepeat = 3;
    int addressNumber = 1;
    int networkNumber = 0;
    int priority = 8;
};

// A device client in a scripted network, with variables whose ids count from 1.
class DeviceFixture : public ::testing::Test {
protected:
    DeviceFixture() { dorvel::BACnet::TBACnet::IsTerminated = false; }
    // The code maps live as long as the process, so every test removes its codes.
    ~DeviceFixture() override {
        dorvel::BACnet::objectTypesMap.clear();
        dorvel::BACnet::propertyTypesMap.clear();
    }

    dorvel::BACnet::TBACnet& MakeDevice(DeviceParameters const& parameters = {}) {
        device.reset();
        RecordSeed("texts", parameters.address + "\n" + parameters.mac);
        NLInitSocket(&socket);
        auto* peer = new sockaddr_in();
        NLMakeAddress(peer, IPAddressFromString("127.0.0.1"), 47808);
        device = std::make_unique<dorvel::BACnet::TBACnet>(
            socket, peer, TaskNumber, parameters.address, parameters.mac, parameters.timeout,
            parameters.countRepeat, parameters.addressNumber, parameters.networkNumber, parameters.priority);
        return *device;
    }

    // Creates a device client that tries every object once.
    dorvel::BACnet::TBACnet& MakeImpatientDevice() {
        DeviceParameters parameters;
        parameters.countRepeat = 1;
        return MakeDevice(parameters);
    }

    long long AddVariable(int objectType, int property, int number,
                          OpcUa_BuiltInTypeHlp type = OpcUaType_Double) {
        auto* descriptor = new DriverVarDsc();
        descriptor->ReadId = ++lastId;
        descriptor->ReadType = type;
        dorvel::BACnet::VelaBufferParameters record{descriptor, objectType, property, number};
        device->InitTags({&record});
        return lastId;
    }

    // The tags of one object, in the table's order.
    std::vector<dorvel::BACnet::tagReadData*> const& TagsOf(ObjectTypeEnum type, int number) const {
        return device->Tags().at(type).at(number);
    }

    // One poll, after clearing the fault flag as the block does.
    void Poll() {
        values.clear();
        device->ClearFault();
        device->Read(values);
    }

    static constexpr unsigned short TaskNumber = 7;

    ScriptedNetwork network;
    LogCapture log;
    NLSocket socket{};
    std::unique_ptr<dorvel::BACnet::TBACnet> device;
    std::vector<WriteDataRec> values;

private:
    long long lastId = 0;
};

// A read of Present_Value and Status_Flags of an object given by its four octets, as the driver sends it.
inline std::string ReadRequest(unsigned invokeId, std::string const& object,
                               std::string const& properties = "09 55 09 6F") {
    std::string const apdu = "02 74 " + HexOctet(invokeId) + "0E 0C " + object + " 1E " + properties + " 1F";
    return ToHex(BvlcFrame("01 04 " + apdu));
}

inline constexpr char AnalogInput1[] = "00 00 00 01";
inline constexpr char AnalogInput2[] = "00 00 00 02";
inline constexpr char AnalogValue1[] = "00 80 00 01";

// Application Real 42.0, and Status_Flags without and with a flag.
inline constexpr char Real42[] = "44 42 28 00 00";
inline constexpr char FlagsClear[] = "82 04 00";
inline constexpr char FlagsFault[] = "82 04 40";

// An ack for Present_Value and Status_Flags.
inline Octets ValueAnswer(unsigned invokeId, std::string const& object = AnalogInput1,
                          std::string const& value = Real42, std::string const& flags = FlagsClear) {
    return AnswerDatagram(ReadAck(invokeId, object, PropertyResult(85, value) + PropertyResult(111, flags)));
}

inline double AsDouble(WriteDataRec const& record) {
    double value = -1;
    record.Value.GetDouble(value);
    return value;
}

}  // namespace test
