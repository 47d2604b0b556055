#include "DeviceBuilder.h"

#include <algorithm>
#include <set>

#include "FaultReader.h"
#include "Mistake.h"
#include "Printable.h"
#include "ScriptChecks.h"
#include "Service.h"

namespace simulator {

namespace {

constexpr std::uint32_t ShortestApdu = 50;
constexpr std::uint32_t LongestApdu = 1476;
constexpr std::uint32_t LongestTime = 60'000;  // milliseconds
constexpr std::uint32_t MostRetries = 10;
constexpr std::uint32_t UsualTime = 2000;
constexpr std::uint32_t UsualRetries = 3;
constexpr std::uint32_t LargestWindow = 127;
constexpr std::size_t LongestMac = 18;  // octets of the longest address of any data link (clause 6.2.2)

// BACnetSegmentation
enum Segmentation : std::uint8_t { SegmentedBoth = 0, SegmentedTransmit = 1, NoSegmentation = 3 };

// The fields of device{...} besides the properties of its Device object.
std::vector<std::string> const& DeviceNames() {
    static std::vector<std::string> const names{
        "objects", "object_list", "router", "port", "writes", "proposed_window_size", "max_answer_segments",
        "faults",  "i_am"};
    return names;
}

std::uint32_t Within(ScriptValue const& given, char const* name, std::uint32_t low, std::uint32_t high) try {
    std::uint32_t const value = checks::UnsignedUpTo(given[name], high);
    if (value < low) {
        throw Mistake("must be at least " + std::to_string(low));
    }
    return value;
} catch (Mistake const& mistake) {
    throw mistake.In(name);
}

// The number of a property of the Device object that is a setting of the device.
// `fallback` if the device does not have it.
std::uint32_t Within(BacnetObject const& device, PropertyId id, std::uint32_t low, std::uint32_t high,
                     std::uint32_t fallback) {
    ValuePtr const found = device.ValueOf(id);
    double const value = found ? found->Number({}) : fallback;
    if (!(value >= low && value <= high)) {
        throw Mistake(NameOf(id) + ": must be from " + std::to_string(low) + " to " + std::to_string(high));
    }
    return static_cast<std::uint32_t>(value);
}

void ReadRouter(ScriptValue const& router, DeviceSettings& settings) try {
    if (router.IsNil()) {
        return;
    }
    checks::Fields(router, {"network", "mac", "name", "own_network"});
    settings.router.name = router["name"].IsNil() ? "" : checks::Text(router["name"]);
    if (!router["own_network"].IsNil()) {
        settings.router.ownNetwork =
            static_cast<std::uint16_t>(Within(router, "own_network", 1, GlobalBroadcast - 1u));
    }
    NetworkAddress position{static_cast<std::uint16_t>(Within(router, "network", 1, GlobalBroadcast - 1u)),
                            checks::Hexadecimal(router["mac"])};
    if (position.mac.empty() || position.mac.size() > LongestMac) {
        throw Mistake("mac: must have 1 to 18 octets");
    }
    if (settings.router.ownNetwork == position.network) {
        throw Mistake("own_network: must differ from network");
    }
    settings.position = std::move(position);
} catch (Mistake const& mistake) {
    throw mistake.In("router");
}

// Whether a field has the second of two texts; the first is the default.
bool ReadOneOf(ScriptValue const& given, char const* name, std::string const& usual,
               std::string const& other) try {
    ScriptValue const& value = given[name];
    if (value.IsNil() || checks::Text(value) == usual) {
        return false;
    }
    if (value.text != other) {
        throw Mistake("must be " + tools::Quoted(usual) + " or " + tools::Quoted(other) + ", not " +
                      tools::Quoted(value.text));
    }
    return true;
} catch (Mistake const& mistake) {
    throw mistake.In(name);
}

DeviceSettings ReadSettings(ScriptValue const& given, BacnetObject const& device) {
    using P = PropertyId;
    DeviceSettings settings;
    settings.maxApduLength =
        Within(device, P::Max_APDU_Length_Accepted, ShortestApdu, LongestApdu, LongestApdu);
    settings.segmentationSupported =
        static_cast<std::uint8_t>(Within(device, P::Segmentation_Supported, 0, 3, NoSegmentation));
    settings.segmentsAnswers = settings.segmentationSupported == SegmentedBoth ||
                               settings.segmentationSupported == SegmentedTransmit;
    settings.segmentTimeout =
        std::chrono::milliseconds(Within(device, P::APDU_Segment_Timeout, 1, LongestTime, UsualTime));
    settings.retries = Within(device, P::Number_Of_APDU_Retries, 0, MostRetries, UsualRetries);
    settings.vendorIdentifier = Within(device, P::Vendor_Identifier, 0, 65535, 0);
    if (!given["max_answer_segments"].IsNil()) {
        settings.maxSegments = Within(given, "max_answer_segments", 1, 65535);
    }
    if (!given["proposed_window_size"].IsNil()) {
        settings.proposedWindowSize =
            static_cast<std::uint8_t>(Within(given, "proposed_window_size", 1, LargestWindow));
    }
    if (!given["port"].IsNil()) {
        settings.port = static_cast<std::uint16_t>(Within(given, "port", 0, 65535));
    }
    settings.isLenient = ReadOneOf(given, "writes", "strict", "lenient");
    settings.faults = ReadFaults(given["faults"]);
    settings.broadcastsAnswers = ReadOneOf(given, "i_am", "unicast", "broadcast");
    ReadRouter(given["router"], settings);
    return settings;
}

BacnetObject BuildWith(ObjectBuilder builder) try { return builder.Build(); } catch (Mistake const& mistake) {
    throw mistake.In(builder.Title());
}

// object{type = 20, ...}: an object of any type, without a table of its properties.
BacnetObject BuildFreeObject(ScriptValue const& given, ObjectBuilder::Evaluate const& evaluate) {
    std::uint16_t code = 0;
    try {
        code = checks::ObjectTypeCode(given["type"]);
    } catch (Mistake const& mistake) {
        throw mistake.In("object: type");
    }
    std::string const name = checks::ObjectTypeName(code);
    static std::vector<std::string> const names{"type", "priority_array"};
    ObjectType const type{code, name.c_str(), {}};
    return BuildWith(ObjectBuilder(type, given, evaluate, names));
}

BacnetObject BuildObject(ScriptValue const& given, ObjectBuilder::Evaluate const& evaluate) try {
    if (given.IsMade("object")) {
        return BuildFreeObject(given, evaluate);
    }
    ObjectType const* const type = ObjectTypeOfName(given.kind);
    if (!type) {
        throw Mistake("objects: must be objects such as analog_input{...}, not " + given.Describe());
    }
    return BuildWith(ObjectBuilder(*type, given, evaluate));
} catch (Mistake const& mistake) {
    throw mistake.At(given.line);
}

// The objects besides the Device object, which has that identifier.
std::vector<BacnetObject> BuildObjects(ScriptValue const& given, ObjectBuilder::Evaluate const& evaluate,
                                       ObjectId device) {
    std::vector<BacnetObject> objects;
    if (given.IsNil()) {
        return objects;
    }
    std::set<ObjectId> ids{device};
    std::set<std::string> names;
    for (ScriptValue const& object : checks::List(given)) {
        objects.push_back(BuildObject(object, evaluate));
        std::string const title = object.kind + " " + std::to_string(objects.back().Id().instance);
        if (!ids.insert(objects.back().Id()).second) {
            throw Mistake(title + ": there are two of it", object.line);
        }
        if (!names.insert(objects.back().Name()).second && object["defaults"].IsNil()) {
            throw Mistake(title + ": another object has the name " + tools::Quoted(objects.back().Name()),
                          object.line);
        }
    }
    return objects;
}

// An Object_List that is not that of the objects: {{"analog_input", 1}, {300, 2}}
void AddObjectList(ScriptValue const& given, BacnetObject& device) try {
    if (given.IsNil()) {
        return;
    }
    std::vector<ValuePtr> identifiers;
    for (ScriptValue const& object : checks::List(given)) {
        identifiers.push_back(FixedObjectIdentifier(checks::ObjectIdentifier(object)));
    }
    device.Add({PropertyId::Object_List, Shape::Array, true, std::move(identifiers)});
} catch (Mistake const& mistake) {
    throw mistake.In("object_list");
}

// What the device can do, unless the file states it.
void AddAbilities(ScriptValue const& given, DeviceSettings const& settings, BacnetObject& device) {
    using P = PropertyId;
    if (!device.Find(P::Protocol_Services_Supported)) {
        ValuePtr const revision = device.ValueOf(P::Protocol_Revision);
        std::string const bits = SupportedServices(
            revision ? static_cast<unsigned>(std::clamp(revision->Number({}), 0.0, 255.0)) : 0u);
        device.Add({P::Protocol_Services_Supported, Shape::Single, true, {FixedBits(bits)}});
    }
    // A device that segments in any direction has the property. This one accepts no segments.
    bool const isCopy = !given["defaults"].IsNil() && !given["defaults"].boolean;
    if (settings.segmentationSupported != NoSegmentation && !isCopy &&
        !device.Find(P::Max_Segments_Accepted)) {
        device.Add({P::Max_Segments_Accepted, Shape::Single, false, {FixedUnsigned(1)}});
    }
}

}  // namespace

Device BuildDevice(ScriptValue const& given, ObjectBuilder::Evaluate const& evaluate) try {
    BacnetObject device = ObjectBuilder(DeviceObjectType(), given, evaluate, DeviceNames()).Build();
    AddObjectList(given["object_list"], device);
    DeviceSettings settings = ReadSettings(given, device);
    AddAbilities(given, settings, device);
    auto objects = BuildObjects(given["objects"], evaluate, device.Id());
    return Device(std::move(device), std::move(objects), std::move(settings));
} catch (Mistake const& mistake) {
    ScriptValue const& name = given["name"];
    std::string const title = name.IsText() ? "device " + name.text : "device";
    throw mistake.In(title).At(given.line);
}

}  // namespace simulator
