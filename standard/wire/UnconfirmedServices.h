#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "ObjectId.h"
#include "OctetVector.h"

// The services that find devices and objects (clauses 16.9 and 16.10), as whole APDUs. Decode has no value if
// the APDU is not one of that service or if its parameters are not those of the service; it never throws.
namespace standard {

// Device instances from low to high, both included; low <= high <= ObjectId::LastInstance.
struct InstanceRange {
    std::uint32_t low = 0;
    std::uint32_t high = ObjectId::LastInstance;

    bool Contains(std::uint32_t instance) const { return low <= instance && instance <= high; }
};

inline bool operator==(InstanceRange const& left, InstanceRange const& right) {
    return left.low == right.low && left.high == right.high;
}

struct WhoIs {
    std::optional<InstanceRange> range;  // without it, all devices are meant

    bool IsFor(std::uint32_t instance) const { return !range || range->Contains(instance); }
    static std::optional<WhoIs> Decode(Octets const& apdu);
    Octets Encode() const;
};

struct IAm {
    ObjectId device;  // of type device; its instance may be LastInstance, that of a device without a number
    std::uint32_t maxApdu = 0;
    std::uint32_t segmentation = 0;  // BACnetSegmentation
    std::uint32_t vendor = 0;

    static std::optional<IAm> Decode(Octets const& apdu);
    Octets Encode() const;
};

inline bool operator==(IAm const& left, IAm const& right) {
    return left.device == right.device && left.maxApdu == right.maxApdu &&
           left.segmentation == right.segmentation && left.vendor == right.vendor;
}

struct WhoHas {
    std::optional<InstanceRange> range;  // of the devices that are meant
    std::optional<ObjectId> object;      // the object, or else the object of that name
    std::string name;                    // in UTF-8

    bool IsFor(std::uint32_t instance) const { return !range || range->Contains(instance); }
    static std::optional<WhoHas> Decode(Octets const& apdu);
    Octets Encode() const;
};

struct IHave {
    ObjectId device;
    ObjectId object;
    std::string name;  // in UTF-8

    static std::optional<IHave> Decode(Octets const& apdu);
    Octets Encode() const;
};

// Whether the APDU says that it is an I-Am, whatever its parameters are.
bool IsIAm(Octets const& apdu);

}  // namespace standard
