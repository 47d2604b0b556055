#include "BrowseFormats.h"

#include <algorithm>

#include "AddressArgument.h"
#include "ObjectNames.h"
#include "ObjectUse.h"
#include "Printable.h"
#include "PropertyLines.h"
#include "PropertyNames.h"
#include "TextTable.h"
#include "ValueWords.h"

namespace workbench {

namespace {

using standard::PropertyId;

// What the driver makes of an object: "read, write", "read", or "no: " and the reason.
std::string DriverWords(ObjectRecord const& object) {
    PointSupport const use = UseOf(object);
    return !use.canRead ? "no: " + use.whyNot : use.canWrite ? "read, write" : "read";
}

void Append(std::string& list, std::string const& before, std::string const& part) {
    list += part.empty() ? "" : (list.empty() ? "" : ", ") + before + part;
}

// "Example, X1, firmware 1"
std::string Maker(ObjectRecord const& device) {
    std::string text;
    Append(text, "", TextOf(device, PropertyId::Vendor_Name));
    Append(text, "", TextOf(device, PropertyId::Model_Name));
    Append(text, "firmware ", TextOf(device, PropertyId::Firmware_Revision));
    return text;
}

std::string Identity(ObjectRecord const& device) {
    // A device that did not answer has no instance.
    bool const isKnown = device.id.instance != standard::ObjectId::LastInstance;
    std::string text = isKnown ? "device " + std::to_string(device.id.instance) : "";
    Append(text, "", NameOf(device));
    Append(text, "", Maker(device));
    return text;
}

// "max APDU 1476, segmented-both, protocol revision 14, database revision 3, operational"; empty if nothing
// of it is known.
std::string Abilities(ObjectRecord const& device) {
    struct Ability {
        PropertyId property;
        char const* before;
    };
    std::string text;
    for (Ability const& ability : {Ability{PropertyId::Max_APDU_Length_Accepted, "max APDU "},
                                   Ability{PropertyId::Segmentation_Supported, ""},
                                   Ability{PropertyId::Protocol_Revision, "protocol revision "},
                                   Ability{PropertyId::Database_Revision, "database revision "},
                                   Ability{PropertyId::System_Status, ""}}) {
        if (device.Value(ability.property)) {
            Append(text, ability.before, PropertyWords(device, static_cast<std::uint32_t>(ability.property)));
        }
    }
    return text;
}

std::string ObjectLine(DeviceRecord const& device, ObjectRecord const& object, std::string const& value) {
    PointSupport const use = UseOf(object);
    return TabbedLine({device.peer ? AddressText(*device.peer) : "", std::to_string(device.Instance()),
                       standard::ObjectText(object.id), NameOf(object), value, UnitWords(object),
                       StateWords(object), FlagWords(object), use.canRead ? "yes" : "no",
                       use.canWrite ? "yes" : "no", use.canRead ? use.whyNotWritten : use.whyNot,
                       TextOf(object, PropertyId::Description)});
}

// The Device object: what it is in place of a value.
std::string DeviceLine(DeviceRecord const& device) {
    std::string text = Maker(device.device);
    Append(text, "", Abilities(device.device));
    return device.device.properties.empty() ? "" : ObjectLine(device, device.device, text);
}

std::string CountText(DeviceRecord const& device) {
    auto const read = std::count_if(device.objects.begin(), device.objects.end(),
                                    [](ObjectRecord const& object) { return UseOf(object).canRead; });
    return std::to_string(device.objects.size()) + " objects, of which the driver can read " +
           std::to_string(read) + (device.isComplete ? "" : " (incomplete)");
}

std::string Heading(DeviceRecord const& device, TextStyle const& style) {
    std::string const address = device.peer ? AddressText(*device.peer) : "";
    return Coloured(address, colour::Bold, style) + "  " + tools::Printable(Identity(device.device), 500) +
           "\n";
}

std::string NoteText(std::vector<std::string> const& notes, bool isComplete, TextStyle const& style) {
    std::string text;
    for (std::string const& note : notes) {
        text += "  " +
                Coloured(tools::Printable(note, 1000), isComplete ? colour::Yellow : colour::Red, style) +
                "\n";
    }
    return text;
}

TextTable TableOf(DeviceRecord const& device) {
    TextTable table({{"Object", 30, 0},
                     {"Name", 36, 0},
                     {"Value", 36, 0},
                     {"Flags", 30, 2},
                     {"Driver", 48, 3},
                     {"Description", 40, 4}});
    for (ObjectRecord const& object : device.objects) {
        std::string const flags = FlagWords(object);
        table.Add({standard::ObjectText(object.id), NameOf(object), ValueWords(object),
                   flags == "none" ? "" : flags, DriverWords(object),
                   TextOf(object, PropertyId::Description)});
    }
    return table;
}

}  // namespace

std::string BrowseText(std::vector<DeviceRecord> const& devices, TextStyle const& style) {
    std::string text;
    for (DeviceRecord const& device : devices) {
        std::string const abilities = Abilities(device.device);
        text += Heading(device, style) + (abilities.empty() ? "" : "  " + abilities + "\n") +
                NoteText(device.notes, device.isComplete, style);
        if (!device.objects.empty()) {
            text += TableOf(device).Text(style) + "  " + CountText(device) + "\n";
        }
    }
    return text;
}

std::string BrowseLines(std::vector<DeviceRecord> const& devices) {
    std::string text = TabbedLine({"address", "device", "object", "name", "value", "units", "state", "flags",
                                   "read", "write", "why not", "description"});
    for (DeviceRecord const& device : devices) {
        text += DeviceLine(device);
        for (ObjectRecord const& object : device.objects) {
            text += ObjectLine(device, object, PlainValue(object));
        }
    }
    return text;
}

std::vector<std::string> NotesOf(DeviceRecord const& device) {
    std::vector<std::string> notes;
    for (std::string const& note : device.notes) {
        notes.push_back((device.peer ? AddressText(*device.peer) + ": " : std::string()) + note);
    }
    return notes;
}

std::string OneObjectText(DeviceRecord const& device, DeviceBrowser::OneObject const& one,
                          TextStyle const& style) {
    std::string text =
        Heading(device, style) + "  " + Coloured(standard::ObjectText(one.object.id), colour::Bold, style) +
        "  " + tools::Printable(NameOf(one.object), 200) + "\n" + NoteText(one.notes, one.isComplete, style);
    TextTable table({{"Property", 40, 0}, {"Value", 1000, 0}});
    for (PropertyLine const& line : PropertyLinesOf(one.object)) {
        table.Add({line.name, line.text});
    }
    return one.object.properties.empty() ? text : text + table.Text(style);
}

std::string OneObjectLines(DeviceRecord const& device, DeviceBrowser::OneObject const& one) {
    std::string text = TabbedLine({"address", "device", "object", "property", "value"});
    for (PropertyLine const& line : PropertyLinesOf(one.object)) {
        text += TabbedLine({device.peer ? AddressText(*device.peer) : "", std::to_string(device.Instance()),
                            standard::ObjectText(one.object.id), standard::PropertyText(line.property),
                            line.text});
    }
    return text;
}

}  // namespace workbench
