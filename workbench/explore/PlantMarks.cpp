#include <algorithm>
#include <cstddef>
#include <map>

#include "ObjectNames.h"
#include "PlantDiscovery.h"

namespace workbench {

namespace {

using standard::Datum;
using standard::DatumKind;
using standard::DiscoveryResult;
using standard::ObjectId;
using standard::PropertyId;

constexpr char const* Names[] = {"same-instance",  "answers-twice", "shared-address", "not-readable",
                                 "other-instance", "no-instance",   "contradicts"};

Datum NumberDatum(DatumKind kind, std::uint64_t number) {
    Datum datum;
    datum.kind = kind;
    datum.tag = kind == DatumKind::Unsigned ? 2 : kind == DatumKind::Enumerated ? 9 : 12;
    datum.number = number;
    return datum;
}

// What the I-Am states of its device.
ObjectRecord DeviceOf(standard::IAm const& iAm) {
    ObjectRecord device{iAm.device, {}, {}};
    device.Set(PropertyId::Object_Identifier,
               {NumberDatum(DatumKind::ObjectIdentifier, iAm.device.Encoded())});
    device.Set(PropertyId::Max_APDU_Length_Accepted, {NumberDatum(DatumKind::Unsigned, iAm.maxApdu)});
    device.Set(PropertyId::Segmentation_Supported, {NumberDatum(DatumKind::Enumerated, iAm.segmentation)});
    device.Set(PropertyId::Vendor_Identifier, {NumberDatum(DatumKind::Unsigned, iAm.vendor)});
    return device;
}

// The answers of all interfaces; a device that several of them reach is the same if it has the same address.
DiscoveryResult Joined(std::vector<DiscoveryResult> const& results) {
    DiscoveryResult all;
    for (DiscoveryResult const& result : results) {
        for (standard::FoundDevice const& found : result.devices) {
            bool const isKnown = std::any_of(all.devices.begin(), all.devices.end(), [&](auto const& known) {
                return known.peer == found.peer && known.Instance() == found.Instance();
            });
            if (!isKnown) {
                all.devices.push_back(found);
            }
        }
        all.routers.insert(all.routers.end(), result.routers.begin(), result.routers.end());
        all.isStopped = all.isStopped || result.isStopped;
    }
    std::sort(all.devices.begin(), all.devices.end(), [](auto const& left, auto const& right) {
        return left.Instance() != right.Instance() ? left.Instance() < right.Instance()
                                                   : IsBefore(left.peer, right.peer);
    });
    return all;
}

// The addresses of the others among these devices: "192.168.1.21:47808, 192.168.1.22:47808".
std::string OthersText(DiscoveryResult const& result, std::vector<std::size_t> const& indices,
                       std::size_t own) {
    std::string text;
    for (std::size_t const index : indices) {
        if (index != own) {
            text += (text.empty() ? "" : ", ") + AddressText(result.devices[index].peer);
        }
    }
    return text;
}

void MarkRepeated(DiscoveryResult const& result, std::vector<MarkedDevice>& devices) {
    for (auto const& [instance, indices] : result.RepeatedInstances()) {
        for (std::size_t const index : indices) {
            bool const isSame = std::all_of(indices.begin(), indices.end(), [&](std::size_t other) {
                return other == index ||
                       IsSameStation(result.devices[other].peer, result.devices[index].peer);
            });
            std::string const others = OthersText(result, indices, index);
            if (isSame) {
                devices[index].marks.emplace_back(DiscoveryMark::AnswersTwice,
                                                  "it answers also from " + others);
            } else {
                devices[index].marks.emplace_back(
                    DiscoveryMark::SameInstance,
                    "instance " + std::to_string(instance) + " is also at " + others);
            }
        }
    }
}

void MarkShared(DiscoveryResult const& result, std::vector<MarkedDevice>& devices) {
    for (std::vector<std::size_t> const& indices : result.SharedAddresses()) {
        for (std::size_t const index : indices) {
            devices[index].marks.emplace_back(
                DiscoveryMark::SharedAddress,
                std::to_string(indices.size()) + " devices answer from this address");
        }
    }
}

void MarkAnswers(standard::FoundDevice const& found, MarkedDevice& device) {
    if (found.AnswersTooOften()) {
        device.marks.emplace_back(DiscoveryMark::AnswersTwice,
                                  "it answered " + std::to_string(found.answers) + " times to " +
                                      std::to_string(found.questions) + " questions");
    }
    if (found.isContradictory) {
        device.marks.emplace_back(DiscoveryMark::Contradicts, "its answers state different properties");
    }
    if (found.Instance() == ObjectId::LastInstance) {
        device.marks.emplace_back(DiscoveryMark::NoInstance, "it has no instance yet (4194303)");
    }
}

}  // namespace

char const* NameOf(DiscoveryMark mark) {
    return Names[static_cast<std::size_t>(mark)];
}

DiscoveredPlant PlantOf(std::vector<DiscoveryResult> const& results) {
    DiscoveryResult const all = Joined(results);
    DiscoveredPlant plant;
    for (standard::FoundDevice const& found : all.devices) {
        MarkedDevice& device = plant.devices.emplace_back();
        device.announced = found.Instance();
        device.record.peer = found.peer;
        device.record.device = DeviceOf(found.iAm);
        MarkAnswers(found, device);
    }
    MarkRepeated(all, plant.devices);
    MarkShared(all, plant.devices);
    plant.routers = all.routers;
    plant.isStopped = all.isStopped;
    return plant;
}

void TakeRecords(DiscoveredPlant& plant, std::vector<DeviceRecord> records) {
    for (std::size_t i = 0; i < records.size() && i < plant.devices.size(); ++i) {
        MarkedDevice& device = plant.devices[i];
        DeviceRecord& read = records[i];
        bool const isRead = !read.device.properties.empty();
        if (!isRead) {
            device.marks.emplace_back(
                DiscoveryMark::NotReadable,
                "it cannot be read at this address: " +
                    (read.notes.empty() ? std::string("no answer") : read.notes.front()));
        } else if (read.Instance() != device.announced) {
            device.marks.emplace_back(DiscoveryMark::OtherInstance,
                                      "it announces the instance " + std::to_string(device.announced) +
                                          ", and its Device object has " + std::to_string(read.Instance()));
            device.record.device.id = read.device.id;
        }
        for (auto& [property, result] : read.device.properties) {
            auto& known = device.record.device.properties;
            if (!result.failure || known.count(property) == 0) {
                known[property] = std::move(result);
            }
        }
        device.record.isComplete = read.isComplete;
        device.record.notes = std::move(read.notes);
    }
}

}  // namespace workbench
