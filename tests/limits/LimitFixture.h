#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "AllocationWatch.h"
#include "BACnet_protocol.h"
#include "BinaryAnswers.h"
#include "LineNetwork.h"
#include "LogCapture.h"
#include "ProjectCodes.h"
#include "dorvelshare/VariableStore.h"

namespace test {

// BACnet's numbers for properties.
namespace property {
constexpr char PresentValue = 85;
constexpr char Description = 28;
constexpr char WeeklySchedule = 123;
constexpr char ExceptionSchedule = 38;
constexpr char StatusFlags = 111;
}  // namespace property

// A block with its own store of variables.
class Block {
public:
    Block() : store(std::make_shared<VariableStore>()), provider(store, nullptr) {
        driver.SetDataProvider(&provider);
        driver.MAC = "192.168.10.7:47808";
        driver.CountRepeat = 1;
        driver.FaultItemId = store->Declare("Fault", OpcUaType_Boolean);
    }

    // Adds a variable and returns its id. A writable one is written from the variable with the next id.
    long long Add(int objectType, int propertyCode, int number, OpcUa_BuiltInTypeHlp type,
                  bool isWritable = false) {
        ScadaProtocol::ReadChannel const read{store->Declare("Read", type), "", type};
        ScadaProtocol::WriteChannel const write{isWritable ? store->Declare("Write", type) : 0, "", type};
        std::map<std::string, OpcUa_VariantHlp> properties;
        properties["ObjectType"].SetInt(objectType);
        properties["ObjectProperties"].SetInt(propertyCode);
        properties["ObjectNumber"].SetInt(number);
        driver.AddChannel(&read, isWritable ? &write : nullptr, properties);
        return read.Id;
    }

    bool HasFault() const {
        bool fault = true;
        EXPECT_EQ(StateOf(driver.FaultItemId).Value.GetBool(fault), OpcUa_Good) << "no cycle has ended yet";
        return fault;
    }
    VariableState StateOf(long long id) const {
        VariableState state;
        store->Read(id, "", state);
        return state;
    }
    std::string TextOf(long long id) const {
        std::string text;
        StateOf(id).Value.GetString(text);
        return text;
    }
    double NumberOf(long long id) const {
        double number = -1;
        StateOf(id).Value.GetDouble(number);
        return number;
    }

    std::shared_ptr<VariableStore> store;
    LuaDataProvider provider;
    dorvel::BACnet::BACnetProtocol driver;
};

// A device that answers every read with one payload in segments. It answers each acknowledgement with the
// next segment, whatever it acknowledges, and ignores the last one.
class SegmentingDevice {
public:
    // The octets of a segment that fit a datagram of 1500 octets.
    static constexpr std::size_t Room = 1489;
    // The most segments that a client can keep: one for each sequence number.
    static constexpr std::size_t MostOctets = 256 * Room;

    explicit SegmentingDevice(Octets wholePayload, std::size_t octetsPerSegment = Room)
        : payload(std::move(wholePayload)), perSegment(octetsPerSegment) {}

    std::size_t Segments() const { return (payload.size() + perSegment - 1) / perSegment; }

    std::vector<LineAnswer> operator()(int /*line*/, Octets const& request) {
        next = IsSegmentAck(request) ? next + 1 : 0;
        if (next >= Segments()) {
            return {};
        }
        return {{SegmentAnswer(InvokeIdOf(request), next, next + 1 < Segments(), Part(next))}};
    }

private:
    Octets Part(std::size_t index) const {
        auto const first = payload.begin() + static_cast<std::ptrdiff_t>(index * perSegment);
        auto const rest = static_cast<std::size_t>(payload.end() - first);
        return Octets(first, first + static_cast<std::ptrdiff_t>(std::min(perSegment, rest)));
    }

    Octets payload;
    std::size_t perSegment;
    std::size_t next = 0;
};

inline Octets const& AnalogInput1Octets() {
    static Octets const octets = Hex("00 00 00 01");
    return octets;
}
inline Octets const& Schedule1Octets() {
    static Octets const octets = Hex("04 40 00 01");
    return octets;
}

// Blocks in virtual time.
class LimitFixture : public ::testing::Test {
protected:
    LimitFixture() { dorvel::BACnet::TBACnet::IsTerminated = false; }

    LogCapture log;
};

}  // namespace test
