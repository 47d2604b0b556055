#include "Comparison.h"

#include <map>

#include "DatumText.h"
#include "EdeCells.h"
#include "EdeColumns.h"
#include "FieldValue.h"
#include "JsonFields.h"
#include "ObjectNames.h"
#include "Printable.h"

namespace workbench {

using standard::ObjectId;
using standard::PropertyId;
using Kind = Difference::Kind;

namespace {

struct KindRow {
    Kind kind;
    char const* name;  // in JSON
    char const* text;
};

constexpr KindRow Kinds[] = {
    {Kind::MissingDevice, "missing-device", "is missing: only the list has it"},
    {Kind::AdditionalDevice, "additional-device", "is additional: the list does not have it"},
    {Kind::MissingObject, "missing-object", "is missing: only the list has it"},
    {Kind::AdditionalObject, "additional-object", "is additional: the list does not have it"},
    {Kind::Name, "name", "the name"},
    {Kind::Unit, "unit", "the unit"},
    {Kind::StateTexts, "state-texts", "the state texts"},
};

KindRow const& RowOf(Kind kind) {
    return Kinds[static_cast<std::size_t>(kind)];
}

// The unit as a text: a name of the standard, a number without one, or what a list has in its place.
std::string UnitOf(ObjectRecord const& object) {
    auto const unit = UnitsOf(object);
    if (unit) {
        return standard::DatumText(EnumeratedDatum(*unit), standard::Datatype::Units);
    }
    auto const listed = object.listed.find(HeadingOf(EdeColumn::UnitCode));
    return listed == object.listed.end() ? std::string() : listed->second;
}

std::string Joined(std::vector<std::string> const& texts) {
    std::string all;
    for (std::string const& text : texts) {
        all += (&text == texts.data() ? "" : ", ") + text;
    }
    return all;
}

using Objects = std::map<ObjectId, ObjectRecord const*>;

Objects ObjectsOf(DeviceRecord const& device) {
    Objects objects;
    for (ObjectRecord const& object : device.objects) {
        objects.emplace(object.id, &object);
    }
    return objects;
}

class Comparer {
public:
    explicit Comparer(DeviceNames deviceNames) : names(deviceNames) {}

    void CompareDevice(DeviceRecord const* list, DeviceRecord const* plant) {
        DeviceRecord const& known = list ? *list : *plant;
        if (!list || !plant) {
            comparison.differences.push_back({list ? Kind::MissingDevice : Kind::AdditionalDevice,
                                              known.Instance(),
                                              std::nullopt,
                                              NameOf(known.device),
                                              {},
                                              {}});
            return;
        }
        ++comparison.devices;
        if (names == DeviceNames::Compare) {
            CompareText(Kind::Name, known.Instance(), list->device, NameOf(list->device),
                        NameOf(plant->device));
        }
        CompareObjects(known.Instance(), ObjectsOf(*list), ObjectsOf(*plant), plant->isComplete);
        if (!plant->isComplete) {
            comparison.notes.push_back("device " + std::to_string(known.Instance()) +
                                       " was not read completely; its missing objects are not reported");
        }
    }

    Comparison Take() { return std::move(comparison); }

private:
    void CompareObjects(std::uint32_t device, Objects const& list, Objects const& plant, bool isComplete) {
        Objects all = list;
        all.insert(plant.begin(), plant.end());
        for (auto const& entry : all) {
            auto const listed = list.find(entry.first);
            auto const actual = plant.find(entry.first);
            if (listed == list.end() || actual == plant.end()) {
                bool const isMissing = actual == plant.end();
                if (!isMissing || isComplete) {
                    comparison.differences.push_back(
                        {isMissing ? Kind::MissingObject : Kind::AdditionalObject,
                         device,
                         entry.first,
                         NameOf(*entry.second),
                         {},
                         {}});
                }
                continue;
            }
            ++comparison.objects;
            CompareText(Kind::Name, device, *listed->second, NameOf(*listed->second),
                        NameOf(*actual->second));
            CompareText(Kind::Unit, device, *listed->second, UnitOf(*listed->second),
                        UnitOf(*actual->second));
            CompareStates(device, *listed->second, *actual->second);
        }
    }

    void CompareStates(std::uint32_t device, ObjectRecord const& list, ObjectRecord const& plant) {
        std::vector<std::string> const listed = PlainStateTexts(list);
        std::vector<std::string> const actual = PlainStateTexts(plant);
        if (!listed.empty() && listed != actual) {
            comparison.differences.push_back(
                {Kind::StateTexts, device, list.id, NameOf(list), Joined(listed), Joined(actual)});
        }
    }

    void CompareText(Kind kind, std::uint32_t device, ObjectRecord const& object, std::string const& listed,
                     std::string const& actual) {
        // A list has blanks in place of control characters.
        if (!listed.empty() && PlainText(listed) != PlainText(actual)) {
            comparison.differences.push_back({kind, device, object.id, NameOf(object), listed, actual});
        }
    }

    DeviceNames names;
    Comparison comparison;
};

std::string CountsText(Comparison const& comparison) {
    return "differences: " + std::to_string(comparison.differences.size()) +
           ", devices compared: " + std::to_string(comparison.devices) +
           ", objects compared: " + std::to_string(comparison.objects) + "\n";
}

void WriteCount(JsonWriter& writer, char const* name, std::size_t count) {
    writer.Key(name);
    writer.Uint64(count);
}

std::string DifferenceJson(Difference const& difference) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "difference", RowOf(difference.kind).name);
    WriteCount(writer, "device", difference.device);
    WriteOptional(writer, "object", difference.object ? standard::ObjectText(*difference.object) : "");
    WriteOptional(writer, "name", difference.name);
    WriteOptional(writer, "listed", difference.listed);
    WriteOptional(writer, "actual", difference.actual);
    writer.EndObject();
    return JsonLine(buffer);
}

}  // namespace

Comparison Compare(Inventory const& list, Inventory const& plant, DeviceNames names) {
    // Of devices with the same instance, the first one is compared.
    std::map<std::uint32_t, std::pair<DeviceRecord const*, DeviceRecord const*>> devices;
    for (DeviceRecord const& device : list.devices) {
        auto& pair = devices[device.Instance()];
        pair.first = pair.first ? pair.first : &device;
    }
    for (DeviceRecord const& device : plant.devices) {
        auto& pair = devices[device.Instance()];
        pair.second = pair.second ? pair.second : &device;
    }
    Comparer comparer(names);
    for (auto const& device : devices) {
        comparer.CompareDevice(device.second.first, device.second.second);
    }
    return comparer.Take();
}

std::string DifferenceText(Difference const& difference) {
    std::string text = "device " + std::to_string(difference.device);
    if (difference.object && difference.object->type != 8) {
        text += " " + standard::ObjectText(*difference.object);
    }
    text += difference.name.empty() ? ": " : " " + tools::Quoted(difference.name) + ": ";
    text += RowOf(difference.kind).text;
    if (difference.listed.empty()) {
        return text;
    }
    text += (difference.kind == Kind::StateTexts ? " are " : " is ") + tools::Quoted(difference.listed) +
            " in the list and ";
    return text + (difference.actual.empty() ? "not there" : tools::Quoted(difference.actual)) +
           (difference.actual.empty() ? "" : " there");
}

std::string ComparisonText(Comparison const& comparison) {
    std::string text;
    for (Difference const& difference : comparison.differences) {
        text += DifferenceText(difference) + "\n";
    }
    for (std::string const& note : comparison.notes) {
        text += "note: " + note + "\n";
    }
    return text + CountsText(comparison);
}

std::string ComparisonJson(Comparison const& comparison) {
    std::string text;
    for (Difference const& difference : comparison.differences) {
        text += DifferenceJson(difference);
    }
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteCount(writer, "differences", comparison.differences.size());
    WriteCount(writer, "devices", comparison.devices);
    WriteCount(writer, "objects", comparison.objects);
    writer.Key("notes");
    writer.StartArray();
    for (std::string const& note : comparison.notes) {
        WriteText(writer, note);
    }
    writer.EndArray();
    writer.EndObject();
    return text + JsonLine(buffer);
}

}  // namespace workbench
