#include "ObjectText.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "DatumLua.h"
#include "LuaText.h"
#include "ObjectNames.h"
#include "ObjectType.h"

namespace workbench {

namespace {

using standard::Datatype;
using standard::Datum;
using standard::DatumKind;
using standard::ObjectType;
using standard::PropertyId;
using standard::PropertyRow;
using standard::Shape;

constexpr std::size_t Priorities = 16;
constexpr std::size_t DatumsOfEvent = 3;  // period, entries and priority of a special event

// They follow from other fields of the file.
std::set<PropertyId> const Settled{PropertyId::Object_Identifier, PropertyId::Object_Name,
                                   PropertyId::Object_Type, PropertyId::Property_List};

// The simulator has its own, and the list of addresses of others would say where the plant is.
std::set<PropertyId> const OfTheSimulator{
    PropertyId::Object_List, PropertyId::Protocol_Object_Types_Supported, PropertyId::Device_Address_Binding};

std::set<PropertyId> const Clocks{PropertyId::Local_Date, PropertyId::Local_Time};

// The numbers of the Device object by which the simulator works, and what it takes for them.
struct Range {
    PropertyId property;
    std::uint64_t low;
    std::uint64_t high;
};

constexpr Range Ranges[] = {
    {PropertyId::Max_APDU_Length_Accepted, 50, 1476}, {PropertyId::Segmentation_Supported, 0, 3},
    {PropertyId::APDU_Segment_Timeout, 1, 60000},     {PropertyId::Number_Of_APDU_Retries, 0, 10},
    {PropertyId::Vendor_Identifier, 0, 65535},
};

ObjectType const* TypeOf(std::uint16_t code) {
    auto const& types = standard::AllObjectTypes();
    auto const type =
        std::find_if(types.begin(), types.end(), [code](ObjectType const& row) { return row.code == code; });
    return type == types.end() ? nullptr : &*type;
}

bool IsActive(ObjectRecord const& object, PropertyId property) {
    Datum const* const value = object.Value(property);
    return value && value->number != 0;
}

// The flags that the simulator derives (clause 12.2.8).
std::string DerivedFlags(ObjectRecord const& object) {
    std::string flags = "0000";
    flags[0] = IsActive(object, PropertyId::Event_State) ? '1' : '0';
    flags[1] = IsActive(object, PropertyId::Reliability) ? '1' : '0';
    flags[3] = IsActive(object, PropertyId::Out_Of_Service) ? '1' : '0';
    return flags;
}

std::vector<Datum> ElementOf(Datum const& element) {
    bool const isDateTime = element.kind == DatumKind::Constructed && element.children.size() == 2;
    return isDateTime ? element.children : std::vector<Datum>{element};
}

class Fields {
public:
    Fields(ObjectRecord const& objectRecord, ObjectType const* objectType, std::size_t indent)
        : object(objectRecord), type(objectType), blanks(indent, ' ') {}

    std::string Text(std::set<PropertyId> const& skipped) {
        skip = skipped;
        std::string const name = NameOf(object);
        Add("name", LuaString(name.empty() ? standard::ObjectText(object.id) : name));
        Add("defaults", "false");
        AddCommands();
        AddRows();
        AddOthers();
        return text;
    }

    bool LacksDefault() const {
        auto const* const fallback = object.Values(PropertyId::Relinquish_Default);
        return fallback && !fallback->empty() && !PossibleCommands();
    }

private:
    void Add(std::string const& name, std::string const& value) {
        text += blanks + name + " = " + value + ",\n";
    }

    std::vector<Datum> const* Values(PropertyId property) const {
        return skip.count(property) != 0 ? nullptr : object.Values(property);
    }

    PropertyRow const* RowOf(PropertyId property) const { return type ? type->Find(property) : nullptr; }

    // A commandable object has its commands in place of its present value.
    void AddCommands() {
        auto const* const fallback = Values(PropertyId::Relinquish_Default);
        if (!fallback || fallback->empty()) {
            return;
        }
        auto const commands = PossibleCommands();
        skip.insert(PropertyId::Priority_Array);
        if (!commands) {
            // Without commands the simulator could not tell the two apart.
            skip.insert(PropertyId::Relinquish_Default);
            return;
        }
        skip.insert(PropertyId::Present_Value);
        Add("priority_array", *commands);
    }

    std::optional<std::string> PossibleCommands() const {
        return !type || RowOf(PropertyId::Priority_Array) ? Commands() : std::nullopt;
    }

    // The object may have it: the device has answered with something else than that it has not.
    bool IsUnread(PropertyId property) const {
        constexpr std::uint32_t propertyClass = 2;
        constexpr std::uint32_t unknownProperty = 32;
        auto const found = object.properties.find(static_cast<std::uint32_t>(property));
        if (found == object.properties.end() || !found->second.failure) {
            return false;
        }
        standard::Failure const& failure = *found->second.failure;
        return failure.kind != standard::Failure::Kind::Error || failure.errorClass != propertyClass ||
               failure.code != unknownProperty;
    }

    // "{[8] = 21.5}". An object with a default and without an array has its value as the lowest command.
    std::optional<std::string> Commands() const {
        auto const* const array = object.Values(PropertyId::Priority_Array);
        if (IsUnread(PropertyId::Priority_Array)) {
            return std::nullopt;
        }
        if (!array) {
            auto const* const present = object.Values(PropertyId::Present_Value);
            auto const value = present ? Command(*present) : std::nullopt;
            return value ? std::optional("{[16] = " + *value + '}') : std::nullopt;
        }
        if (array->size() != Priorities) {
            return std::nullopt;
        }
        std::string commands;
        for (std::size_t i = 0; i < array->size(); ++i) {
            if ((*array)[i].kind == DatumKind::Null) {
                continue;
            }
            auto const value = Command(ElementOf((*array)[i]));
            if (!value) {
                return std::nullopt;
            }
            commands += (commands.empty() ? "[" : ", [") + std::to_string(i + 1) + "] = " + *value;
        }
        return '{' + commands + '}';
    }

    std::optional<std::string> Command(std::vector<Datum> const& values) const {
        PropertyRow const* const row = RowOf(PropertyId::Present_Value);
        if (row) {
            return TypedText(row->datatype, values);
        }
        return values.size() == 1 ? std::optional(AnyText(values[0])) : std::nullopt;
    }

    // Properties of the type with values of their datatypes, by name.
    void AddRows() {
        if (!type) {
            return;
        }
        for (auto const& group : type->groups) {
            for (PropertyRow const& row : group) {
                auto const* const values = Values(row.id);
                auto const value = values ? RowText(row, *values) : std::nullopt;
                if (value) {
                    skip.insert(row.id);
                    if (!value->empty()) {
                        Add(standard::NameOf(row.id), *value);
                    }
                }
            }
        }
    }

    // Empty for what the simulator derives from other properties.
    std::optional<std::string> RowText(PropertyRow const& row, std::vector<Datum> const& values) const {
        if (row.datatype == Datatype::StatusFlags) {
            return FlagsText(row, values);
        }
        if (row.datatype == Datatype::DailySchedule) {
            return WeekText(values);
        }
        if (row.shape == Shape::Single) {
            return TypedText(row.datatype, values);
        }
        std::string list;
        for (Datum const& value : values) {
            auto const element = TypedText(row.datatype, {value});
            if (!element) {
                return std::nullopt;
            }
            list += (list.empty() ? "" : ", ") + *element;
        }
        return '{' + list + '}';
    }

    std::optional<std::string> FlagsText(PropertyRow const& row, std::vector<Datum> const& values) const {
        bool const isFlags =
            values.size() == 1 && values[0].kind == DatumKind::BitString && values[0].text.size() == 4;
        if (!isFlags) {
            return std::nullopt;
        }
        bool const isDerived = row.isRequired && values[0].text == DerivedFlags(object);
        return isDerived ? std::string() : '"' + values[0].text + '"';
    }

    // All others, by number and with their datatypes.
    void AddOthers() {
        std::string others;
        for (auto const& [number, result] : object.properties) {
            auto const property = static_cast<PropertyId>(number);
            if (!result.failure && skip.count(property) == 0) {
                others += blanks + "    [" + std::to_string(number) +
                          "] = " + FreeText(property, result.values) + ",\n";
            }
        }
        if (!others.empty()) {
            Add("properties", "{\n" + others + blanks + '}');
        }
    }

    std::string FreeText(PropertyId property, std::vector<Datum> const& values) const {
        PropertyRow const* const row = RowOf(property);
        if (property == PropertyId::Exception_Schedule && values.size() % DatumsOfEvent == 0) {
            return EventsText(values);
        }
        if (row && row->shape == Shape::Single) {
            return values.size() == 1 ? AnyText(values[0]) : "sequence(" + AnyTexts(values) + ')';
        }
        if (row && row->shape == Shape::Array) {
            return "array{" + AnyTexts(values) + '}';
        }
        return !row && values.size() == 1 ? AnyText(values[0]) : '{' + AnyTexts(values) + '}';
    }

    std::string EventsText(std::vector<Datum> const& values) const {
        std::string events;
        for (auto event = values.begin(); event != values.end(); event += DatumsOfEvent) {
            events += (events.empty() ? "\n" : ",\n") + blanks + "        sequence(" +
                      AnyTexts({event, event + DatumsOfEvent}) + ')';
        }
        return "array{" + events + '}';
    }

    ObjectRecord const& object;
    ObjectType const* type;
    std::string const blanks;
    std::set<PropertyId> skip;
    std::string text;
};

// The nearest number that the simulator can work with.
void Limit(ObjectRecord& device, Range const& range) {
    Datum const* const value = device.Value(range.property);
    if (value && (value->kind == DatumKind::Unsigned || value->kind == DatumKind::Enumerated)) {
        Datum limited = *value;
        limited.number = std::min(std::max(limited.number, range.low), range.high);
        device.Set(range.property, {limited});
        return;
    }
    device.properties.erase(static_cast<std::uint32_t>(range.property));
}

}  // namespace

std::string ConstructorOf(standard::ObjectId const& object) {
    ObjectType const* const type = TypeOf(object.type);
    return type ? type->name : "object";
}

std::string ObjectFields(ObjectRecord const& object, std::size_t indent) {
    return Fields(object, TypeOf(object.id.type), indent).Text(Settled);
}

bool LacksDefault(ObjectRecord const& object) {
    return Fields(object, TypeOf(object.id.type), 0).LacksDefault();
}

std::string DeviceFields(ObjectRecord const& device, std::size_t indent) {
    ObjectRecord limited = device;
    for (Range const& range : Ranges) {
        Limit(limited, range);
    }
    std::set<PropertyId> skipped = Settled;
    skipped.insert(OfTheSimulator.begin(), OfTheSimulator.end());
    skipped.insert(Clocks.begin(), Clocks.end());
    std::string text = Fields(limited, &standard::DeviceObjectType(), indent).Text(skipped);
    for (PropertyId const clock : Clocks) {
        text += device.Values(clock) ? std::string(indent, ' ') + standard::NameOf(clock) + " = clock(),\n"
                                     : std::string();
    }
    return text;
}

}  // namespace workbench
