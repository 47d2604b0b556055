#include "JsonPublisher.h"

#include <utility>

#include "JsonPayloads.h"
#include "Printable.h"
#include "SetPayload.h"
#include "TopicLevel.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

constexpr int AtLeastOnce = 1;

long long LocalDiff() {
    return dorvel::Environment().LocalTimeDiff();
}

Message Retained(std::string topic, std::string payload) {
    return {std::move(topic), std::move(payload), AtLeastOnce, true};
}

std::string PrefixOf(PublishSettings const& settings) {
    return settings.prefix.empty() ? "dorvel/" + EscapedLevel(settings.node) : settings.prefix;
}

}  // namespace

JsonPublisher::JsonPublisher(PublishSettings const& settings, OutletParts const& runParts,
                             OutletStatus& outletStatus)
    : parts(runParts),
      status(outletStatus),
      takesCommands(settings.takesCommands),
      topics(PrefixOf(settings), parts.blocks),
      changes({settings.deadBand, settings.interval}),
      gate({parts.blocks, parts.setter, parts.log, status}, takesCommands) {}

Message JsonPublisher::Will(long long) {
    return Retained(topics.State(), OfflineJson(0, 0));
}

// Without commands nothing is received: not every user of a broker may subscribe.
std::vector<std::string> JsonPublisher::Subscriptions() const {
    return takesCommands ? std::vector<std::string>{topics.CommandFilter()} : std::vector<std::string>();
}

void JsonPublisher::Connected(long long now, MessageSink& sink) {
    isConnected = true;
    changes.Forget();
    sink.Send(Retained(topics.State(), OnlineJson({parts.version, parts.project}, now, LocalDiff())));
}

void JsonPublisher::Publish(std::vector<SharedSnapshot> const& blocks, long long now, MessageSink& sink) {
    if (!isConnected) {
        return;
    }
    changes.Take(blocks);
    SendAnswers(sink);
    SendProgress(blocks, now, sink);
    SendStates(sink);
    SendValues(now, sink);
}

void JsonPublisher::SendAnswers(MessageSink& sink) {
    while (!answers.empty() && sink.HasRoom()) {
        sink.Send(std::move(answers.front()));
        answers.pop_front();
    }
}

void JsonPublisher::SendProgress(std::vector<SharedSnapshot> const& blocks, long long now,
                                 MessageSink& sink) {
    if (!answers.empty()) {
        return;
    }
    for (CommandAnswer const& answer : gate.Progress(blocks, MostAnswers)) {
        Answer(answer, now);
    }
    SendAnswers(sink);
}

void JsonPublisher::SendStates(MessageSink& sink) {
    while (sink.HasRoom()) {
        auto const index = changes.NextState();
        if (!index) {
            return;
        }
        sink.Send(
            Retained(topics.BlockState(*index), BlockJson(changes.Block(*index), changes.Suspects(*index))));
    }
}

void JsonPublisher::SendValues(long long now, MessageSink& sink) {
    while (sink.HasRoom()) {
        auto const place = changes.NextValue(now);
        if (!place) {
            return;
        }
        sink.Send(Retained(topics.Variable(*place),
                           ValueJson(changes.Block(place->block), changes.Variable(*place))));
    }
}

void JsonPublisher::Receive(ReceivedMessage const& message, long long now, MessageSink& sink) {
    auto const place = topics.CommandPlace(message.topic);
    if (place) {
        Answer(AnswerOf(*place, message, now), now);
    } else {
        AnswerStray(message.topic, now);
    }
    SendAnswers(sink);
}

CommandAnswer JsonPublisher::AnswerOf(VariablePlace place, ReceivedMessage const& message, long long now) {
    SetPayload const payload = ReadSetPayload(message.payload);
    Command const command{place, payload.value, payload.time, message.isRetained, payload.id};
    return payload.mistake.empty() ? gate.Take(command, now) : gate.Refuse(command, payload.mistake, now);
}

void JsonPublisher::AnswerStray(std::string const& topic, long long now) {
    gate.CountStray();
    bool const isTooEarly = now >= latestStray && now - latestStray < CommandGate::LeastDistance;
    if (isTooEarly || !topics.IsCommand(topic)) {
        return;
    }
    latestStray = now;
    CommandAnswer answer;
    answer.state = CommandState::Invalid;
    answer.reason = "no variable of this workbench has the topic " + tools::Quoted(topic);
    Add({topic + "/state", AnswerJson(answer, now, LocalDiff()), AtLeastOnce, false});
}

void JsonPublisher::Answer(CommandAnswer const& answer, long long now) {
    Add({topics.Answer(answer.place), AnswerJson(answer, now, LocalDiff()), AtLeastOnce, false});
}

void JsonPublisher::Add(Message answer) {
    if (answers.size() < MostAnswers) {
        answers.push_back(std::move(answer));
    } else {
        status.Count("answers dropped");
    }
}

void JsonPublisher::End(long long now, MessageSink& sink) {
    if (!isConnected) {
        return;
    }
    long long const localDiff = LocalDiff();
    for (Message& answer : answers) {
        sink.Send(std::move(answer));
    }
    answers.clear();
    for (CommandAnswer const& answer : gate.Finish()) {
        sink.Send({topics.Answer(answer.place), AnswerJson(answer, now, localDiff), AtLeastOnce, false});
    }
    for (std::size_t block = 0; block < parts.blocks.size(); ++block) {
        sink.Send(Retained(topics.BlockState(block), BlockOfflineJson(now, localDiff)));
    }
    sink.Send(Retained(topics.State(), OfflineJson(now, localDiff)));
    isConnected = false;
}

}  // namespace workbench
