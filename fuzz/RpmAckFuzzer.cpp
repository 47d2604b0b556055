// An answer to a read, parsed and converted to the records that the runtime gets.
#include <cstddef>
#include <cstdint>
#include <set>
#include <typeinfo>

#include "AbortResponseException.h"
#include "CodeMaps.h"
#include "ErrorResponseException.h"
#include "Exceptions.h"
#include "ParseApdu.h"
#include "QuietWorld.h"
#include "RejectResponseException.h"
#include "Require.h"
#include "SupportInformation.h"
#include "TBACnet.h"

using fuzz::Require;
using namespace dorvel::BACnet;

namespace {

using ObjectTags = std::vector<tagReadData*>;

constexpr unsigned SensorFailure = 0x808C0000;
// Objects of each type. Their variables have different declared types.
constexpr int ObjectsPerType = 4;

OpcUa_BuiltInTypeHlp const DeclaredTypes[] = {
    {OpcUaType_Double, OpcUaType_Null},     {OpcUaType_DataValue, OpcUaType_Float},
    {OpcUaType_String, OpcUaType_Null},     {OpcUaType_DataValue, OpcUaType_Boolean},
    {OpcUaType_Int32, OpcUaType_Null},      {OpcUaType_DataValue, OpcUaType_String},
    {OpcUaType_UInt64, OpcUaType_Null},     {OpcUaType_DataValue, OpcUaType_DateTime},
    {OpcUaType_Boolean, OpcUaType_Null},    {OpcUaType_DataValue, OpcUaType_Byte},
    {OpcUaType_DateTime, OpcUaType_Null},   {OpcUaType_DataValue, OpcUaType_Int16},
    {OpcUaType_ByteString, OpcUaType_Null}, {OpcUaType_DataValue, OpcUaType_Double},
    {OpcUaType_SByte, OpcUaType_Null},      {OpcUaType_DataValue, OpcUaType_UInt32},
};

// A client with a variable for every property of every object that a project can name.
class Client {
public:
    Client() {
        fuzz::QuietWorld::Enter();
        NLInitSocket(&socket);
        auto* const peer = new sockaddr_in();
        NLMakeAddress(peer, IPAddressFromString("127.0.0.1"), 47808);
        device = std::make_unique<TBACnet>(socket, peer, 1, "", "192.168.10.7:47808", 250, 1, 1, 0, 8);
        InitObjectTypesMap();
        for (auto const& [typeCode, type] : objectTypesMap) {
            for (int number = 0; number < ObjectsPerType; ++number) {
                AddVariables(typeCode, number);
            }
        }
    }

    TBACnet& Device() { return *device; }

    // The tags of the object with the number modulo ObjectsPerType; none for a type that a project cannot
    // name.
    ObjectTags const& TagsOf(ObjectTypeEnum type, unsigned number) const {
        static ObjectTags const none;
        auto const objects = device->Tags().find(type);
        return objects == device->Tags().end()
                   ? none
                   : objects->second.at(static_cast<int>(number % ObjectsPerType));
    }

private:
    void AddVariables(int typeCode, int number) {
        for (auto const& [propertyCode, property] : propertyTypesMap) {
            auto* const descriptor = new DriverVarDsc();
            descriptor->ReadId = ++lastId;
            descriptor->ReadType = DeclaredTypes[(propertyCode + number * 5) % std::size(DeclaredTypes)];
            VelaBufferParameters record{descriptor, typeCode, propertyCode, number};
            device->InitTags({&record});
        }
    }

    NLSocket socket{};
    std::unique_ptr<TBACnet> device;
    long long lastId = 0;
};

tagReadData const& TagOf(WriteDataRec const& record, ObjectTags const& tags) {
    for (tagReadData const* const tag : tags) {
        if (tag->descriptor->ReadId == record.Id) {
            return *tag;
        }
    }
    Require(false, "a record is for one of the object's variables");
    std::abort();
}

// A value has the declared type, or is null if it cannot be converted or is not delivered.
void RequireDeclared(OpcUa_Variant const& value, _OpcUa_BuiltInType type) {
    Require(value.Datatype == type || value.Datatype == OpcUaType_Null, "a value has its declared type");
}

void RequireRecord(WriteDataRec const& record, tagReadData const& tag) {
    OpcUa_BuiltInTypeHlp const& declared = tag.descriptor->ReadType;
    RequireDeclared(record.Value, declared.Type);
    if (record.Value.GetType() == OpcUaType_DataValue) {
        OpcUa_DataValue const& value = *record.Value.Value.DataValue;
        RequireDeclared(value.Value, declared.ElementType);
        bool const failed = value.StatusCode == SensorFailure;
        Require(failed || value.StatusCode == OpcUa_Good, "the quality is Good or SensorFailure");
        Require(!failed || tag.address->propertyId == PropertyIdentifierEnum::Present_Value,
                "status flags change the quality of Present_Value alone");
    }
}

void RequireRecords(std::vector<WriteDataRec> const& records, PDU const& pdu, ObjectTags const& tags) {
    auto const& ack = dynamic_cast<ComplexAck const&>(pdu);
    auto const& results = dynamic_cast<ReadPropertyMultipleAck const&>(*ack.GetServiceAck());
    Require(records.size() <= results.GetValues().size(), "there are at most as many records as values");
    std::set<long long> ids;
    for (WriteDataRec const& record : records) {
        Require(ids.insert(record.Id).second, "no variable has two records");
        tagReadData const& tag = TagOf(record, tags);
        Require(results.GetValues().count(tag.address->propertyId) == 1,
                "a record is of a property that came");
        RequireRecord(record, tag);
    }
}

// The object that the client asked for: the one in the answer, or for every eighth instance another.
ObjectIdentifier Asked(PDU const& pdu) {
    auto const* const ack = dynamic_cast<ComplexAck const*>(&pdu);
    auto const* const results =
        ack ? dynamic_cast<ReadPropertyMultipleAck const*>(ack->GetServiceAck()) : nullptr;
    if (results && results->GetObjectId().GetInstanceNumber() % 8 != 7) {
        return results->GetObjectId();
    }
    return ObjectIdentifier(ObjectTypeEnum::Analog_Input, 1);
}

void Process(TBACnet& device, Client const& client, PDU& pdu, char expectedId) {
    ObjectIdentifier const object = Asked(pdu);
    ObjectTags const& tags = client.TagsOf(object.GetObjectType(), object.GetInstanceNumber());
    std::vector<WriteDataRec> records;
    int const processed = device.ProcessResponseM(object, expectedId, pdu, tags, records);
    if (processed != 0) {
        Require(processed == 1, "the result of processing is 0 or 1");
        RequireRecords(records, pdu, tags);
    } else {
        Require(records.empty(), "a response that is not processed gives no record");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static Client client;
    std::vector<char> const apdu(data, data + size);
    try {
        auto const pdu = ParseApdu(apdu);
        // The invoke id of the APDU is the expected one, except for 0xEE.
        char const expectedId = apdu.at(1) == '\xEE' ? '\0' : apdu.at(1);
        Process(client.Device(), client, *pdu, expectedId);
    } catch (ErrorResponseException const&) {
    } catch (RejectResponseException const&) {
    } catch (AbortResponseException const&) {
    } catch (SupportInformationException const&) {
    } catch (ParseException const&) {
    } catch (ArgumentOutOfRangeException const&) {
    } catch (std::bad_cast const&) {
    }
    return 0;
}
