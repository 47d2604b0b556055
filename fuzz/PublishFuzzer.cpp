// What is published as JSON: names become topics, values payloads, and messages from the broker commands. For
// every input: a broker accepts each topic, and a payload is a JSON object; the broker has the newest values
// as soon as there is room; a command is counted once, none that is retained is accepted, and of a variable
// at most one a second. No exception leaves it.
//
// The input has the names of two blocks and of their two variables each, and then steps: an octet with what
// is done (the lowest three bits) and to which variable (the next two), and what it needs. A text has its
// length in one octet.
#include <rapidjson/document.h>
#include <lua.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Input.h"
#include "JsonPublisher.h"
#include "PlayedPlant.h"
#include "ProjectError.h"
#include "QuietWorld.h"
#include "Require.h"
#include "ShownValue.h"
#include "TopicLevel.h"
#include "Utf8.h"
#include "dorvel/Runtime.h"

using fuzz::Input;
using fuzz::PlayedPlant;
using fuzz::Require;
using namespace workbench;

namespace {

constexpr std::size_t MostSteps = 64;
constexpr long long Second = 10000000;
constexpr char Prefix[] = "p/q";

bool IsCharacterOfTopics(long code) {
    bool const isControl = code < 0x20 || (code >= 0x7F && code <= 0x9F);
    bool const isNoCharacter = (code >= 0xFDD0 && code <= 0xFDEF) || code % 0x10000 >= 0xFFFE;
    return !isControl && !isNoCharacter && code != '+' && code != '#';
}

// Accepts what a broker accepts, and keeps what is retained.
class Broker : public MessageSink {
public:
    bool HasRoom() const override { return room > 0; }
    void Send(Message message) override {
        room -= room > 0 ? 1 : 0;
        Require(message.topic.compare(0, sizeof Prefix, "p/q/") == 0, "a topic begins with the prefix");
        Require(message.topic.size() <= LongestPrefix + 2 * LongestLevel + 20, "a topic is short");
        for (std::size_t i = 0; i < message.topic.size();) {
            tools::Character const character = tools::CharacterAt(message.topic, i);
            Require(IsCharacterOfTopics(character.codePoint), "brokers accept the topic");
            i += character.length;
        }
        rapidjson::Document payload;
        payload.Parse<rapidjson::kParseValidateEncodingFlag>(message.payload.data(), message.payload.size());
        Require(payload.IsObject(), "a payload is a JSON object");
        if (message.isRetained) {
            retained[message.topic] = message.payload.substr(0, message.payload.find(R"("time":)"));
        }
    }

    std::size_t room = 0;
    std::map<std::string, std::string> retained;  // the payloads without their time and what follows
};

class Run {
public:
    Run(dorvel::Runtime& anyRuntime, PlayedPlant& runPlant)
        : runtime(anyRuntime), plant(runPlant), publisher(Settings(), Parts(), status) {}

    void Step(Input& input) {
        unsigned const step = input.Octet();
        std::size_t const block = step / 8 % 2;
        std::size_t const variable = step / 16 % 2;
        switch (step % 8) {
            case 0:
                return fuzz::ChangeValue(input, plant.snapshots[block].variables[variable]);
            case 1:
                return ChangeState(input, plant.snapshots[block]);
            case 2:
                now += static_cast<long long>(input.Octet()) * Second / 16;
                return;
            case 3:
                broker.room = input.Octet();
                return publisher.Publish(plant.Shared(), now, broker);
            case 4:
                return Connect(input);
            case 5:
                return Receive(input.Text(input.Octet()), input, 4);
            case 6:
                now -= static_cast<long long>(input.Octet()) * Second;
                return;
            default:
                return Receive(topics.Variable({block, variable}) + "/set", input, block * 2 + variable);
        }
    }

    // With room enough the broker has what a new connection would send.
    void Finish() {
        now += 3600 * Second;
        broker.room = 1000;
        if (!isConnected) {
            publisher.Connected(now, broker);
        }
        publisher.Publish(plant.Shared(), now, broker);
        Broker fresh;
        JsonPublisher other(Settings(), Parts(), status);
        fresh.room = 1000;
        other.Connected(now, fresh);
        other.Publish(plant.Shared(), now, fresh);
        for (auto const& [topic, payload] : fresh.retained) {
            Require(broker.retained.count(topic) == 1 && broker.retained[topic] == payload,
                    "the broker has the newest values");
        }
        publisher.End(now, broker);
    }

private:
    static PublishSettings Settings() {
        PublishSettings settings;
        settings.prefix = Prefix;
        settings.interval = 2 * Second;
        settings.takesCommands = true;
        return settings;
    }
    OutletParts Parts() { return {"p.lua", "1", plant.blocks, tasks, memory, setter, log, {}}; }
    unsigned long long Count(std::string const& figure) const { return fuzz::CountOf(status, figure); }

    void ChangeState(Input& input, BlockSnapshot& block) {
        unsigned const bits = input.Octet();
        ++block.cycle;
        block.time = now;
        block.isReported = true;
        block.fault = (bits & 1) != 0;
        block.isStandby = (bits & 2) != 0;
        block.errorText = (bits & 4) != 0 ? input.Text(8) : std::string();
        block.variables.front().suspect = (bits & 8) != 0 ? input.Text(8) : std::string();
        block.variables.back().state.Status = bits >> 4 << 28;
    }

    void Connect(Input& input) {
        publisher.Disconnected();
        broker.retained.clear();
        broker.room = input.Octet();
        publisher.Connected(now, broker);
        isConnected = true;
    }

    void Receive(std::string const& topic, Input& input, std::size_t variable) {
        unsigned long long const commands = Count("commands");
        unsigned long long const refused = Count("commands refused");
        bool const isRetained = input.Below(8) == 0;
        std::size_t const octets = input.Octet();
        std::size_t const length = octets * (input.Below(8) == 0 ? 300 : 1);
        std::string payload = input.Text(length);
        payload.resize(std::max(payload.size(), length > 255 ? length : 0), '[');
        publisher.Receive({topic, payload, isRetained}, now, broker);
        Require(Count("commands") == commands + 1, "a command is counted once");
        if (Count("commands refused") == refused) {
            Require(!isRetained && variable < latest.size(), "what is accepted is for a variable, and new");
            Require(now < latest[variable] || now - latest[variable] >= Second, "one a second is accepted");
            latest[variable] = now;
        }
    }

    dorvel::Runtime& runtime;
    std::vector<TaskConfig> const tasks;
    PlayedPlant& plant;
    LogBuffer log{nullptr};
    OutletStatus status{"mqtt", log};
    ValueSetter setter{runtime, log};
    PlantMemory memory{plant.blocks, plant.Shared(), false};
    PlantTopics const topics{Prefix, plant.blocks};
    Broker broker;
    JsonPublisher publisher;
    bool isConnected = false;
    long long now = 133485408000000000;
    std::array<long long, PlayedPlant::BlockCount * PlayedPlant::VariableCount> latest{};
};

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
        bool const hasTwins = plant.blocks[0].name == plant.blocks[1].name ||
                              plant.blocks[0].variables[0].name == plant.blocks[0].variables[1].name ||
                              plant.blocks[1].variables[0].name == plant.blocks[1].variables[1].name;
        Require(hasTwins, "different names have different topics");
    }
    return 0;
}
