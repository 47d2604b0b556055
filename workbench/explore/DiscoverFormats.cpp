#include "DiscoverFormats.h"

#include <algorithm>

#include "Enumerations.h"
#include "KindLine.h"
#include "Printable.h"
#include "TextTable.h"

namespace workbench {

namespace {

using standard::PropertyId;

std::string NumberText(ObjectRecord const& device, PropertyId property) {
    auto const number = NumberOf(device, property);
    return number ? std::to_string(*number) : std::string();
}

// "segmented-both"
std::string SegmentationName(ObjectRecord const& device) {
    auto const number = NumberOf(device, PropertyId::Segmentation_Supported);
    auto const name =
        number ? standard::NameOfEnumerated(standard::Datatype::Segmentation, *number) : std::nullopt;
    return name ? std::string(*name) : number ? std::to_string(*number) : std::string();
}

// "both", "transmit", "receive", "none"
std::string ShortSegmentation(ObjectRecord const& device) {
    std::string const name = SegmentationName(device);
    std::size_t const dash = name.find('-');
    return name == "no-segmentation" ? "none" : dash == std::string::npos ? name : name.substr(dash + 1);
}

std::string NetworkText(standard::Peer const& peer) {
    return peer.remote ? std::to_string(peer.remote->network) : std::string();
}

std::string MacOf(standard::Peer const& peer) {
    return peer.remote ? MacText(peer.remote->mac) : std::string();
}

std::string VendorText(ObjectRecord const& device) {
    std::string const name = TextOf(device, PropertyId::Vendor_Name);
    std::string const number = NumberText(device, PropertyId::Vendor_Identifier);
    return name.empty() ? number : number.empty() ? name : name + " (" + number + ")";
}

std::string RouterText(standard::FoundRouter const& router) {
    std::string text = "router " + router.endpoint.Text() + ": ";
    text += router.networks.size() == 1 ? "network" : "networks";
    for (std::uint16_t const network : router.networks) {
        text += (network == router.networks.front() ? " " : ", ") + std::to_string(network);
    }
    return text;
}

std::vector<std::string> Remarks(MarkedDevice const& device) {
    std::vector<std::string> remarks;
    for (auto const& mark : device.marks) {
        remarks.push_back(mark.second);
    }
    return remarks;
}

TextTable TableOf(DiscoveredPlant const& plant) {
    TextTable table({{"Instance", 8, 0, true},
                     {"Address", 46, 0},
                     {"Network", 7, 6, true},
                     {"MAC", 22, 7},
                     {"Name", 32, 0},
                     {"Vendor", 32, 2},
                     {"Model", 28, 3},
                     {"Max APDU", 8, 4, true},
                     {"Segmentation", 12, 5}});
    for (MarkedDevice const& marked : plant.devices) {
        ObjectRecord const& device = marked.record.device;
        standard::Peer const& peer = *marked.record.peer;
        table.Add({std::to_string(marked.announced), AddressText(peer), NetworkText(peer), MacOf(peer),
                   NameOf(device), VendorText(device), TextOf(device, PropertyId::Model_Name),
                   NumberText(device, PropertyId::Max_APDU_Length_Accepted), ShortSegmentation(device)},
                  Remarks(marked));
    }
    return table;
}

std::string SummaryText(DiscoveredPlant const& plant) {
    auto const wrong = std::count_if(plant.devices.begin(), plant.devices.end(),
                                     [](MarkedDevice const& device) { return !device.marks.empty(); });
    std::string const count = std::to_string(plant.devices.size());
    return count + (plant.devices.size() == 1 ? " device" : " devices") +
           (wrong > 0 ? ", something is wrong with " + std::to_string(wrong) : "") +
           (plant.isStopped ? " (ended early: there may be more)" : "");
}

void WriteNumber(JsonWriter& writer, char const* name, std::optional<std::uint32_t> number) {
    writer.Key(name);
    if (number) {
        writer.Uint(*number);
    } else {
        writer.Null();
    }
}

void WriteMarks(JsonWriter& writer, MarkedDevice const& marked) {
    writer.Key("marks");
    writer.StartArray();
    for (auto const& [mark, text] : marked.marks) {
        writer.StartObject();
        WriteField(writer, "mark", NameOf(mark));
        WriteField(writer, "text", text);
        writer.EndObject();
    }
    writer.EndArray();
}

std::string DeviceLine(MarkedDevice const& marked) {
    return KindLine("device", [&](JsonWriter& writer) {
        ObjectRecord const& device = marked.record.device;
        standard::Peer const& peer = *marked.record.peer;
        WriteNumber(writer, "instance", marked.announced);
        WriteField(writer, "address", AddressText(peer));
        WriteNumber(writer, "network",
                    peer.remote ? std::optional<std::uint32_t>(peer.remote->network) : std::nullopt);
        WriteOptional(writer, "mac", MacOf(peer));
        WriteOptional(writer, "name", NameOf(device));
        WriteNumber(writer, "vendorId", NumberOf(device, PropertyId::Vendor_Identifier));
        WriteOptional(writer, "vendor", TextOf(device, PropertyId::Vendor_Name));
        WriteOptional(writer, "model", TextOf(device, PropertyId::Model_Name));
        WriteOptional(writer, "firmware", TextOf(device, PropertyId::Firmware_Revision));
        WriteNumber(writer, "maxApdu", NumberOf(device, PropertyId::Max_APDU_Length_Accepted));
        WriteOptional(writer, "segmentation", SegmentationName(device));
        WriteMarks(writer, marked);
    });
}

}  // namespace

std::string DiscoverText(DiscoveredPlant const& plant, TextStyle const& style) {
    std::string text = plant.devices.empty() ? std::string() : TableOf(plant).Text(style);
    for (standard::FoundRouter const& router : plant.routers) {
        text += "  " + RouterText(router) + "\n";
    }
    for (std::string const& note : plant.notes) {
        text += "  " + Coloured(tools::Printable(note), colour::Yellow, style) + "\n";
    }
    return text + SummaryText(plant) + "\n";
}

std::string DiscoverLines(DiscoveredPlant const& plant) {
    std::string text = TabbedLine({"instance", "address", "network", "mac", "name", "vendor id", "vendor",
                                   "model", "max apdu", "segmentation", "marks"});
    for (MarkedDevice const& marked : plant.devices) {
        ObjectRecord const& device = marked.record.device;
        standard::Peer const& peer = *marked.record.peer;
        std::string marks;
        for (auto const& mark : marked.marks) {
            marks += (marks.empty() ? "" : ",") + std::string(NameOf(mark.first));
        }
        text += TabbedLine({std::to_string(marked.announced), AddressText(peer), NetworkText(peer),
                            MacOf(peer), NameOf(device), NumberText(device, PropertyId::Vendor_Identifier),
                            TextOf(device, PropertyId::Vendor_Name), TextOf(device, PropertyId::Model_Name),
                            NumberText(device, PropertyId::Max_APDU_Length_Accepted),
                            SegmentationName(device), marks});
    }
    return text;
}

std::string DiscoverJson(DiscoveredPlant const& plant) {
    std::string text;
    for (MarkedDevice const& device : plant.devices) {
        text += DeviceLine(device);
    }
    for (standard::FoundRouter const& router : plant.routers) {
        text += KindLine("router", [&](JsonWriter& writer) {
            WriteField(writer, "address", router.endpoint.Text());
            writer.Key("networks");
            writer.StartArray();
            for (std::uint16_t const network : router.networks) {
                writer.Uint(network);
            }
            writer.EndArray();
        });
    }
    for (std::string const& note : plant.notes) {
        text += KindLine("note", [&](JsonWriter& writer) { WriteField(writer, "text", note); });
    }
    return text + KindLine("summary", [&](JsonWriter& writer) {
               WriteNumber(writer, "devices", static_cast<std::uint32_t>(plant.devices.size()));
               writer.Key("complete");
               writer.Bool(!plant.isStopped);
           });
}

bool HasMarks(DiscoveredPlant const& plant) {
    return std::any_of(plant.devices.begin(), plant.devices.end(),
                       [](MarkedDevice const& device) { return !device.marks.empty(); });
}

}  // namespace workbench
