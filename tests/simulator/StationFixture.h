#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "DeviceFile.h"
#include "Hex.h"
#include "Station.h"

namespace test {

// A simulated device, its clock and a client, without a socket.
class StationFixture : public ::testing::Test {
protected:
    static constexpr simulator::Endpoint Client{0x7F000001, 50000};

    // The first device of a device file.
    void Make(std::string const& luaText) {
        station = std::make_unique<simulator::Station>(simulator::ParseDeviceFile("test.lua", luaText).at(0));
    }

    // A device with instance 100 and these objects, in the form of a device file.
    void MakeWith(std::string const& objects, std::string const& settings = "") {
        Make("device{name = 'D', instance = 100, " + settings + " objects = {" + objects + "}}");
    }

    static Octets Unicast(Octets const& npdu) {
        std::size_t const length = npdu.size() + 4;
        return Octets{'\x81', '\x0A', static_cast<char>(length >> 8), static_cast<char>(length)} + npdu;
    }

    // The answers to a datagram, as whole datagrams.
    std::vector<std::string> Send(Octets const& datagram, simulator::Endpoint const& sender = Client) {
        RecordDatagram(datagram);
        return HexOf(station->Receive({sender, datagram}, now));
    }

    // The answers to an APDU from the local network: their APDUs, in hexadecimal.
    std::vector<std::string> Ask(std::string const& apdu, simulator::Endpoint const& sender = Client) {
        Octets const datagram = Unicast(Hex("01 04") + Hex(apdu));
        RecordDatagram(datagram);
        return Apdus(station->Receive({sender, datagram}, now));
    }

    // The only answer to an APDU.
    std::string Answer(std::string const& apdu) {
        auto const answers = Ask(apdu);
        return answers.size() == 1 ? answers[0] : std::to_string(answers.size()) + " answers";
    }

    // Lets this time pass and returns the APDUs that the station sends then.
    std::vector<std::string> Wait(std::chrono::milliseconds time) {
        now.sinceStart += time;
        now.local += time;
        return Apdus(station->Tick(now));
    }

    static std::vector<std::string> HexOf(std::vector<simulator::Datagram> const& datagrams) {
        std::vector<std::string> texts;
        for (simulator::Datagram const& datagram : datagrams) {
            texts.push_back(ToHex(datagram.octets));
        }
        return texts;
    }

    // The APDUs of datagrams to the local client. Checks their headers.
    static std::vector<std::string> Apdus(std::vector<simulator::Datagram> const& datagrams) {
        std::vector<std::string> texts;
        for (simulator::Datagram const& datagram : datagrams) {
            Octets const& all = datagram.octets;
            Octets const npdu(all.begin() + 4, all.end());
            EXPECT_EQ(ToHex(all), ToHex(Unicast(npdu)));
            bool const isSegment = npdu.size() > 2 && (npdu[2] & 0xF8) == 0x38;
            EXPECT_EQ(ToHex({npdu[0], npdu[1]}), isSegment ? "01 04" : "01 00");
            texts.push_back(ToHex(Octets(npdu.begin() + 2, npdu.end())));
        }
        return texts;
    }

    std::unique_ptr<simulator::Station> station;
    simulator::Moment now;
};

using Texts = std::vector<std::string>;

}  // namespace test
