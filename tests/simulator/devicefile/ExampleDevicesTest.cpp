#include <set>

#include "StationFixture.h"

// The device files of the demo plant.
class ExampleDevices : public test::StationFixture {
protected:
    static std::vector<simulator::Device> Load(std::string const& name) {
        return simulator::LoadDeviceFiles({std::string(EXAMPLES_FOLDER "/devices/") + name});
    }

    static std::vector<simulator::Device> LoadAll() {
        std::vector<simulator::Device> all;
        for (char const* name :
             {"air-handling-unit.lua", "chiller.lua", "room-controllers.lua", "energy-meter.lua"}) {
            for (simulator::Device& device : Load(name)) {
                all.push_back(std::move(device));
            }
        }
        return all;
    }

    // The properties that a client of the plant can read.
    static std::set<unsigned> const& Properties() {
        static std::set<unsigned> const all{85,  108, 40, 59,  45,  136, 150, 135, 149, 93,  49,  26,  125,
                                            14,  373, 25, 111, 81,  103, 379, 384, 106, 164, 151, 147, 148,
                                            344, 117, 28, 36,  123, 38,  84,  187, 188, 176, 179, 178};
        return all;
    }
};

TEST_F(ExampleDevices, EveryObjectTypeAndPropertyIsThere) {
    std::set<unsigned> types;
    std::set<unsigned> found;
    int pairs = 0;
    for (simulator::Device const& device : LoadAll()) {
        for (simulator::BacnetObject const& object : device.Objects()) {
            types.insert(object.Id().type);
            for (simulator::Property const& property : object.Properties()) {
                auto const number = static_cast<unsigned>(property.id);
                found.insert(number);
                pairs += static_cast<int>(Properties().count(number));
            }
        }
    }
    EXPECT_EQ(types.size(), 24u) << "23 types and the Device object";
    for (unsigned const property : Properties()) {
        EXPECT_TRUE(found.count(property)) << property;
    }
    EXPECT_GE(pairs, 70);
}

TEST_F(ExampleDevices, ValuesMove) {
    simulator::Moment later;
    later.sinceStart = later.local = std::chrono::seconds(13);
    int moving = 0;
    for (simulator::Device const& device : LoadAll()) {
        for (simulator::BacnetObject const& object : device.Objects()) {
            if (simulator::Property const* value = object.Find(simulator::PropertyId::Present_Value)) {
                simulator::TagWriter first, second;
                value->Encode(first, std::nullopt, {});
                value->Encode(second, std::nullopt, later);
                moving += first.Take() != second.Take();
            }
        }
    }
    EXPECT_GE(moving, 20);
}

TEST_F(ExampleDevices, TheChillerIsBehindARouter) {
    auto const position = Load("chiller.lua").at(0).Settings().position;
    ASSERT_TRUE(position);
    EXPECT_EQ(position->network, 5);
    EXPECT_EQ(position->mac, test::Hex("0A 14"));
}

TEST_F(ExampleDevices, TheSetpointProgrammeNeedsSegmentsEvenOf1024Octets) {
    station = std::make_unique<simulator::Station>(Load("air-handling-unit.lua").at(0));
    auto const first = Ask("02 74 01 0E 0C 04 40 00 01 1E 09 55 09 7B 09 26 09 6F 1F");
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first[0].substr(0, 14), "3C 01 00 10 0E");
    EXPECT_EQ(first[0].size(), 1024u * 3 - 1);
    auto const second = Ask("40 01 00 01");
    ASSERT_EQ(second.size(), 1u);
    EXPECT_EQ(second[0].substr(0, 14), "38 01 01 10 0E");
}

TEST_F(ExampleDevices, ARoomControllerNeedsSegmentsForALight) {
    station = std::make_unique<simulator::Station>(Load("room-controllers.lua").at(0));
    auto const first = Ask("02 74 01 0E 0C 0D 80 00 01 1E 09 08 1F");
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first[0].substr(0, 14), "3C 01 00 10 0E");
    EXPECT_EQ(first[0].size(), 206u * 3 - 1);
}

TEST_F(ExampleDevices, WritesToTheAirHandlingUnitEndAsItsFileStates) {
    station = std::make_unique<simulator::Station>(Load("air-handling-unit.lua").at(0));
    std::string const setpoint = "0C 00 80 00 01 19 55";
    auto const write = [&](std::string const& parameters) { return Answer("02 75 01 0F " + parameters); };
    auto const read = [&] { return Answer("02 75 01 0C " + setpoint).substr(30); };
    EXPECT_EQ(read(), "3E 44 41 A4 00 00 3F");
    EXPECT_EQ(write(setpoint + " 3E 44 41 B0 00 00 3F 49 08"), "20 01 0F");
    EXPECT_EQ(write(setpoint + " 3E 44 41 98 00 00 3F 49 10"), "20 01 0F");
    EXPECT_EQ(read(), "3E 44 41 B0 00 00 3F") << "8 over 16";
    EXPECT_EQ(write(setpoint + " 3E 00 3F 49 08"), "20 01 0F");
    EXPECT_EQ(read(), "3E 44 41 98 00 00 3F");
    EXPECT_EQ(write(setpoint + " 3E 44 42 20 00 00 3F 49 08"), "50 01 0F 91 02 91 25") << "40 degrees";
    EXPECT_EQ(write("0C 00 00 00 01 19 55 3E 44 41 B0 00 00 3F"), "50 01 0F 91 02 91 28");
    std::string const week =
        "0C 04 40 00 01 19 7B 3E 0E B4 08 00 00 00 44 41 A8 00 00 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 3F";
    EXPECT_EQ(write(week), "20 01 0F");
    EXPECT_EQ(Answer("02 75 01 0C 0C 04 40 00 01 19 7B"), "30 01 0C " + week);
    std::string const exceptions =
        "0C 04 40 00 01 19 26 3E 0E 0C 7E 0C 18 FF 0F 2E B4 00 00 00 00 44 41 80 00 00 2F 39 0A 3F";
    EXPECT_EQ(write(exceptions), "20 01 0F");
    EXPECT_EQ(Answer("02 75 01 0C 0C 04 40 00 01 19 26"), "30 01 0C " + exceptions);
}

TEST_F(ExampleDevices, TheUnreliableControllerHasFaultsOfManyKinds) {
    std::set<simulator::FaultKind> kinds;
    auto const devices = Load("unreliable-controller.lua");
    for (simulator::Fault const& fault : devices.at(0).Settings().faults) {
        kinds.insert(fault.kind);
    }
    EXPECT_GE(kinds.size(), 8u);
}
