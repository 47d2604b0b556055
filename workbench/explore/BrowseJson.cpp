#include <cmath>

#include "AddressArgument.h"
#include "BrowseFormats.h"
#include "Enumerations.h"
#include "KindLine.h"
#include "NumberText.h"
#include "ObjectNames.h"
#include "ObjectUse.h"
#include "PropertyLines.h"
#include "PropertyNames.h"
#include "ValueWords.h"

namespace workbench {

namespace {

using standard::Datum;
using standard::DatumKind;
using standard::PropertyId;

void WriteReal(JsonWriter& writer, std::string const& text, double real) {
    if (std::isfinite(real)) {
        writer.RawValue(text.data(), text.size(), rapidjson::kNumberType);
    } else {
        WriteText(writer, text);
    }
}

// A number, a boolean, a text, or null: for a value that is not one of these its words.
void WriteValue(JsonWriter& writer, ObjectRecord const& object) {
    writer.Key("value");
    Datum const* const value = object.Value(PropertyId::Present_Value);
    if (!value || value->kind == DatumKind::Null) {
        writer.Null();
        return;
    }
    switch (value->kind) {
        case DatumKind::Boolean:
            writer.Bool(value->number != 0);
            break;
        case DatumKind::Unsigned:
        case DatumKind::Enumerated:
            writer.Uint64(value->number);
            break;
        case DatumKind::Signed:
            writer.Int64(value->Signed());
            break;
        case DatumKind::Real:
            WriteReal(writer, tools::NumberText(static_cast<float>(value->real)), value->real);
            break;
        case DatumKind::Double:
            WriteReal(writer, tools::NumberText(value->real), value->real);
            break;
        default:
            WriteText(writer, PlainValue(object));
    }
}

void WriteTexts(JsonWriter& writer, char const* name, std::vector<std::string> const& texts) {
    writer.Key(name);
    writer.StartArray();
    for (std::string const& text : texts) {
        WriteText(writer, text);
    }
    writer.EndArray();
}

void WriteAddress(JsonWriter& writer, DeviceRecord const& device) {
    WriteOptional(writer, "address", device.peer ? AddressText(*device.peer) : std::string());
    writer.Key("device");
    if (device.Instance() != standard::ObjectId::LastInstance) {
        writer.Uint(device.Instance());
    } else {
        writer.Null();  // it did not answer
    }
}

void WriteNumber(JsonWriter& writer, char const* name, ObjectRecord const& object, PropertyId property) {
    writer.Key(name);
    if (auto const number = NumberOf(object, property)) {
        writer.Uint(*number);
    } else {
        writer.Null();
    }
}

// An enumeration by its name; null without a value.
void WriteName(JsonWriter& writer, char const* name, ObjectRecord const& object, PropertyId property) {
    WriteOptional(writer, name,
                  object.Value(property) ? PropertyWords(object, static_cast<std::uint32_t>(property)) : "");
}

std::string DeviceLine(DeviceRecord const& device) {
    return KindLine("device", [&](JsonWriter& writer) {
        WriteAddress(writer, device);
        WriteOptional(writer, "name", NameOf(device.device));
        WriteOptional(writer, "vendor", TextOf(device.device, PropertyId::Vendor_Name));
        WriteOptional(writer, "model", TextOf(device.device, PropertyId::Model_Name));
        WriteOptional(writer, "firmware", TextOf(device.device, PropertyId::Firmware_Revision));
        WriteOptional(writer, "description", TextOf(device.device, PropertyId::Description));
        WriteNumber(writer, "vendorId", device.device, PropertyId::Vendor_Identifier);
        WriteNumber(writer, "maxApdu", device.device, PropertyId::Max_APDU_Length_Accepted);
        WriteName(writer, "segmentation", device.device, PropertyId::Segmentation_Supported);
        WriteNumber(writer, "protocolRevision", device.device, PropertyId::Protocol_Revision);
        WriteNumber(writer, "databaseRevision", device.device, PropertyId::Database_Revision);
        WriteName(writer, "status", device.device, PropertyId::System_Status);
        WriteOptional(writer, "location", TextOf(device.device, PropertyId::Location));
        writer.Key("objects");
        writer.Uint64(device.objects.size());
        writer.Key("complete");
        writer.Bool(device.isComplete);
        WriteTexts(writer, "notes", device.notes);
    });
}

std::string UnitName(ObjectRecord const& object) {
    auto const units = UnitsOf(object);
    auto const name = units ? standard::NameOfEnumerated(standard::Datatype::Units, *units) : std::nullopt;
    return name ? std::string(*name) : units ? std::to_string(*units) : std::string();
}

std::string ObjectLine(DeviceRecord const& device, ObjectRecord const& object) {
    return KindLine("object", [&](JsonWriter& writer) {
        PointSupport const use = UseOf(object);
        WriteAddress(writer, device);
        WriteField(writer, "object", standard::ObjectText(object.id));
        WriteOptional(writer, "name", NameOf(object));
        WriteOptional(writer, "description", TextOf(object, PropertyId::Description));
        WriteValue(writer, object);
        WriteOptional(writer, "text", ValueWords(object));
        WriteOptional(writer, "units", UnitName(object));
        WriteOptional(writer, "state", StateWords(object));
        WriteTexts(writer, "stateTexts", StateTextsOf(object));
        WriteOptional(writer, "flags", FlagWords(object));
        writer.Key("canRead");
        writer.Bool(use.canRead);
        writer.Key("canWrite");
        writer.Bool(use.canWrite);
        writer.Key("settable");
        writer.Bool(IsSettable(object));
        WriteOptional(writer, "elementType", use.elementType);
        WriteOptional(writer, "whyNot", use.whyNot);
        WriteOptional(writer, "whyNotWritten", use.whyNotWritten);
    });
}

}  // namespace

std::string BrowseJson(std::vector<DeviceRecord> const& devices) {
    std::string text;
    for (DeviceRecord const& device : devices) {
        text += DeviceLine(device);
        for (ObjectRecord const& object : device.objects) {
            text += ObjectLine(device, object);
        }
    }
    return text;
}

std::string OneObjectJson(DeviceRecord const& device, DeviceBrowser::OneObject const& one) {
    std::string text;
    for (auto const& [property, result] : one.object.properties) {
        text += KindLine("property", [&, number = property, &value = result](JsonWriter& writer) {
            WriteAddress(writer, device);
            WriteField(writer, "object", standard::ObjectText(one.object.id));
            WriteField(writer, "property", standard::PropertyText(number));
            WriteOptional(writer, "text", value.failure ? std::string() : PropertyWords(one.object, number));
            WriteOptional(writer, "error", value.failure ? FailureText(*value.failure) : std::string());
        });
    }
    return text;
}

}  // namespace workbench
