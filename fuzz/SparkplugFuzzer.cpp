// Sparkplug B: a run with two blocks, a host that follows it, and commands from anybody. For every input:
// each message is on a topic of the node and is a payload; the numbers of the messages leave none out; data
// and deaths are of devices that were born, and have aliases and types of their birth; births of the node
// have the number of the will; once there is room, the host has the newest values of all blocks that are
// online, and no other device; nothing that is retained is accepted. No exception leaves it.
//
// The input has the names of two blocks and of their two variables each, with their lengths before them, and
// then steps: an octet with what is done (the lowest three bits) and to which variable (the next two), and
// what it needs.
#include <lua.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Input.h"
#include "PlayedPlant.h"
#include "ProjectError.h"
#include "QuietWorld.h"
#include "Require.h"
#include "ShownValue.h"
#include "SparkplugPublisher.h"
#include "SparkplugValues.h"
#include "dorvel/Runtime.h"

using fuzz::Input;
using fuzz::PlayedPlant;
using fuzz::Require;
using namespace workbench;

namespace {

constexpr std::size_t MostSteps = 64;
constexpr long long Second = 10000000;

std::vector<std::string> Levels(std::string const& topic) {
    std::vector<std::string> levels(1);
    for (char const c : topic) {
        Require(c != '+' && c != '#' && c != '\0', "a topic has no wildcard");
        if (c == '/') {
            levels.emplace_back();
        } else {
            levels.back() += c;
        }
    }
    return levels;
}

std::string Octets(SparkplugValue value) {
    SparkplugMetric metric;
    metric.value = std::move(value);
    SparkplugPayload payload;
    payload.metrics = {std::move(metric)};
    return EncodePayload(payload);
}

// What a host knows of the node, by the messages that it gets.
class Host : public MessageSink {
public:
    struct Tag {
        SparkplugType type;
        std::string octets;  // of the value
    };
    using Device = std::map<std::uint64_t, Tag>;

    bool HasRoom() const override { return room > 0; }
    void Send(Message message) override {
        room -= room > 0 ? 1 : 0;
        std::vector<std::string> const levels = Levels(message.topic);
        auto const payload = DecodePayload(message.payload);
        Require(payload.has_value(), "a message is a payload");
        Require(levels.size() >= 4 && levels[0] == "spBv1.0" && levels[3] == "n", "a topic is of the node");
        Require(!message.isRetained, "nothing is retained");
        Follow(levels[2], levels.size() == 5 ? levels[4] : std::string(), *payload);
    }

    void Connect(Message const& will) {
        number = NumberOf(*DecodePayload(will.payload));
        isNodeBorn = false;
        devices.clear();
    }

    std::size_t room = 0;
    std::map<std::string, Device> devices;

private:
    static std::uint64_t NumberOf(SparkplugPayload const& payload) {
        Require(payload.metrics.at(0).name == "bdSeq", "the number of the will comes first");
        return std::get<std::uint64_t>(payload.metrics[0].value);
    }

    void Follow(std::string const& type, std::string const& device, SparkplugPayload const& payload) {
        if (type == "NDEATH") {
            return Require(NumberOf(payload) == number && !payload.seq, "a death has the number of the will");
        }
        if (type == "NBIRTH") {
            Require(NumberOf(payload) == number && payload.seq == 0U, "a birth has the number of the will");
            devices.clear();
            isNodeBorn = true;
            next = 1;
            return;
        }
        Require(isNodeBorn && payload.seq == next, "no message is left out");
        next = (next + 1) % 256;
        if (type == "DBIRTH") {
            Require(devices.count(device) == 0, "a device is born once");
            for (SparkplugMetric const& metric : payload.metrics) {
                devices[device][*metric.alias] = {metric.type, Octets(metric.value)};
            }
        } else if (type == "DDATA") {
            Update(device, payload);
        } else if (type == "DDEATH") {
            Require(devices.erase(device) == 1, "what dies was born");
        } else {
            Require(type == "NDATA" && payload.metrics.at(0).name == SparkplugPublisher::AnswerName,
                    "data of the node are answers");
        }
    }

    void Update(std::string const& device, SparkplugPayload const& payload) {
        Require(devices.count(device) == 1 && !payload.metrics.empty(), "data are of a device");
        for (SparkplugMetric const& metric : payload.metrics) {
            auto const found = devices[device].find(metric.alias.value_or(0));
            Require(found != devices[device].end() && found->second.type == metric.type,
                    "alias and type are those of the birth");
            found->second.octets = Octets(metric.value);
        }
    }

    std::uint64_t number = 0;
    std::uint64_t next = 0;
    bool isNodeBorn = false;
};

class Run {
public:
    Run(dorvel::Runtime& anyRuntime, PlayedPlant& runPlant) : runtime(anyRuntime), plant(runPlant) {}

    void Step(Input& input) {
        unsigned const step = input.Octet();
        BlockSnapshot& block = plant.snapshots[step / 8 % 2];
        switch (step % 8) {
            case 0:
                return Change(input, block.variables[step / 16 % 2]);
            case 1:
                return EndCycle(input.Octet(), block);
            case 2:
                now += static_cast<long long>(input.Octet()) * Second / 16;
                return;
            case 3:
                host.room = input.Octet();
                return publisher.Publish(plant.Shared(), now, host);
            case 4:
                return Connect(input.Octet());
            case 5:
                now -= static_cast<long long>(input.Octet()) * Second;
                return;
            case 6:
                return Receive(names.NodeTopic("NCMD"), input);
            default:
                return Receive(names.DeviceTopic("DCMD", step / 8 % 2), input);
        }
    }

    void Finish() {
        now += 3600 * Second;
        if (!isConnected) {
            Connect(255);
        }
        host.room = 2000;
        publisher.Publish(plant.Shared(), now, host);
        for (std::size_t i = 0; i < plant.snapshots.size(); ++i) {
            BlockSnapshot const& cycle = plant.snapshots[i];
            std::string const topic = names.DeviceTopic("DBIRTH", i);
            auto const device = host.devices.find(topic.substr(topic.rfind('/') + 1));
            bool const isOnline = cycle.cycle > 0 && !cycle.isStandby && !IsFault(cycle);
            Require((device != host.devices.end()) == isOnline, "the host has the devices that are online");
            for (std::size_t j = 0; isOnline && j < cycle.variables.size(); ++j) {
                VariableSnapshot const& variable = cycle.variables[j];
                auto const value = WireValue(variable.state.Value, ValueType(*variable.config));
                Require(device->second.at(names.Alias({i, j})).octets == Octets(value),
                        "the host has the newest values");
            }
        }
        publisher.End(now, host);
    }

private:
    static PublishSettings Settings() {
        PublishSettings settings;
        settings.node = "n";
        settings.group = "g";
        settings.interval = 2 * Second;
        settings.takesCommands = true;
        return settings;
    }

    unsigned long long Count(std::string const& figure) const { return fuzz::CountOf(status, figure); }

    static void Change(Input& input, VariableSnapshot& variable) {
        variable.state.Status = input.Below(4) << 30;
        fuzz::ChangeValue(input, variable);
    }

    void EndCycle(unsigned bits, BlockSnapshot& block) const {
        ++block.cycle;
        block.time = now;
        block.isReported = (bits & 1) == 0;
        block.fault = (bits & 2) != 0;
        block.isStandby = (bits & 4) != 0;
        block.variables.front().suspect = (bits & 8) != 0 ? "device: unknown-object" : "";
    }

    void Connect(std::size_t room) {
        publisher.Disconnected();
        host.Connect(publisher.Will(now));
        host.room = room;
        publisher.Connected(now, host);
        isConnected = true;
    }

    // The octets of the input, or a command that asks for a birth or sets a variable.
    static std::string Payload(Input& input) {
        unsigned const kind = input.Below(4);
        if (kind == 0) {
            return input.Text(input.Octet());
        }
        SparkplugMetric metric;
        metric.name = kind == 1 ? "Node Control/Rebirth" : "";
        metric.alias = kind == 1 ? std::nullopt : std::optional<std::uint64_t>(input.Octet());
        metric.value = kind == 3 ? SparkplugValue(input.Text(input.Octet())) : SparkplugValue(kind == 1);
        SparkplugPayload payload;
        payload.metrics = {std::move(metric)};
        return EncodePayload(payload);
    }

    void Receive(std::string const& topic, Input& input) {
        bool const isRetained = input.Below(8) == 0;
        unsigned long long const accepted = Count("commands") - Count("commands refused");
        publisher.Receive({topic, Payload(input), isRetained}, now, host);
        Require(!isRetained || Count("commands") - Count("commands refused") == accepted,
                "nothing that is retained is accepted");
    }

    dorvel::Runtime& runtime;
    PlayedPlant& plant;
    std::vector<TaskConfig> const tasks;
    LogBuffer log{nullptr};
    OutletStatus status{"mqtt", log};
    ValueSetter setter{runtime, log};
    PlantMemory memory{plant.blocks, plant.Shared(), false};
    SparkplugNames const names{"g", "n", plant.blocks};
    SparkplugPublisher publisher{
        Settings(), {"p.lua", "1", plant.blocks, tasks, memory, setter, log, {}}, status};
    Host host;
    bool isConnected = false;
    long long now = 133485408000000000;
};

bool HasTwins(std::deque<BlockConfig> const& blocks) {
    return blocks[0].name == blocks[1].name ||
           std::any_of(blocks.begin(), blocks.end(), [](BlockConfig const& block) {
               return block.variables[0].name == block.variables[1].name;
           });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::QuietWorld::Enter();
    static std::unique_ptr<lua_State, void (*)(lua_State*)> const lua(luaL_newstate(), lua_close);
    static dorvel::Runtime runtime(lua.get());
    Input input(data, size);
    PlayedPlant plant(input);
    try {
        Run run(runtime, plant);
        for (std::size_t step = 0; step < MostSteps && !input.IsEmpty(); ++step) {
            run.Step(input);
        }
        run.Finish();
    } catch (ProjectError const&) {
        Require(HasTwins(plant.blocks), "different names are told apart");
    }
    return 0;
}
