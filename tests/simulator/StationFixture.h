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

// A simulated device, its clock, and a client of it, all without a socket.
class StationFixture : public ::testing::Test {
protected:
    static constexpr simulator::Endpoint kClient{0x7F000001, 50000};

    // The first device of a device file.
    void make(std::string const& luaText) {
        station = std::make_unique<simulator::Station>(simulator::parseDeviceFile("test.lua", luaText).at(0));
    }

    // A device of instance 100 with these objects, written as in a device file.
    void makeWith(std::string const& objects, std::string const& settings = "") {
        make("device{name = 'D', instance = 100, " + settings + " objects = {" + objects + "}}");
    }

    static Octets unicast(Octets const& npdu) {
        std::size_t const length = npdu.size() + 4;
        return Octets{'\x81', '\x0A', static_cast<char>(length >> 8), static_cast<char>(length)} + npdu;
    }

    // The answers to a datagram, whole.
    std::vector<std::string> send(Octets const& datagram, simulator::Endpoint const& sender = kClient) {
        RecordDatagram(datagram);
        return hex(station->receive({sender, datagram}, now));
    }

    // The answers to an APDU from the local network: their APDUs, in hexadecimal.
    std::vector<std::string> ask(std::string const& apdu, simulator::Endpoint const& sender = kClient) {
        Octets const datagram = unicast(Hex("01 04") + Hex(apdu));
        RecordDatagram(datagram);
        return apdus(station->receive({sender, datagram}, now));
    }

    // The only answer to an APDU.
    std::string answer(std::string const& apdu) {
        auto const answers = ask(apdu);
        return answers.size() == 1 ? answers[0] : std::to_string(answers.size()) + " answers";
    }

    // What is sent by itself once so much time has passed.
    std::vector<std::string> wait(std::chrono::milliseconds time) {
        now.sinceStart += time;
        now.local += time;
        return apdus(station->tick(now));
    }

    static std::vector<std::string> hex(std::vector<simulator::Datagram> const& datagrams) {
        std::vector<std::string> texts;
        for (simulator::Datagram const& datagram : datagrams) {
            texts.push_back(ToHex(datagram.octets));
        }
        return texts;
    }

    // The APDUs of datagrams to the local client, whose heads are checked on the way.
    static std::vector<std::string> apdus(std::vector<simulator::Datagram> const& datagrams) {
        std::vector<std::string> texts;
        for (simulator::Datagram const& datagram : datagrams) {
            Octets const& all = datagram.octets;
            Octets const npdu(all.begin() + 4, all.end());
            EXPECT_EQ(ToHex(all), ToHex(unicast(npdu)));
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
