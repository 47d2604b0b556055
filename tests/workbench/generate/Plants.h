#pragma once

#include <string>
#include <utility>
#include <vector>

#include "DeviceRecord.h"

namespace test {

// Hand-made devices and objects, as a browser would read them.

using standard::Datum;
using standard::DatumKind;
using standard::PropertyId;

// The kinds of primitive values are in the order of their application tags.
inline Datum Of(DatumKind kind) {
    Datum datum;
    datum.kind = kind;
    datum.tag = static_cast<std::uint8_t>(kind);
    return datum;
}

inline Datum Number(DatumKind kind, std::uint64_t number) {
    Datum datum = Of(kind);
    datum.number = number;
    return datum;
}

inline Datum Unsigned(std::uint64_t number) {
    return Number(DatumKind::Unsigned, number);
}

inline Datum Enumerated(std::uint64_t number) {
    return Number(DatumKind::Enumerated, number);
}

inline Datum Signed(std::int64_t number) {
    return Number(DatumKind::Signed, static_cast<std::uint64_t>(number));
}

inline Datum Real(double real, DatumKind kind = DatumKind::Real) {
    Datum datum = Of(kind);
    datum.real = real;
    return datum;
}

inline Datum Text(std::string text, DatumKind kind = DatumKind::CharacterString) {
    Datum datum = Of(kind);
    datum.text = std::move(text);
    return datum;
}

inline Datum Calendar(DatumKind kind, std::array<std::uint8_t, 4> const& octets) {
    Datum datum = Of(kind);
    datum.calendar = octets;
    return datum;
}

using Values = std::vector<std::pair<PropertyId, std::vector<Datum>>>;

inline workbench::ObjectRecord Object(std::uint16_t type, std::uint32_t instance, std::string const& name,
                                      Values const& values) {
    workbench::ObjectRecord object;
    object.id = {type, instance};
    object.Set(PropertyId::Object_Name, {Text(name)});
    for (auto const& [property, data] : values) {
        object.Set(property, data);
    }
    return object;
}

inline void Fail(workbench::ObjectRecord& object, PropertyId property, standard::Failure const& failure) {
    auto const number = static_cast<std::uint32_t>(property);
    object.properties[number] = {{object.id, number, std::nullopt}, {}, failure};
}

inline standard::Failure UnknownProperty() {
    return {standard::Failure::Kind::Error, 2, 32, {}};
}

inline standard::Peer Local(std::uint8_t last) {
    standard::Peer peer;
    peer.endpoint = {0xC0A80100u + last, 47808};
    return peer;
}

inline standard::Peer Behind(std::uint8_t last, std::uint16_t network, standard::Octets mac) {
    standard::Peer peer = Local(last);
    peer.remote = standard::NetworkAddress{network, std::move(mac)};
    return peer;
}

inline workbench::DeviceRecord Device(std::uint32_t instance, std::string const& name,
                                      std::optional<standard::Peer> peer,
                                      std::vector<workbench::ObjectRecord> objects) {
    workbench::DeviceRecord device;
    device.peer = std::move(peer);
    device.device = Object(8, instance, name, {});
    device.objects = std::move(objects);
    return device;
}

}  // namespace test
