#include "SparkplugPublisher.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "DeviceBirth.h"
#include "Printable.h"
#include "SparkplugValues.h"

namespace workbench {

namespace {

constexpr long long Second = 10000000;
// What a metric of data takes without a text, about.
constexpr std::size_t MetricOctets = 24;

bool IsOnline(BlockSnapshot const& block) {
    return block.cycle > 0 && !block.isStandby && !IsFault(block);
}

SparkplugMetric TextMetric(char const* name, std::string text, std::uint64_t time) {
    SparkplugMetric metric;
    metric.name = name;
    metric.timestamp = time;
    metric.type = SparkplugType::String;
    metric.value = std::move(text);
    return metric;
}

// No answer yet.
SparkplugMetric NoAnswer(std::uint64_t time) {
    SparkplugMetric metric = TextMetric(SparkplugPublisher::AnswerName, "", time);
    metric.value = {};
    metric.isNull = true;
    return metric;
}

SparkplugMetric RebirthMetric(std::uint64_t time) {
    SparkplugMetric metric;
    metric.name = SparkplugNames::Rebirth;
    metric.timestamp = time;
    metric.type = SparkplugType::Boolean;
    metric.value = false;
    return metric;
}

SparkplugMetric BirthNumber(std::uint8_t number, std::uint64_t time) {
    SparkplugMetric metric;
    metric.name = "bdSeq";
    metric.timestamp = time;
    metric.type = SparkplugType::Int64;
    metric.value = std::uint64_t{number};
    return metric;
}

std::size_t LengthOf(SparkplugMetric const& metric) {
    auto const* text = std::get_if<std::string>(&metric.value);
    auto const* bytes = std::get_if<SparkplugBytes>(&metric.value);
    return MetricOctets + (text ? text->size() : 0) + (bytes ? bytes->octets.size() : 0);
}

}  // namespace

SparkplugPublisher::SparkplugPublisher(PublishSettings const& settings, OutletParts const& runParts,
                                       OutletStatus& outletStatus)
    : parts(runParts),
      status(outletStatus),
      takesCommands(settings.takesCommands),
      names(settings.group, settings.node, runParts.blocks),
      changes({settings.deadBand, settings.interval}),
      commands(names, {runParts.blocks, runParts.setter, runParts.log, outletStatus}, settings.takesCommands),
      devices(runParts.blocks.size()) {}

// A workbench keeps no number for its next run. That of the clock most likely differs from the number of the
// will that the broker has of the run before.
Message SparkplugPublisher::Will(long long now) {
    birthNumber = static_cast<std::uint8_t>(birthNumber ? *birthNumber + 1 : now / Second);
    return DeathOfNode(now);
}

Message SparkplugPublisher::DeathOfNode(long long now) const {
    SparkplugPayload payload;
    payload.timestamp = SparkplugTime(now);
    payload.metrics = {BirthNumber(birthNumber.value_or(0), SparkplugTime(now))};
    return {names.NodeTopic("NDEATH"), EncodePayload(payload), 1, false};
}

std::vector<std::string> SparkplugPublisher::Subscriptions() const {
    return {names.NodeTopic("NCMD"), names.DevicesTopic("DCMD")};
}

void SparkplugPublisher::Connected(long long now, MessageSink& sink) {
    isConnected = true;
    isRebirthDue = false;
    BeginBirths();
    SendNodeBirth(now, sink);
}

void SparkplugPublisher::Publish(std::vector<SharedSnapshot> const& blocks, long long now,
                                 MessageSink& sink) {
    if (!isConnected) {
        return;
    }
    if (isRebirthDue && rebirths.IsOver(now)) {
        isRebirthDue = false;
        rebirths.Begin(now);
        status.Count("rebirths");
        BeginBirths();
    }
    changes.Take(blocks);
    if (SendNodeBirth(now, sink)) {
        SendDeviceStates(now, sink);
        SendAnswers(now, sink);
        // A state is reported once, so that it is asked for only when it can be sent.
        if (sink.HasRoom()) {
            commands.AddProgress(blocks, now);
            SendAnswers(now, sink);
        }
        SendValues(now, sink);
    }
}

void SparkplugPublisher::Receive(ReceivedMessage const& message, long long now, MessageSink& sink) {
    if (message.topic == names.NodeTopic("NCMD")) {
        isRebirthDue = commands.AsksForBirths(message) || isRebirthDue;
    } else if (auto const block = names.BlockOfTopic("DCMD", message.topic)) {
        commands.Take(*block, message, now);
    } else {
        commands.CountStray();
    }
    if (isConnected && isNodeBorn) {
        SendAnswers(now, sink);
    }
}

void SparkplugPublisher::End(long long now, MessageSink& sink) {
    if (!isConnected) {
        return;
    }
    if (isNodeBorn) {
        commands.Finish(now);
        SendAnswers(now, sink);
    }
    sink.Send(DeathOfNode(now));
    isConnected = false;
}

// A host takes all devices for dead when the node is born.
void SparkplugPublisher::BeginBirths() {
    isNodeBorn = false;
    held.clear();
    changes.Forget();
    for (Device& device : devices) {
        device.isBorn = false;
        device.pause.Forget();
    }
}

bool SparkplugPublisher::SendNodeBirth(long long now, MessageSink& sink) {
    if (isNodeBorn || !sink.HasRoom()) {
        return isNodeBorn;
    }
    nextNumber = 0;
    std::uint64_t const time = SparkplugTime(now);
    SparkplugPayload payload = Numbered(now);
    payload.metrics = {
        BirthNumber(birthNumber.value_or(0), time), RebirthMetric(time),
        TextMetric("Properties/Project",
                   tools::ValidUtf8(std::filesystem::path(parts.project).filename().string()), time),
        TextMetric("Properties/Version", parts.version, time), NoAnswer(time)};
    sink.Send({names.NodeTopic("NBIRTH"), EncodePayload(payload), 0, false});
    isNodeBorn = true;
    return true;
}

void SparkplugPublisher::SendDeviceStates(long long now, MessageSink& sink) {
    for (std::size_t i = 0; i < changes.BlockCount() && sink.HasRoom(); ++i) {
        Device& device = devices[i];
        bool const isOnline = IsOnline(changes.Block(i));
        if (device.isBorn && !isOnline) {
            device.isBorn = false;
            sink.Send({names.DeviceTopic("DDEATH", i), EncodePayload(Numbered(now)), 0, false});
        } else if (!device.isBorn && isOnline && device.pause.IsOver(now)) {
            SendDeviceBirth(i, now, sink);
        }
    }
}

void SparkplugPublisher::SendDeviceBirth(std::size_t block, long long now, MessageSink& sink) {
    BlockSnapshot const& snapshot = changes.Block(block);
    DeviceBirth birth = MakeDeviceBirth(snapshot, block, names, takesCommands, Numbered(now));
    Device& device = devices[block];
    device.isBorn = true;
    device.pause.Begin(now);
    device.wasGood.clear();
    for (VariableSnapshot const& variable : snapshot.variables) {
        device.wasGood.push_back(QualityCodeOf(snapshot, variable) == QualityGood);
    }
    changes.CountAsSent(block, now);
    // What an earlier birth has left out and what has not been sent since.
    held.erase(std::remove_if(held.begin(), held.end(),
                              [&](VariablePlace const& place) { return place.block == block; }),
               held.end());
    for (std::size_t const variable : birth.leftOut) {
        held.push_back({block, variable});
    }
    sink.Send({names.DeviceTopic("DBIRTH", block), std::move(birth.payload), 0, false});
}

void SparkplugPublisher::SendAnswers(long long now, MessageSink& sink) {
    while (commands.HasAnswers() && sink.HasRoom()) {
        SparkplugPayload payload = Numbered(now);
        payload.metrics = {TextMetric(AnswerName, *commands.NextAnswer(), SparkplugTime(now))};
        sink.Send({names.NodeTopic("NDATA"), EncodePayload(payload), 0, false});
    }
}

void SparkplugPublisher::SendValues(long long now, MessageSink& sink) {
    while (sink.HasRoom()) {
        std::size_t block = 0;
        std::vector<SparkplugMetric> metrics = NextData(block, now);
        if (metrics.empty()) {
            return;
        }
        SparkplugPayload payload = Numbered(now);
        payload.metrics = std::move(metrics);
        sink.Send({names.DeviceTopic("DDATA", block), EncodePayload(payload), 0, false});
    }
}

// The metrics of a message. A variable of another block waits for the next one.
std::vector<SparkplugMetric> SparkplugPublisher::NextData(std::size_t& block, long long now) {
    std::vector<SparkplugMetric> metrics;
    std::size_t octets = 0;
    while (metrics.size() < MostMetricsOfData && octets < LongestData) {
        auto const place = NextPlace(now);
        if (!place) {
            break;
        }
        if (!metrics.empty() && place->block != block) {
            held.push_front(*place);
            break;
        }
        block = place->block;
        metrics.push_back(DataOf(*place));
        octets += LengthOf(metrics.back());
    }
    return metrics;
}

// The next variable of a device that is alive. The birth of another one will have all of its values.
std::optional<VariablePlace> SparkplugPublisher::NextPlace(long long now) {
    while (true) {
        auto place = held.empty() ? changes.NextValue(now) : std::optional(held.front());
        if (!held.empty()) {
            held.pop_front();
        }
        if (!place || devices[place->block].isBorn) {
            return place;
        }
    }
}

SparkplugMetric SparkplugPublisher::DataOf(VariablePlace place) {
    VariableView const view{changes.Block(place.block), changes.Variable(place), names.Alias(place)};
    std::vector<bool>& wasGood = devices[place.block].wasGood;
    SparkplugMetric metric = DataMetric(view, wasGood[place.variable]);
    wasGood[place.variable] = QualityCodeOf(view.block, view.variable) == QualityGood;
    return metric;
}

// The head of the next message.
SparkplugPayload SparkplugPublisher::Numbered(long long now) {
    SparkplugPayload payload;
    payload.timestamp = SparkplugTime(now);
    payload.seq = nextNumber++;
    return payload;
}

}  // namespace workbench
