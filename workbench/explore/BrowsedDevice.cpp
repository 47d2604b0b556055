#include "BrowsedDevice.h"

#include <algorithm>
#include <utility>

#include "Discovery.h"
#include "ObjectNames.h"
#include "PropertyChoice.h"
#include "Refusal.h"

namespace workbench {

namespace {

using standard::DatumKind;
using standard::Failure;
using standard::ObjectId;
using standard::PropertyId;
using standard::PropertyReference;
using standard::ReadResult;

constexpr std::uint16_t DeviceType = 8;
// Objects whose Property_List is requested in vain until the device is taken to have none.
constexpr std::size_t MostWithoutPropertyList = 3;
// Objects that a note lists.
constexpr std::size_t MostNamed = 5;

PropertyReference Of(ObjectId const& object, PropertyId property) {
    return {object, static_cast<std::uint32_t>(property), std::nullopt};
}

bool IsError(ReadResult const& result, standard::ErrorCode code) {
    return result.failure && result.failure->kind == Failure::Kind::Error &&
           result.failure->code == static_cast<std::uint32_t>(code);
}

// "analog-input 1, analog-input 2 and 7 more"
std::string Named(std::vector<ObjectId> const& objects) {
    std::string text;
    for (std::size_t i = 0; i < std::min(objects.size(), MostNamed); ++i) {
        text += (i == 0 ? "" : ", ") + standard::ObjectText(objects[i]);
    }
    return objects.size() <= MostNamed
               ? text
               : text + " and " + std::to_string(objects.size() - MostNamed) + " more";
}

bool AnyIsLost(ObjectRecord const& object) {
    return std::any_of(object.properties.begin(), object.properties.end(), [](auto const& entry) {
        auto const& failure = entry.second.failure;
        return failure &&
               (failure->kind == Failure::Kind::Silent || failure->kind == Failure::Kind::Malformed ||
                failure->kind == Failure::Kind::Incomplete);
    });
}

// The device states for each property that it has no such object.
bool IsUnknown(ObjectRecord const& object) {
    return !object.properties.empty() &&
           std::all_of(object.properties.begin(), object.properties.end(), [](auto const& entry) {
               return IsError(entry.second, standard::ErrorCode::UnknownObject);
           });
}

}  // namespace

BrowsedDevice::BrowsedDevice(standard::Link& network, standard::Peer const& peer,
                             BrowseSettings const& browseSettings)
    : settings(browseSettings), link(network), reader(network, peer, browseSettings) {
    record.peer = peer;
    record.device.id = {DeviceType, ObjectId::LastInstance};
}

bool BrowsedDevice::ReadIdentifier(std::optional<std::uint32_t> knownInstance) {
    record.device.id.instance = knownInstance.value_or(ObjectId::LastInstance);
    ReadResult result = reader.ReadOne(Of(record.device.id, PropertyId::Object_Identifier));
    if (IsError(result, standard::ErrorCode::UnknownObject)) {
        record.device.id.instance = knownInstance ? ObjectId::LastInstance : AskInstance();
        result = reader.ReadOne(Of(record.device.id, PropertyId::Object_Identifier));
    }
    bool const isKnown = result.values.size() == 1 && result.values[0].kind == DatumKind::ObjectIdentifier &&
                         result.values[0].Object().type == DeviceType;
    if (isKnown) {
        record.device.id = result.values[0].Object();
        Take({Of(record.device.id, PropertyId::Object_Identifier), std::move(result.values), std::nullopt});
    } else if (!reader.IsOver()) {
        Incomplete("its Device object cannot be read: " +
                   (result.failure ? FailureText(*result.failure) : "it has no identifier"));
    }
    return isKnown;
}

// Devices before protocol revision 4 do not know the instance by which any Device object is read.
std::uint32_t BrowsedDevice::AskInstance() {
    standard::DiscoverySettings question;
    question.way = standard::DiscoverySettings::Way::Unicast;
    question.target = record.peer->endpoint;
    question.asksRouters = false;
    question.timeout = settings.client.timeout;
    question.rounds = 1;
    if (record.peer->remote) {
        question.networks = {record.peer->remote->network};
    }
    for (standard::FoundDevice const& found : standard::Discovery(link, question).Run().devices) {
        if (found.peer == *record.peer) {
            return found.Instance();
        }
    }
    return ObjectId::LastInstance;
}

void BrowsedDevice::ReadDevice() {
    References references;
    if (settings.detail == Detail::Every) {
        reader.Read({Of(record.device.id, PropertyId::Property_List)},
                    [this](ReadResult result) { Take(std::move(result)); });
    }
    for (std::uint32_t const property : PropertiesOf(record.device)) {
        references.push_back({record.device.id, property, std::nullopt});
    }
    reader.Read(references, [this](ReadResult result) { Take(std::move(result)); });
}

void BrowsedDevice::ReadObjectList() {
    standard::ObjectListResult const list =
        reader.ReadObjectList(record.device.id, [this](std::size_t done, std::size_t length) {
            if (settings.progress) {
                settings.progress({done, length, true});
            }
        });
    for (ObjectId const& object : list.objects) {
        if (!(object == record.device.id)) {
            record.objects.push_back({object, {}, {}});
        }
    }
    if (!list.isComplete && !reader.IsOver()) {
        Incomplete("its object list is not complete: " + list.reason);
    }
    NoteCount(list.repeated, "elements of its object list name an object again");
    NoteCount(list.withoutObject, "elements of its object list are not objects");
}

void BrowsedDevice::NoteCount(std::size_t count, char const* what) {
    if (count > 0) {
        record.notes.push_back(std::to_string(count) + " " + what);
    }
}

void BrowsedDevice::ReadObjects() {
    if (settings.detail == Detail::Every) {
        ReadPropertyLists();
    }
    References const references = ReferencesOf(record.objects);
    std::size_t at = 0;
    reader.Read(references, [&](ReadResult result) {
        while (!(record.objects[at].id == result.reference.object)) {
            ++at;
        }
        record.objects[at].properties[result.reference.property] = std::move(result);
        ShowProgress(at);
    });
    NoteMissing();
}

// The first ones alone, since many devices have none.
void BrowsedDevice::ReadPropertyLists() {
    std::size_t const first = std::min(record.objects.size(), MostWithoutPropertyList);
    References references;
    for (ObjectRecord const& object : record.objects) {
        references.push_back(Of(object.id, PropertyId::Property_List));
    }
    auto const rest = references.begin() + static_cast<std::ptrdiff_t>(first);
    std::size_t without = 0;
    std::size_t at = 0;
    auto const take = [&](ReadResult result) {
        without += IsError(result, standard::ErrorCode::UnknownProperty) ? 1 : 0;
        record.objects[at++].properties[result.reference.property] = std::move(result);
    };
    reader.Read({references.begin(), rest}, take);
    if (without < first) {
        reader.Read({rest, references.end()}, take);
    }
}

std::vector<std::uint32_t> BrowsedDevice::PropertiesOf(ObjectRecord const& object) const {
    std::vector<standard::Datum> const* const list = object.Values(PropertyId::Property_List);
    return list && !list->empty() ? PropertiesOfList(*list)
                                  : PropertiesOfType(object.id.type, settings.detail);
}

BrowsedDevice::References BrowsedDevice::ReferencesOf(std::vector<ObjectRecord> const& objects) const {
    References references;
    for (ObjectRecord const& object : objects) {
        for (std::uint32_t const property : PropertiesOf(object)) {
            references.push_back({object.id, property, std::nullopt});
        }
    }
    return references;
}

void BrowsedDevice::NoteMissing() {
    std::vector<ObjectId> missing;
    std::vector<ObjectId> unanswered;
    for (ObjectRecord const& object : record.objects) {
        if (IsUnknown(object)) {
            missing.push_back(object.id);
        } else if (AnyIsLost(object)) {
            unanswered.push_back(object.id);
        }
    }
    if (!missing.empty()) {
        record.notes.push_back("it lists objects that it does not have: " + Named(missing));
    }
    if (!unanswered.empty() && !reader.IsOver()) {
        Incomplete("properties without a readable answer in " + Named(unanswered));
    }
}

void BrowsedDevice::CompareRevision() {
    auto const before = NumberOf(record.device, PropertyId::Database_Revision);
    if (!before || reader.IsOver()) {
        return;
    }
    ReadResult const after = reader.ReadOne(Of(record.device.id, PropertyId::Database_Revision));
    bool const isKnown = after.values.size() == 1 && after.values[0].kind == DatumKind::Unsigned;
    if (isKnown && after.values[0].number != *before) {
        Incomplete("its objects were changed while they were read; read it again");
    }
}

void BrowsedDevice::ReadObject(ObjectId const& object) {
    record.objects.push_back({object, {}, {}});
    ReadObjects();
    ObjectRecord& read = record.objects.back();
    if (IsUnknown(read)) {
        read.properties.clear();
        record.notes = {"it has no " + standard::ObjectText(object)};
        record.isComplete = false;
    }
}

void BrowsedDevice::Take(ReadResult result) {
    record.device.properties[result.reference.property] = std::move(result);
}

void BrowsedDevice::Incomplete(std::string note) {
    record.isComplete = false;
    record.notes.push_back(std::move(note));
}

void BrowsedDevice::ShowProgress(std::size_t objectsRead) {
    if (settings.progress) {
        settings.progress({objectsRead, record.objects.size()});
    }
}

DeviceRecord BrowsedDevice::TakeRecord() {
    if (reader.IsOver()) {
        bool const isEmpty = record.device.properties.empty() && record.objects.empty();
        Incomplete((isEmpty ? "" : "not everything was read: ") + reader.End());
    }
    return std::move(record);
}

}  // namespace workbench
