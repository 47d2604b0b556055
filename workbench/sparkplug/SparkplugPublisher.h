#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "BirthPause.h"
#include "OutletParts.h"
#include "OutletStatus.h"
#include "PublishSettings.h"
#include "Publisher.h"
#include "SparkplugCommands.h"
#include "SparkplugNames.h"
#include "ValueChanges.h"

namespace workbench {

// Publishes a run by Sparkplug B, version 3.0, and takes commands, if it may. The workbench is an edge node,
// each block a device, each variable a metric of it. docs/publish.md documents topics, types and properties.
//
// A device is born when its block has had a cycle without a fault, and dead while the block is in fault or on
// standby. A birth has all variables; data have those that have changed, by their aliases. It counts
// "rebirths" in the status, and what the gate for commands counts; messages are counted by the connection.
class SparkplugPublisher : public Publisher {
public:
    // Metrics and, about, octets of a message of data; more make several messages. A message with one long
    // value is longer.
    static constexpr std::size_t MostMetricsOfData = 1000;
    static constexpr std::size_t LongestData = 256 << 10;
    // The metric of the node that has the answers to commands.
    static constexpr char AnswerName[] = "Commands/Answer";

    // ProjectError if two blocks or two variables of a block cannot be told apart (SparkplugNames.h). What
    // the parts refer to, and the status, must outlive the publisher.
    SparkplugPublisher(PublishSettings const& settings, OutletParts const& runParts,
                       OutletStatus& outletStatus);

    Message Will(long long now) override;
    std::vector<std::string> Subscriptions() const override;
    void Connected(long long now, MessageSink& sink) override;
    void Disconnected() override { isConnected = false; }
    void Publish(std::vector<SharedSnapshot> const& blocks, long long now, MessageSink& sink) override;
    void Receive(ReceivedMessage const& message, long long now, MessageSink& sink) override;
    void End(long long now, MessageSink& sink) override;

private:
    struct Device {
        bool isBorn = false;
        BirthPause pause;             // between two births
        std::vector<bool> wasGood{};  // the variables' quality, as it was sent last
    };

    void BeginBirths();
    bool SendNodeBirth(long long now, MessageSink& sink);
    void SendDeviceStates(long long now, MessageSink& sink);
    void SendDeviceBirth(std::size_t block, long long now, MessageSink& sink);
    void SendAnswers(long long now, MessageSink& sink);
    void SendValues(long long now, MessageSink& sink);
    std::optional<VariablePlace> NextPlace(long long now);
    std::vector<SparkplugMetric> NextData(std::size_t& block, long long now);
    SparkplugMetric DataOf(VariablePlace place);
    Message DeathOfNode(long long now) const;
    SparkplugPayload Numbered(long long now);

    OutletParts parts;
    OutletStatus& status;
    bool takesCommands;
    SparkplugNames names;
    ValueChanges changes;
    SparkplugCommands commands;
    std::vector<Device> devices;
    BirthPause rebirths;
    std::deque<VariablePlace> held;           // to be sent before the changes
    std::optional<std::uint8_t> birthNumber;  // bdSeq of the will
    std::uint8_t nextNumber = 0;              // seq
    bool isConnected = false;
    bool isNodeBorn = false;
    bool isRebirthDue = false;
};

}  // namespace workbench
