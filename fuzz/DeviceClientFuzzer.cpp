// The device client on a network whose deliveries come from the input: reads of single objects, whole polls
// and writes, up to eight in one execution. Then comes one good dialogue, which must deliver everything.
//
// Bits of the first octet: 0 behind a router, 1 with the trace, 2 and 3 the attempts less one, 4 and 5 which
// objects the block has. The second octet is the invoke id before the first request. Then follow operations;
// the deliveries of the network (PlayedNetwork.h) are between them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "CodeMaps.h"
#include "Input.h"
#include "ModelDevice.h"
#include "PlayedNetwork.h"
#include "Require.h"
#include "TBACnet.h"
#include "dorvelshare/Trace.h"

using namespace dorvel::BACnet;
using fuzz::Input;
using fuzz::ModelCount;
using fuzz::ModelVariables;
using fuzz::Require;

namespace {

using Values = std::vector<WriteDataRec>;

constexpr unsigned SensorFailure = 0x808C0000;
constexpr int MostOperations = 8;

// How often a read, also a segmented one, or a write may wait without receiving.
constexpr int EmptyWaitsPerExchange = 2;

// The objects of a block: few, so that a poll stays short.
constexpr std::size_t MostObjects = 4;

// A client with some of the model's variables. The id of a variable is its position in the model, from 1.
class Session {
public:
    explicit Session(Input& played)
        : input(played),
          options(played.Octet()),
          attempts(1 + static_cast<int>(options >> 2 & 3)),
          firstObject(std::min((options >> 4 & 3) * MostObjects, ObjectCount() - MostObjects)),
          first(fuzz::ModelObjects()[firstObject]),
          end(fuzz::ModelObjects()[firstObject + MostObjects]),
          network(played, IsRouted()) {
        WriteInvokeId = static_cast<unsigned char>(input.Octet());
        dorvel::EnableUserTrace((options & 2) != 0);
        NLInitSocket(&socket);
        auto* const peer = new sockaddr_in();
        NLMakeAddress(peer, 0x7F000001, 47808);
        client = std::make_unique<TBACnet>(socket, peer, 7, "127.0.0.1:47808", "192.168.10.7:47808", 1000,
                                           attempts, 1, IsRouted() ? 5 : 0, 8);
        Require(client->IsCreated(), "the client is created");
        client->Settings().ReadInvokeId = static_cast<char>(WriteInvokeId.load());
        AddVariables();
    }

    void Play() {
        for (int i = 0; i < MostOperations && !input.IsEmpty(); ++i) {
            Operate(input.Octet());
        }
        Recover();
        Require(network.OpenSockets() <= 1, "there is one socket");
        client.reset();
        Require(network.OpenSockets() == 0, "the socket is closed");
    }

private:
    static std::size_t ObjectCount() { return fuzz::ModelObjects().size() - 1; }
    bool IsRouted() const { return (options & 1) != 0; }

    void AddVariables() {
        std::vector<VelaBufferParameters> records(ModelCount);
        std::vector<VelaBufferParameters*> list;
        for (std::size_t i = first; i < end; ++i) {
            auto* const descriptor = new DriverVarDsc();
            descriptor->ReadId = static_cast<long long>(i) + 1;
            descriptor->ReadType = ModelVariables[i].declared;
            records[i] = {descriptor, ModelVariables[i].typeCode, ModelVariables[i].propertyCode,
                          static_cast<int>(fuzz::ModelInstance)};
            list.push_back(&records[i]);
        }
        client->InitTags(list);
    }

    // Bits 6 and 7 choose the operation, the others its object or variable.
    void Operate(unsigned operation) {
        unsigned const which = operation & 0x3F;
        int const before = network.EmptyWaits();
        int exchanges = 1;
        switch (operation >> 6) {
            case 0:
                exchanges = Poll();
                break;
            case 3:
                Write(first + which % (end - first), AnyValue());
                break;
            default:
                exchanges = ReadObject(firstObject + which % MostObjects);
        }
        Require(network.EmptyWaits() - before <= exchanges * EmptyWaitsPerExchange,
                "an exchange ends when nothing arrives");
    }

    int Poll() {
        Values values;
        client->ClearFault();
        client->Read(values);
        RequireKnown(values, first, end);
        return attempts * static_cast<int>(MostObjects);
    }

    int ReadObject(std::size_t object) {
        std::size_t const from = fuzz::ModelObjects()[object];
        auto const type = static_cast<ObjectTypeEnum>(ModelVariables[from].objectType);
        Values values;
        int const before = network.Sent();
        int const result = client->ProcessTagM(ObjectIdentifier(type, fuzz::ModelInstance),
                                               client->Tags().at(type).at(fuzz::ModelInstance), values);
        Require(result == 0 || result == 1, "the result of a read is 0 or 1");
        Require(network.Sent() > before, "a read is sent");
        RequireKnown(values, from, fuzz::ModelObjects()[object + 1]);
        return attempts;
    }

    // Requires that the values belong to these variables and have their types and qualities, and that no
    // attempt delivers a variable twice.
    void RequireKnown(Values const& values, std::size_t from, std::size_t to) const {
        Require(values.size() <= (to - from) * static_cast<std::size_t>(attempts),
                "an attempt delivers each variable once");
        for (WriteDataRec const& record : values) {
            Require(record.Id > static_cast<long long>(from) && record.Id <= static_cast<long long>(to),
                    "a value belongs to a variable that was read");
            Require(record.Index == 0 && record.Field.empty(), "a value is whole");
            RequireType(record.Value, ModelVariables[record.Id - 1].declared);
        }
    }

    static void RequireType(OpcUa_VariantHlp const& value, OpcUa_BuiltInTypeHlp const& declared) {
        if (value.GetType() == OpcUaType_Null) {
            return;
        }
        Require(value.GetType() == declared.Type, "a value has the declared type");
        if (declared.Type == OpcUaType_DataValue) {
            OpcUa_DataValue const& data = *value.Value.DataValue;
            Require(data.StatusCode == OpcUa_Good || data.StatusCode == SensorFailure,
                    "the quality is Good or SensorFailure");
            Require(data.Value.Datatype == declared.ElementType || data.Value.Datatype == OpcUaType_Null,
                    "the value inside has the declared type");
            Require(data.SourceTimestamp >= fuzz::PlayedNetwork::Start, "the time is that of the delivery");
        }
    }

    OpcUa_VariantHlp AnyValue() {
        OpcUa_VariantHlp value;
        switch (input.Below(6)) {
            case 0:
                value.SetBool(input.Octet() != 0);
                break;
            case 1:
                value.SetInt64(static_cast<long long>(input.Number64()));
                break;
            case 2:
                value.SetDouble(static_cast<double>(static_cast<std::int64_t>(input.Number64())) / 65536);
                break;
            case 3: {
                std::string const text = input.Text(input.Octet());
                value.SetString(text.data(), static_cast<int>(text.size()));
                break;
            }
            case 4:
                value.SetTime(static_cast<long long>(input.Number64()));
                break;
            default:
                break;
        }
        return value;
    }

    void Write(std::size_t variable, OpcUa_VariantHlp value) {
        ModelVariable const& row = ModelVariables[variable];
        auto const& tags = client->Tags().at(static_cast<ObjectTypeEnum>(row.objectType)).at(1);
        int const before = network.Sent();
        client->Write(tags[variable - FirstOf(variable)], value);
        Require(network.Sent() - before <= 1, "a write is sent at most once");
    }

    static std::size_t FirstOf(std::size_t variable) {
        std::size_t index = variable;
        while (index > 0 && ModelVariables[index - 1].objectType == ModelVariables[index].objectType) {
            --index;
        }
        return index;
    }

    // One good dialogue: a poll that delivers every variable, and a write that the device accepts.
    void Recover() {
        network.BeHonest();
        Values values;
        client->ClearFault();
        client->Read(values);
        Require(!client->HasFault(), "a good poll has no fault");
        Require(values.size() == end - first, "a good poll delivers all variables");
        for (WriteDataRec& record : values) {
            RequireGood(record);
        }
        if (first == 0) {
            WriteWell();
        }
    }

    void WriteWell() {
        OpcUa_VariantHlp value;
        value.SetDouble(1.5);
        int const before = network.Sent();
        Write(0, value);
        Require(network.Sent() == before + 1, "the write is sent");
        Require(network.LastRequest().octets ==
                    test::operator+(Octets{0, 4, static_cast<char>(WriteInvokeId.load())},
                                    test::Hex("0F 0C 00 00 00 01 19 55 3E 44 3F C0 00 00 3F 49 08")),
                "the write has its octets");
    }

    static void RequireGood(WriteDataRec& record) {
        unsigned status = OpcUa_Good;
        record.Value.Normalize(&status, nullptr);
        Require(status == OpcUa_Good, "a good poll delivers good values");
        ModelVariable const& row = ModelVariables[record.Id - 1];
        std::string text;
        Require(record.Value.GetString(text) == OpcUa_Good, "a good poll delivers values");
        Require(text == row.text, ("a good poll delivers the device's values: " + text).c_str());
    }

    using ModelVariable = fuzz::ModelVariable;
    using Octets = test::Octets;

    Input& input;
    unsigned const options;
    int const attempts;
    std::size_t const firstObject;
    std::size_t const first;  // index of the first variable
    std::size_t const end;    // index after the last variable
    fuzz::PlayedNetwork network;
    NLSocket socket{};
    std::unique_ptr<TBACnet> client;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    dorvel::SetLogSink([](std::string_view) {});
    InitObjectTypesMap();
    static std::size_t const objectTypes = objectTypesMap.size();
    static std::size_t const properties = propertyTypesMap.size();
    Input input(data, size);
    Session(input).Play();
    Require(objectTypesMap.size() == objectTypes && propertyTypesMap.size() == properties,
            "the code maps do not grow");
    return 0;
}
