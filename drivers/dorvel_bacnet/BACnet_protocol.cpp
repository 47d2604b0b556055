#include "BACnet_protocol.h"

#include <atomic>
#include <cstddef>
#include <string_view>

#include "BaseField.h"
#include "Network/AddressParser.h"
#include "ScadaObj.h"
#include "dorvel/Registration.h"
#include "dorvel/STTask.h"
#include "dorvelshare/RTime.h"
#include "dorvelshare/Trace.h"

namespace dorvel::BACnet {

namespace {

constexpr int TraceLevelError = 0x20;

struct CodeProperty {
    std::string_view name;
    int VelaBufferParameters::*code;
};
constexpr CodeProperty CodeProperties[] = {{"ObjectType", &VelaBufferParameters::objectType},
                                           {"ObjectProperties", &VelaBufferParameters::objectProperties},
                                           {"ObjectNumber", &VelaBufferParameters::objectNumber}};

void ReadCode(std::string_view name, OpcUa_VariantHlp const& value, VelaBufferParameters& channel) {
    for (CodeProperty const& property : CodeProperties) {
        if (property.name == name) {
            value.GetInt(channel.*property.code);
        }
    }
}

std::vector<tagReadData*> TagsInOrder(TBACnet::TagTable const& table) {
    std::vector<tagReadData*> list;
    for (auto const& [type, objects] : table) {
        for (auto const& [number, tags] : objects) {
            list.insert(list.end(), tags.begin(), tags.end());
        }
    }
    return list;
}

// Replaces a DataValue by the value inside it.
void MakeBare(OpcUa_VariantHlp& value) {
    if (value.GetType() == OpcUaType_DataValue) {
        value.Normalize(nullptr, nullptr);
    }
}

// True, with a line in the log, if the runtime stops.
bool IsStopped() {
    bool const stopped = TBACnet::IsTerminated.load(std::memory_order_relaxed);
    if (stopped) {
        logMsgLn("Stop RT. Exit from driver");
    }
    return stopped;
}

}  // namespace

BACnetProtocol::BACnetProtocol() {
    NLInitSocket(&socket);
}

BACnetProtocol::~BACnetProtocol() {
    device.reset();  // before the socket, which it closes
}

std::string BACnetProtocol::getId() {
    static std::atomic<int> connectionCounter{0};
    return "DORVEL_Connect_" + std::to_string(connectionCounter++);
}

void BACnetProtocol::RegAsLuaType() {
    static std::atomic<bool> registered{false};
    if (registered.exchange(true)) {
        return;
    }
    if (RegisterExternalSTLib(_ShortName(), SCADA_API::ScadaObj<BACnetProtocol>::RegFBType) != 0) {
        OpcUa_Trace_Imp(TraceLevelError, __FILE__, __LINE__,
                        "BACnetProtocol: Already registred other type with name '%s'", _ShortName());
    }
}

// Every base of the class has a fixed distance from the object, so offsetof holds although the class does not
// have standard layout.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
#define FIELD(member)                                                           \
    new SCADA_API::BaseField<BACnetProtocol, decltype(BACnetProtocol::member)>( \
        #member, false, offsetof(BACnetProtocol, member))

void BACnetProtocol::AddFields(ScadaFields& fields) {
    fields.add(FIELD(FaultItemId));
    fields.add(FIELD(ErrorTextItemId));
    fields.add(FIELD(ExecuteItemId));
    fields.add(FIELD(ConnectItemId));
    fields.add(FIELD(WriteItemId));
    fields.add(FIELD(WriteCondition));
    fields.add(FIELD(ExecuteOnSlave));
    fields.add(FIELD(WriteOnSlave));
    fields.add(FIELD(Vars));
    fields.add(FIELD(Address));
    fields.add(FIELD(MAC));
    fields.add(FIELD(Timeout));
    fields.add(FIELD(CountRepeat));
    fields.add(FIELD(AddressNumber));
    fields.add(FIELD(NetworkNumber));
    fields.add(FIELD(Priority));
}

#undef FIELD
#pragma GCC diagnostic pop

void BACnetProtocol::AddChannel(ReadChannel const* read, WriteChannel const* write,
                                std::map<std::string, OpcUa_VariantHlp> const& properties) {
    auto descriptor = std::make_unique<DriverVarDsc>();
    auto channel = std::make_unique<VelaBufferParameters>();
    for (auto const& [name, value] : properties) {
        ReadCode(name, value, *channel);
    }
    BaseInitChannel(read, write, *descriptor);
    channels.reserve(Vars.size());
    channels.push_back(channel.get());
    channel.release()->descriptor = descriptor.release();
}

void BACnetProtocol::Inited() {
    taskParam = GetTaskSettings(FindSTTask(provider))->Number;
    ipPort = Address;
    auto const parts = Network::AddressParser::Split(ipPort, ':');
    if (parts.size() != 2) {
        logMsg("Incorrect IP address");
        return;
    }
    unsigned int const address = IPAddressFromString(parts[0].c_str());
    unsigned short const port = Network::AddressParser::ParsePort(parts[1]);
    auto peer = std::make_unique<sockaddr_in>();
    NLMakeAddress(peer.get(), address, port);
    NLInitSocket(&socket);
    NLMakeAddress(&socket.address, address, port);
    auto client = std::make_unique<TBACnet>(socket, peer.get(), taskParam, ipPort, MAC, Timeout, CountRepeat,
                                            AddressNumber, NetworkNumber, Priority);
    peer.release();
    client->InitTags(channels);
    device = std::move(client);
    for (VelaBufferParameters const* channel : channels) {
        delete channel;
    }
    channels.clear();
    channels.shrink_to_fit();
}

void BACnetProtocol::Execute() {
    if (!device || !device->IsCreated()) {
        logMsg("Error create device for poll\n");
        return;
    }
    device->ClearFault();
    std::vector<WriteDataRec> values;
    device->Read(values);
    if (IsStopped()) {
        return;
    }
    if (device->HasFault()) {
        ReportLostConnection();
    } else {
        ReportValues(values);
        WriteDevice();
    }
}

void BACnetProtocol::ReportValues(std::vector<WriteDataRec> const& values) {
    provider->WriteValues(values);
    UpdateFaultState(false, "");
}

// Variables of another type than DataValue get no record and keep value and quality.
void BACnetProtocol::ReportLostConnection() {
    std::vector<WriteDataRec> values;
    for (tagReadData const* tag : TagsInOrder(device->Tags())) {
        if (tag->descriptor->ReadType.Type == OpcUaType_DataValue) {
            values.push_back(OldValueAsBad(*tag->descriptor));
        }
    }
    provider->WriteValues(values);
    UpdateFaultState(true, "No connection");
}

WriteDataRec BACnetProtocol::OldValueAsBad(DriverVarDsc const& descriptor) const {
    OpcUa_VariantHlp value;
    provider->ReadValue(descriptor.ReadId, 0, descriptor.ReadField, descriptor.ReadType, value,
                        GetValueFlags::None);
    MakeBare(value);
    WriteDataRec record;
    record.Id = descriptor.ReadId;
    record.Field = descriptor.ReadField;
    record.Value.SetDataValue(value, getRDateTime(), OpcUa_Bad);
    return record;
}

void BACnetProtocol::WriteDevice() {
    if (isWrite() == 0) {
        return;
    }
    for (tagReadData* tag : TagsInOrder(device->Tags())) {
        DriverVarDsc& descriptor = *tag->descriptor;
        if (descriptor.IsWrite == 0) {
            continue;
        }
        OpcUa_VariantHlp value;
        provider->ReadValue(descriptor.WriteId, 0, descriptor.WriteField, descriptor.WriteType, value,
                            GetValueFlags::None);
        if (IsNeedWriteValue(value, descriptor) == 0) {
            continue;
        }
        MakeBare(value);
        if (IsStopped()) {
            return;
        }
        device->Write(tag, value);
    }
}

}  // namespace dorvel::BACnet
