#include "DeviceBuilder.h"

#include <set>

#include "FaultReader.h"
#include "Mistake.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

constexpr std::uint32_t kShortestApdu = 50;
constexpr std::uint32_t kLongestApdu = 1476;
constexpr std::uint32_t kLongestTime = 60'000;  // milliseconds
constexpr std::uint32_t kMostRetries = 10;
constexpr std::uint32_t kLargestWindow = 127;
constexpr std::size_t kLongestMac = 18;  // octets of the longest address of any data link (clause 6.2.2)

// BACnetSegmentation
enum Segmentation : std::uint8_t { kSegmentedBoth = 0, kSegmentedTransmit = 1 };

// What device{...} may have besides the properties of its Device object.
std::vector<std::string> const& deviceNames() {
    static std::vector<std::string> const names{
        "objects", "router", "port", "proposed_window_size", "max_answer_segments", "writes", "faults"};
    return names;
}

std::uint32_t within(ScriptValue const& given, char const* name, std::uint32_t low, std::uint32_t high) try {
    std::uint32_t const value = checks::unsignedUpTo(given[name], high);
    if (value < low) {
        throw Mistake("must be at least " + std::to_string(low));
    }
    return value;
} catch (Mistake const& mistake) {
    throw mistake.in(name);
}

// The number that a property of the Device object has, which the device goes by.
std::uint32_t within(BacnetObject const& device, PropertyId id, std::uint32_t low, std::uint32_t high) {
    double const value = device.find(id)->values.front()->number({});
    if (!(value >= low && value <= high)) {
        throw Mistake(nameOf(id) + ": must be from " + std::to_string(low) + " to " + std::to_string(high));
    }
    return static_cast<std::uint32_t>(value);
}

std::optional<NetworkAddress> readRouter(ScriptValue const& router) try {
    if (router.isNil()) {
        return std::nullopt;
    }
    checks::fields(router, {"network", "mac"});
    NetworkAddress position{static_cast<std::uint16_t>(within(router, "network", 1, kGlobalBroadcast - 1u)),
                            checks::hexadecimal(router["mac"])};
    if (position.mac.empty() || position.mac.size() > kLongestMac) {
        throw Mistake("mac: must have 1 to 18 octets");
    }
    return position;
} catch (Mistake const& mistake) {
    throw mistake.in("router");
}

// Whether writes are lenient.
bool readWrites(ScriptValue const& writes) try {
    if (writes.isNil() || checks::text(writes) == "strict") {
        return false;
    }
    if (writes.text != "lenient") {
        throw Mistake("must be \"strict\" or \"lenient\", not \"" + writes.text + "\"");
    }
    return true;
} catch (Mistake const& mistake) {
    throw mistake.in("writes");
}

DeviceSettings readSettings(ScriptValue const& given, BacnetObject const& device) {
    using P = PropertyId;
    DeviceSettings settings;
    settings.maxApduLength = within(device, P::Max_APDU_Length_Accepted, kShortestApdu, kLongestApdu);
    settings.segmentationSupported =
        static_cast<std::uint8_t>(within(device, P::Segmentation_Supported, 0, 3));
    settings.segmentsAnswers = settings.segmentationSupported == kSegmentedBoth ||
                               settings.segmentationSupported == kSegmentedTransmit;
    settings.segmentTimeout =
        std::chrono::milliseconds(within(device, P::APDU_Segment_Timeout, 1, kLongestTime));
    settings.retries = within(device, P::Number_Of_APDU_Retries, 0, kMostRetries);
    settings.vendorIdentifier = within(device, P::Vendor_Identifier, 0, 65535);
    if (!given["max_answer_segments"].isNil()) {
        settings.maxSegments = within(given, "max_answer_segments", 1, 65535);
    }
    if (!given["proposed_window_size"].isNil()) {
        settings.proposedWindowSize =
            static_cast<std::uint8_t>(within(given, "proposed_window_size", 1, kLargestWindow));
    }
    if (!given["port"].isNil()) {
        settings.port = static_cast<std::uint16_t>(within(given, "port", 0, 65535));
    }
    settings.isLenient = readWrites(given["writes"]);
    settings.faults = readFaults(given["faults"]);
    settings.position = readRouter(given["router"]);
    return settings;
}

BacnetObject buildObject(ScriptValue const& given, ObjectBuilder::Evaluate const& evaluate) try {
    ObjectType const* const type = objectTypeOfName(given.kind);
    if (!type) {
        throw Mistake("objects: must be objects such as analog_input{...}, not " + given.describe());
    }
    ObjectBuilder builder(*type, given, evaluate);
    try {
        return builder.build();
    } catch (Mistake const& mistake) {
        throw mistake.in(builder.title());
    }
} catch (Mistake const& mistake) {
    throw mistake.at(given.line);
}

std::vector<BacnetObject> buildObjects(ScriptValue const& given, ObjectBuilder::Evaluate const& evaluate) {
    std::vector<BacnetObject> objects;
    if (given.isNil()) {
        return objects;
    }
    std::set<ObjectId> ids;
    std::set<std::string> names;
    for (ScriptValue const& object : checks::list(given)) {
        objects.push_back(buildObject(object, evaluate));
        std::string const title = object.kind + " " + std::to_string(objects.back().id().instance);
        if (!ids.insert(objects.back().id()).second) {
            throw Mistake(title + ": there are two of it", object.line);
        }
        if (!names.insert(objects.back().name()).second) {
            throw Mistake(title + ": another object has the name \"" + objects.back().name() + "\"",
                          object.line);
        }
    }
    return objects;
}

}  // namespace

Device buildDevice(ScriptValue const& given, ObjectBuilder::Evaluate const& evaluate) try {
    BacnetObject device = ObjectBuilder(deviceObjectType(), given, evaluate, deviceNames()).build();
    DeviceSettings settings = readSettings(given, device);
    return Device(std::move(device), buildObjects(given["objects"], evaluate), std::move(settings));
} catch (Mistake const& mistake) {
    ScriptValue const& name = given["name"];
    std::string const title = name.type == ScriptValue::Type::Text ? "device " + name.text : "device";
    throw mistake.in(title).at(given.line);
}

}  // namespace simulator
