#pragma once

#include <limits>
#include <utility>

#include "DeviceFixture.h"
#include "Variants.h"

namespace test {

// The four octets of an object.
inline std::string ObjectHex(ObjectTypeEnum type, unsigned instance) {
    unsigned const packed = static_cast<unsigned>(type) << 22 | instance;
    return HexOctet(packed >> 24) + HexOctet(packed >> 16) + HexOctet(packed >> 8) + HexOctet(packed);
}

// The APDU of a WriteProperty as the driver sends it: property and value as hexadecimal text, and the octets
// after the value.
inline std::string WriteApdu(unsigned invokeId, std::string const& object, unsigned property,
                             std::string const& value, std::string const& priority = "") {
    return "00 04 " + HexOctet(invokeId) + "0F 0C " + object + " 19 " + HexOctet(property) + "3E " + value +
           " 3F " + priority;
}

inline Octets WriteRequest(unsigned invokeId, std::string const& object, unsigned property,
                           std::string const& value, std::string const& priority = "") {
    return BvlcFrame("01 04 " + WriteApdu(invokeId, object, property, value, priority));
}

inline Octets WriteAck(unsigned invokeId) {
    return AnswerDatagram("20 " + HexOctet(invokeId) + "0F");
}
inline Octets WriteError(unsigned invokeId, unsigned errorClass, unsigned code) {
    return AnswerDatagram("50 " + HexOctet(invokeId) + "0F 91 " + HexOctet(errorClass) + "91 " +
                          HexOctet(code));
}
inline Octets WriteReject(unsigned invokeId, unsigned reason) {
    return AnswerDatagram("60 " + HexOctet(invokeId) + HexOctet(reason));
}
inline Octets WriteAbort(unsigned invokeId, unsigned reason) {
    return AnswerDatagram("71 " + HexOctet(invokeId) + HexOctet(reason));
}

// A variable on a property of an object of a device.
inline std::unique_ptr<dorvel::BACnet::tagReadData> MakeTag(ObjectTypeEnum type,
                                                            PropertyIdentifierEnum property, int number = 1) {
    auto tag = std::make_unique<dorvel::BACnet::tagReadData>();
    tag->descriptor = new DriverVarDsc();
    tag->address = new dorvel::BACnet::tagAddress{number, type, property};
    return tag;
}

// A device client without a priority whose writes count from 1.
class WriteFixture : public DeviceFixture {
protected:
    using Object = ObjectTypeEnum;
    using Property = PropertyIdentifierEnum;

    WriteFixture() {
        dorvel::BACnet::WriteInvokeId = 0;
        MakeWriter();
    }

    dorvel::BACnet::TBACnet& MakeWriter(int priority = 0) {
        DeviceParameters parameters;
        parameters.priority = priority;
        return MakeDevice(parameters);
    }

    void Write(ObjectTypeEnum type, PropertyIdentifierEnum property, OpcUa_VariantHlp value) {
        device->Write(MakeTag(type, property).get(), value);
    }

    // Writes 1.0 to analog value 1, which is sent as Setpoint(id).
    void WriteSetpoint() { Write(Object::Analog_Value, Property::Present_Value, Double(1)); }
    static Octets Setpoint(unsigned invokeId) {
        return WriteRequest(invokeId, AnalogValue1, 85, "44 3F 80 00 00");
    }

    static constexpr char Refused[] = "Property Type not supported";
};

}  // namespace test
