#pragma once

#include <algorithm>

#include "FaultCommand.h"
#include "FaultyStation.h"
#include "StationFixture.h"

namespace test {

// A device with faults, and its client. The octet string of the device is long enough for four segments of 50
// octets. Faults are in the form of commands.
class FaultFixture : public StationFixture {
protected:
    static constexpr char const* Read = "02 75 01 0C 0C 00 00 00 01 19 55";
    static constexpr char const* Value = "30 01 0C 0C 00 00 00 01 19 55 3E 44 3F C0 00 00 3F";
    static constexpr char const* ReadMultiple = "02 75 01 0E 0C 00 00 00 01 1E 09 55 09 6F 1F";
    static constexpr char const* Write = "02 75 01 0F 0C 00 80 00 01 19 55 3E 44 40 00 00 00 3F";
    static constexpr char const* Done = "20 01 0F";
    static constexpr char const* ReadLong = "02 70 07 0C 0C 0B C0 00 01 19 55";

    void SetUp() override { MakeFaulty(""); }

    void MakeFaulty(std::string const& settings) {
        std::string octets;
        for (int i = 0; i < 126; ++i) {
            octets += "5A";
        }
        faulty = std::make_unique<simulator::FaultyStation>(
            simulator::ParseDeviceFile("test.lua", "device{name = 'D', instance = 100, " + settings + R"(
                objects = {
                    analog_input{instance = 1, present_value = 1.5}, analog_value{instance = 1},
                    octet_string_value{instance = 1, present_value = ')" +
                                                       octets + "'}}}")
                .at(0));
    }

    void Add(std::string const& fault) {
        auto const answer = simulator::RunFaultCommand("fault D " + fault, {{"D", &faulty->GetFaults()}});
        ASSERT_FALSE(answer.isMistake) << answer.text;
    }

    std::vector<simulator::Delivery> Deliveries(std::string const& apdu,
                                                simulator::Endpoint const& sender = Client) {
        return faulty->Receive({sender, Unicast(Hex("01 04") + Hex(apdu))}, now);
    }

    // The datagrams that are sent, separated by ", ", each followed by "after N ms" and "elsewhere" where it
    // applies.
    static std::string Shown(std::vector<simulator::Delivery> const& all) {
        std::string text;
        for (simulator::Delivery const& delivery : all) {
            text += (text.empty() ? "" : ", ") + ToHex(delivery.datagram.octets);
            text +=
                delivery.delay.count() == 0 ? "" : " after " + std::to_string(delivery.delay.count()) + " ms";
            text += delivery.fromElsewhere ? " elsewhere" : "";
        }
        return text;
    }

    std::string Sent(std::string const& apdu) { return Shown(Deliveries(apdu)); }

    // The same without the first `skipped` octets of each datagram.
    std::string SentBehind(std::size_t skipped, std::string const& apdu) {
        auto all = Deliveries(apdu);
        for (simulator::Delivery& delivery : all) {
            Octets& octets = delivery.datagram.octets;
            octets.erase(octets.begin(),
                         octets.begin() + static_cast<std::ptrdiff_t>(std::min(skipped, octets.size())));
        }
        return Shown(all);
    }

    std::string ApdusOf(std::string const& apdu) { return SentBehind(6, apdu); }

    // The datagram of an APDU.
    static std::string Whole(std::string const& apdu) { return ToHex(Unicast(Hex("01 00") + Hex(apdu))); }

    // The sequence numbers of the segments, with "+" after each that has more-follows.
    static std::string Numbers(std::vector<simulator::Delivery> const& all) {
        std::string text;
        for (simulator::Delivery const& delivery : all) {
            std::string const apdu = ToHex(delivery.datagram.octets).substr(18);
            bool const isSegment = apdu[0] == '3' && (apdu[1] == '8' || apdu[1] == 'C');
            text += (text.empty() ? "" : " ") + (isSegment ? apdu.substr(6, 2) : apdu);
            text += isSegment && apdu[1] == 'C' ? "+" : "";
        }
        return text;
    }

    std::string RequestLong() { return Numbers(Deliveries(ReadLong)); }
    std::string Acknowledge(std::string const& number, std::string const& window = "01") {
        return Numbers(Deliveries("40 07 " + number + " " + window));
    }

    std::string Pass(int milliseconds) {
        now.sinceStart += std::chrono::milliseconds(milliseconds);
        return Numbers(faulty->Tick(now));
    }

    std::unique_ptr<simulator::FaultyStation> faulty;
};

}  // namespace test
