#pragma once

#include <deque>
#include <string>
#include <vector>

#include "CommandGate.h"
#include "OutletParts.h"
#include "OutletStatus.h"
#include "PlantTopics.h"
#include "PublishSettings.h"
#include "Publisher.h"
#include "ValueChanges.h"

namespace workbench {

// Publishes a run as one retained JSON message for each variable, with quality of service 1, and takes
// commands, if it may. docs/publish.md documents topics and payloads. It counts "commands" and "commands
// refused" in the status; messages are counted by the connection.
class JsonPublisher : public Publisher {
public:
    // How many answers to commands wait for room at most; further ones are dropped and
    // counted as "answers dropped". The final states of accepted commands are not lost.
    static constexpr std::size_t MostAnswers = 256;

    // ProjectError if the topics of the project are not possible (PlantTopics.h). What the parts refer to,
    // and the status, must outlive the publisher.
    JsonPublisher(PublishSettings const& settings, OutletParts const& runParts, OutletStatus& outletStatus);

    Message Will(long long now) override;
    std::vector<std::string> Subscriptions() const override;
    void Connected(long long now, MessageSink& sink) override;
    void Disconnected() override { isConnected = false; }
    void Publish(std::vector<SharedSnapshot> const& blocks, long long now, MessageSink& sink) override;
    void Receive(ReceivedMessage const& message, long long now, MessageSink& sink) override;
    void End(long long now, MessageSink& sink) override;

private:
    CommandAnswer AnswerOf(VariablePlace place, ReceivedMessage const& message, long long now);
    void AnswerStray(std::string const& topic, long long now);
    void Answer(CommandAnswer const& answer, long long now);
    void Add(Message answer);
    void SendAnswers(MessageSink& sink);
    void SendProgress(std::vector<SharedSnapshot> const& blocks, long long now, MessageSink& sink);
    void SendStates(MessageSink& sink);
    void SendValues(long long now, MessageSink& sink);

    OutletParts parts;
    OutletStatus& status;
    bool takesCommands;
    PlantTopics topics;
    ValueChanges changes;
    CommandGate gate;
    std::deque<Message> answers;
    long long latestStray = 0;  // the time of the last answer to a command for no variable
    bool isConnected = false;
};

}  // namespace workbench
