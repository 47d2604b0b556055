#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "FakeEnvironment.h"
#include "Projects.h"
#include "ShownValue.h"
#include "Snapshots.h"
#include "SparkplugPublisher.h"
#include "WireFields.h"

namespace test {

inline OpcUa_VariantHlp Number(int value) {
    OpcUa_VariantHlp variant;
    variant.SetInt(value);
    return variant;
}

// A broker that takes so many messages.
struct FakeBroker : workbench::MessageSink {
    bool HasRoom() const override { return sent.size() < room; }
    void Send(workbench::Message message) override { sent.push_back(std::move(message)); }

    std::vector<workbench::Message> sent;
    std::size_t room = 100000;
};

// A run with a publisher, in virtual time. The test determines what a cycle has.
class SparkplugTest : public testing::Test {
protected:
    static constexpr long long Start = 133503000000000000LL;  // 21 January 2024, 08:40 UTC

    SparkplugTest() : addIn([this](FakeDriver& driver) { OnCycle(driver); }) {
        dorvel::SetEnvironment(&world);
        world.time = Start;
        settings.group = "plant";
        settings.node = "north";
        settings.takesCommands = true;
    }
    ~SparkplugTest() override {
        publisher.reset();
        setter.reset();
        dorvel::SetEnvironment(nullptr);
    }

    static std::string Variable(std::string const& name, std::string const& type,
                                std::string const& fields = "Write=true") {
        return "{Name='" + name + "', Type='DataValue', ElementType='" + type +
               "', ObjectType='analog-value', ObjectProperties='present-value', ObjectNumber=1, " + fields +
               "}";
    }

    static std::string TwoBlocks() {
        return Block(R"(Name="AHU", Address="192.168.1.20:47808")",
                     Variable("T", "Float") + ", " + Variable("N", "Int32")) +
               Block(R"(Name="Rooms", Address="192.168.1.21:47808")", Variable("T", "Float"));
    }

    void Load(std::string const& text) {
        project.Load(workbench::SourceText(text));
        setter = std::make_unique<workbench::ValueSetter>(project.Runtime(), log);
        for (workbench::BlockConfig const& block : project.Blocks()) {
            workbench::BlockSnapshot snapshot =
                workbench::TakeSnapshot(block, 0, project.Runtime().Variables());
            cycles.push_back(snapshot);
        }
        memory = std::make_unique<workbench::PlantMemory>(project.Blocks(), Shared(), false);
        MakePublisher();
    }

    void MakePublisher() {
        workbench::OutletParts const parts{
            "/home/plant.lua", "1.2.3", project.Blocks(), project.Tasks(), *memory, *setter, log, {}};
        publisher = std::make_unique<workbench::SparkplugPublisher>(settings, parts, status);
    }

    // A cycle of each block: all of its values are 1, and good.
    void RunAll() {
        for (std::size_t i = 0; i < cycles.size(); ++i) {
            Finish(i);
            for (std::size_t j = 0; j < cycles[i].variables.size(); ++j) {
                SetValue(i, j, Number(1));
            }
        }
    }
    void Finish(std::size_t block) {
        ++cycles[block].cycle;
        cycles[block].isReported = true;
        cycles[block].time = world.time;
        newest.clear();
    }
    void SetValue(std::size_t block, std::size_t variable, OpcUa_VariantHlp value,
                  OpcUa_StatusCode quality = OpcUa_Good) {
        workbench::VariableSnapshot& snapshot = cycles[block].variables[variable];
        value.ChangeType(workbench::ValueType(*snapshot.config));
        snapshot.state = {std::move(value), quality, world.time};
        newest.clear();
    }
    void SetFault(std::size_t block, bool isFault) {
        cycles[block].fault = isFault;
        cycles[block].errorText = isFault ? "No connection" : "";
        Finish(block);
    }

    std::vector<workbench::SharedSnapshot> Shared() {
        if (newest.empty()) {
            for (workbench::BlockSnapshot const& snapshot : cycles) {
                newest.push_back(std::make_shared<workbench::BlockSnapshot const>(snapshot));
            }
        }
        return newest;
    }

    // As a connection does it.
    workbench::Message Connect() {
        workbench::Message will = publisher->Will(world.time);
        publisher->Connected(world.time, broker);
        return will;
    }
    void Publish() { publisher->Publish(Shared(), world.time, broker); }
    void Wait(long long seconds) { world.time += seconds * Second; }
    void Receive(std::string const& topic, std::string const& payload, bool isRetained = false) {
        publisher->Receive({topic, payload, isRetained}, world.time, broker);
    }

    // The messages since the last call, as "DBIRTH AHU", "NDATA".
    std::vector<std::string> Sent() {
        std::vector<std::string> names;
        taken.clear();
        for (workbench::Message& message : broker.sent) {
            std::string const start = "spBv1.0/plant/";
            EXPECT_EQ(message.topic.compare(0, start.size(), start), 0) << message.topic;
            std::string const rest = message.topic.substr(start.size());
            std::size_t const node = rest.find("/north");
            std::string const device = rest.substr(node + 6);
            names.push_back(rest.substr(0, node) + (device.empty() ? "" : " " + device.substr(1)));
            taken.emplace_back(message.payload);
            messages.push_back(std::move(message));
        }
        broker.sent.clear();
        return names;
    }
    using Names = std::vector<std::string>;

    // Connected, with all births, which are not kept.
    void Begin(std::string const& text) {
        Load(text);
        RunAll();
        Connect();
        Publish();
        Sent();
    }

    unsigned long long Count(std::string const& name) {
        for (auto const& [figure, count] : status.State().counts) {
            if (figure == name) {
                return count;
            }
        }
        return 0;
    }

    FakeAddIn addIn;
    virtual void OnCycle(FakeDriver& driver) { driver.Report(false, ""); }

    FakeEnvironment world;
    workbench::LogBuffer log{nullptr};
    workbench::OutletStatus status{"mqtt", log};
    workbench::LoadedProject project{"p.lua", {}};
    std::unique_ptr<workbench::ValueSetter> setter;
    std::unique_ptr<workbench::PlantMemory> memory;
    workbench::PublishSettings settings;
    std::unique_ptr<workbench::SparkplugPublisher> publisher;
    std::deque<workbench::BlockSnapshot> cycles;
    std::vector<workbench::SharedSnapshot> newest;
    FakeBroker broker;
    std::vector<ReadPayload> taken;            // of the last call of Sent
    std::vector<workbench::Message> messages;  // all that were sent
};

}  // namespace test
