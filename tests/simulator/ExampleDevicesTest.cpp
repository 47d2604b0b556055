#include <set>

#include "StationFixture.h"

// The device files of the demo plant.
class ExampleDevices : public test::StationFixture {
protected:
    static std::vector<simulator::Device> load(std::string const& name) {
        return simulator::loadDeviceFile(std::string(EXAMPLES_FOLDER "/devices/") + name);
    }

    static std::vector<simulator::Device> loadAll() {
        std::vector<simulator::Device> all;
        for (char const* name :
             {"air-handling-unit.lua", "chiller.lua", "room-controllers.lua", "energy-meter.lua"}) {
            for (simulator::Device& device : load(name)) {
                all.push_back(std::move(device));
            }
        }
        return all;
    }

    // The properties that a client of the plant can be configured for.
    static std::set<unsigned> const& properties() {
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
    for (simulator::Device const& device : loadAll()) {
        for (simulator::BacnetObject const& object : device.objects()) {
            types.insert(object.id().type);
            for (simulator::Property const& property : object.properties()) {
                auto const number = static_cast<unsigned>(property.id);
                found.insert(number);
                pairs += static_cast<int>(properties().count(number));
            }
        }
    }
    EXPECT_EQ(types.size(), 24u) << "23 types and the Device object";
    for (unsigned const property : properties()) {
        EXPECT_TRUE(found.count(property)) << property;
    }
    EXPECT_GE(pairs, 70);
}

TEST_F(ExampleDevices, ValuesMove) {
    simulator::Moment later;
    later.sinceStart = later.local = std::chrono::seconds(13);
    int moving = 0;
    for (simulator::Device const& device : loadAll()) {
        for (simulator::BacnetObject const& object : device.objects()) {
            if (simulator::Property const* value = object.find(simulator::PropertyId::Present_Value)) {
                simulator::TagWriter first, second;
                value->encode(first, std::nullopt, {});
                value->encode(second, std::nullopt, later);
                moving += first.take() != second.take();
            }
        }
    }
    EXPECT_GE(moving, 20);
}

TEST_F(ExampleDevices, TheChillerIsBehindARouter) {
    auto const position = load("chiller.lua").at(0).settings().position;
    ASSERT_TRUE(position);
    EXPECT_EQ(position->network, 5);
    EXPECT_EQ(position->mac, test::Hex("0A 14"));
}

TEST_F(ExampleDevices, TheSetpointProgrammeNeedsSegmentsEvenOf1024Octets) {
    station = std::make_unique<simulator::Station>(load("air-handling-unit.lua").at(0));
    auto const first = ask("02 74 01 0E 0C 04 40 00 01 1E 09 55 09 7B 09 26 09 6F 1F");
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first[0].substr(0, 14), "3C 01 00 10 0E");
    EXPECT_EQ(first[0].size(), 1024u * 3 - 1);
    auto const second = ask("40 01 00 01");
    ASSERT_EQ(second.size(), 1u);
    EXPECT_EQ(second[0].substr(0, 14), "38 01 01 10 0E");
}

TEST_F(ExampleDevices, ARoomControllerNeedsSegmentsForALight) {
    station = std::make_unique<simulator::Station>(load("room-controllers.lua").at(0));
    auto const first = ask("02 74 01 0E 0C 0D 80 00 01 1E 09 08 1F");
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first[0].substr(0, 14), "3C 01 00 10 0E");
    EXPECT_EQ(first[0].size(), 206u * 3 - 1);
}
