#include "Identification.h"

#include "BlockAddress.h"
#include "DatumText.h"
#include "DeviceAnswer.h"
#include "Printable.h"
#include "PropertyId.h"

namespace workbench {

namespace {

using standard::PropertyId;

// Bit of BACnetServicesSupported (clause 21).
constexpr std::size_t ReadPropertyMultipleBit = 14;

struct TextProperty {
    PropertyId property;
    std::string DeviceIdentity::*text;
};

constexpr TextProperty Texts[] = {{PropertyId::Object_Name, &DeviceIdentity::name},
                                  {PropertyId::Vendor_Name, &DeviceIdentity::vendor},
                                  {PropertyId::Vendor_Identifier, &DeviceIdentity::vendorId},
                                  {PropertyId::Model_Name, &DeviceIdentity::model},
                                  {PropertyId::Firmware_Revision, &DeviceIdentity::firmware},
                                  {PropertyId::Application_Software_Version, &DeviceIdentity::software},
                                  {PropertyId::Protocol_Revision, &DeviceIdentity::protocolRevision}};

std::vector<standard::PropertyReference> References() {
    std::vector<standard::PropertyReference> references;
    auto const add = [&references](PropertyId property) {
        references.push_back({DeviceSource::AnyDevice(), static_cast<std::uint32_t>(property), std::nullopt});
    };
    add(PropertyId::Object_Identifier);
    add(PropertyId::Protocol_Services_Supported);
    for (TextProperty const& row : Texts) {
        add(row.property);
    }
    return references;
}

void TakeServices(standard::ReadResult const& services, DeviceIdentity& identity) {
    bool const isKnown =
        services.values.size() == 1 && services.values[0].kind == standard::DatumKind::BitString;
    identity.lacksReadPropertyMultiple =
        isKnown && (services.values[0].text.size() <= ReadPropertyMultipleBit ||
                    services.values[0].text[ReadPropertyMultipleBit] == '0');
}

}  // namespace

DeviceIdentity Identify(DeviceSource& device) {
    DeviceIdentity identity;
    std::vector<DeviceAnswerTime> const answers = device.Read(References());
    std::vector<standard::Datum> const& identifier = answers[0].result.values;
    identity.isKnown = identifier.size() == 1 && identifier[0].kind == standard::DatumKind::ObjectIdentifier;
    identity.instance = identity.isKnown ? identifier[0].Object().instance : 0;
    TakeServices(answers[1].result, identity);
    for (std::size_t i = 0; i < std::size(Texts); ++i) {
        identity.*Texts[i].text = WordsOf(answers[i + 2].result);
    }
    identity.answersFrom = identity.isKnown ? PeerText(device.AnsweredBy()) : std::string();
    return identity;
}

std::vector<BlockNote> NotesOf(DeviceSource const& device, DeviceIdentity const& identity) {
    std::vector<BlockNote> notes;
    for (std::string const& other : device.Others()) {
        notes.push_back(
            {true, "another station answers in place of " + PeerText(device.Device()) + ": " + other});
    }
    if (device.RouterReject()) {
        notes.push_back({true, "the router reports that it cannot reach the network (reason " +
                                   std::to_string(*device.RouterReject()) + ")"});
    }
    if (identity.lacksReadPropertyMultiple) {
        notes.push_back(
            {true, "the device does not execute ReadPropertyMultiple, by which the driver reads"});
    }
    if (device.RoundsGivenUp() > 0) {
        std::string const rounds = device.Rounds() > 1
                                       ? "in " + std::to_string(device.RoundsGivenUp()) + " of " +
                                             std::to_string(device.Rounds()) + " rounds "
                                       : std::string();
        notes.push_back({true, rounds + "requests in succession had no usable answer (" +
                                   FailureText(device.LastFailure()) + "); what was left was not requested"});
    }
    return notes;
}

void NoteSharedDevices(std::vector<BlockResult>& blocks) {
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            DeviceIdentity const& one = blocks[j].device;
            DeviceIdentity const& two = blocks[i].device;
            if (!one.isKnown || !two.isKnown || one.instance != two.instance) {
                continue;
            }
            std::string const other = "block " + tools::Quoted(blocks[j].block->name);
            blocks[i].notes.push_back(
                one.answersFrom == two.answersFrom
                    ? BlockNote{false, "reaches the same device as " + other}
                    : BlockNote{false, "device " + std::to_string(two.instance) + " answers here and to " +
                                           other + " at " + one.answersFrom +
                                           ": one device reached in two ways, or two with "
                                           "the same instance"});
            break;
        }
    }
}

}  // namespace workbench
