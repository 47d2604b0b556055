#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "FollowedRun.h"
#include "JsonPublisher.h"
#include "OutletParts.h"

namespace test {

// A broker that keeps what is retained, and takes as many messages as the test allows.
class FakeBroker : public workbench::MessageSink {
public:
    bool HasRoom() const override { return room > 0; }
    void Send(workbench::Message message) override {
        room -= room > 0 ? 1 : 0;
        if (message.isRetained) {
            retained[message.topic] = message.payload;
        }
        sent.push_back(std::move(message));
    }

    // The topics that were sent to since the last call, in order.
    std::vector<std::string> Topics() {
        std::vector<std::string> topics;
        for (workbench::Message const& message : sent) {
            topics.push_back(message.topic);
        }
        sent.clear();
        return topics;
    }

    std::size_t room = 1000000;
    std::vector<workbench::Message> sent;
    std::map<std::string, std::string> retained;
};

// A run of two blocks: the first one has a number and a state that can be set and a text that cannot, the
// second one a number.
class PublishTest : public FollowedRun {
protected:
    PublishTest() : FollowedRun(ProjectText(), Noon, false) {
        settings.prefix = "dorvel/pc-plant";
        settings.takesCommands = true;
        Make();
    }

    void Make() {
        publisher = std::make_unique<workbench::JsonPublisher>(
            settings,
            workbench::OutletParts{
                "plants/plant.lua", "1.2.3", project.Blocks(), project.Tasks(), *memory, *setter, log, {}},
            status);
    }

    static std::string ProjectText() {
        std::string const number =
            "{Name='T', Type='DataValue', ElementType='Float', ObjectType='analog-value', "
            "ObjectProperties='present-value', ObjectNumber=1, Write=true, Unit='degrees-celsius'}";
        std::string const state =
            "{Name='Mode', Type='DataValue', ElementType='UInt32', ObjectType='multi-state-value', "
            "ObjectProperties='present-value', ObjectNumber=2, Write=true, StateTexts={'off', 'on'}}";
        std::string const text =
            "{Name='Na/me', Type='DataValue', ElementType='String', ObjectType='analog-value', "
            "ObjectProperties='description', ObjectNumber=3}";
        return Block(R"(Name="AHU", Address="192.168.1.20:47808")", number + ", " + state + ", " + text) +
               Block(R"(Name="Room 1", Address="192.168.1.21:47808")");
    }

    void Cycle(FakeDriver& driver) override {
        if (isSilent) {
            driver.Report(true, "No connection");
            return;
        }
        if (driver.variables.size() == 3) {
            driver.Deliver(0, Float(temperature));
            driver.Deliver(1, mode);
            driver.Deliver(2, Text(label));
        } else {
            driver.Deliver(0, Float(20), quality);
        }
        driver.Report(false, "");
        driver.WritePhase([this](std::size_t place, OpcUa_VariantHlp const& value) {
            written.push_back(place);
            if (place == 0 && takesValues) {
                double number = 0;
                value.GetDouble(number);
                temperature = static_cast<float>(number);
            }
        });
    }

    void Complete(workbench::BlockSnapshot& snapshot) override {
        snapshot.isStandby = isStandby;
        snapshot.variables.front().suspect = suspect;
    }

    void Connect() { publisher->Connected(world.time, broker); }
    void Publish() { publisher->Publish(memory->board.All(), world.time, broker); }
    // A cycle of both blocks, a second after the one before, and what follows from it.
    void Run(int cycles = 1) {
        for (int i = 0; i < cycles; ++i) {
            RunOnce();
            Publish();
        }
    }
    // Everything is sent, and the broker's list of it is empty.
    void Settle() {
        Connect();
        Run();
        broker.sent.clear();
    }
    void Receive(std::string const& topic, std::string const& payload, bool isRetained = false) {
        publisher->Receive({topic, payload, isRetained}, world.time, broker);
    }
    // The answer to a command for the temperature that was sent last.
    std::string LastAnswer() const {
        for (auto message = broker.sent.rbegin(); message != broker.sent.rend(); ++message) {
            if (message->topic == "dorvel/pc-plant/AHU/T/set/state") {
                return message->payload;
            }
        }
        return "none";
    }
    std::string Command(std::string const& payload, bool isRetained = false) {
        broker.sent.clear();
        Receive("dorvel/pc-plant/AHU/T/set", payload, isRetained);
        return LastAnswer();
    }
    unsigned long long Count(std::string const& figure) const {
        for (auto const& count : status.State().counts) {
            if (count.first == figure) {
                return count.second;
            }
        }
        return 0;
    }

    float temperature = 21.5F;
    OpcUa_VariantHlp mode = [] {
        OpcUa_VariantHlp value;
        value.SetUInt(2);
        return value;
    }();
    std::string label = "supply air";
    OpcUa_StatusCode quality = OpcUa_Good;
    std::string suspect;
    bool isSilent = false;
    bool isStandby = false;
    bool takesValues = true;  // the device
    std::vector<std::size_t> written;
    workbench::OutletStatus status{"mqtt", log};
    workbench::PublishSettings settings;
    std::unique_ptr<workbench::JsonPublisher> publisher;
    FakeBroker broker;
};

}  // namespace test
