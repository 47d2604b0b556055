#include "ProjectInventory.h"

#include <algorithm>
#include <new>

#include "EdeColumns.h"
#include "FieldValue.h"
#include "NumberText.h"
#include "Printable.h"
#include "ProjectError.h"
#include "ProjectScript.h"
#include "PropertyDatatype.h"
#include "StandInDriver.h"
#include "StateTexts.h"
#include "UnitCode.h"

namespace workbench {

using standard::Datum;
using standard::ObjectId;
using standard::PropertyId;

namespace {

constexpr std::uint16_t DeviceType = 8;

bool ReadsValue(VariableConfig const& variable) {
    int const property = variable.property->bacnetNumber;
    return property == static_cast<int>(PropertyId::Present_Value) ||
           property == static_cast<int>(PropertyId::Average_Value);
}

// Adds what one variable says of its object.
class ObjectFiller {
public:
    ObjectFiller(ObjectRecord& filledObject, VariableConfig const& objectVariable)
        : object(filledObject), variable(objectVariable), point(objectVariable.point) {}

    void Fill() {
        SetName();
        SetText(PropertyId::Description, variable.description);
        List(EdeColumn::Keyname, point.keyName);
        List(EdeColumn::VendorAddress, point.vendorAddress);
        ListAnswer(EdeColumn::Settable, point.settable);
        ListAnswer(EdeColumn::SupportsCov, point.cov);
        SetStateTexts(variable.stateTexts, object);
        SetRange();
        SetNumber(EdeColumn::HighLimit, PropertyId::High_Limit, point.highLimit);
        SetNumber(EdeColumn::LowLimit, PropertyId::Low_Limit, point.lowLimit);
        SetValue(EdeColumn::Default, PropertyId::Relinquish_Default, point.defaultValue);
        if (point.notificationClass) {
            SetValue(EdeColumn::NotificationClass, PropertyId::Notification_Class,
                     std::to_string(*point.notificationClass));
        }
        SetUnit(variable.unit, object);
    }

private:
    void SetName() {
        bool const isNamed = !point.objectName.empty() || (ReadsValue(variable) && NameOf(object).empty());
        if (isNamed) {
            object.Set(PropertyId::Object_Name,
                       {TextDatum(point.objectName.empty() ? variable.name : point.objectName)});
        }
    }
    void SetText(PropertyId property, std::string const& text) {
        if (!text.empty()) {
            object.Set(property, {TextDatum(text)});
        }
    }
    void List(EdeColumn column, std::string const& text) {
        if (!text.empty()) {
            object.listed[HeadingOf(column)] = text;
        }
    }
    void ListAnswer(EdeColumn column, std::optional<bool> answer) {
        if (answer) {
            List(column, *answer ? "Y" : "N");
        }
    }
    void SetValue(EdeColumn column, PropertyId property, std::string const& text) {
        auto const datatype = standard::DatatypeOf(object.id.type, static_cast<std::uint32_t>(property));
        auto const value = datatype && !text.empty() ? DatumOf(text, *datatype) : std::nullopt;
        if (value) {
            object.Set(property, {*value});
        } else {
            List(column, text);
        }
    }
    void SetNumber(EdeColumn column, PropertyId property, std::optional<double> number) {
        if (number) {
            SetValue(column, property, tools::NumberText(*number));
        }
    }
    // The maximum of a multi-state object is the number of its states, of which the first ones have texts.
    void SetRange() {
        bool const hasStates =
            standard::DatatypeOf(object.id.type, static_cast<std::uint32_t>(PropertyId::Number_Of_States))
                .has_value();
        if (!hasStates) {
            SetNumber(EdeColumn::Minimum, PropertyId::Min_Pres_Value, point.minimum);
            SetNumber(EdeColumn::Maximum, PropertyId::Max_Pres_Value, point.maximum);
        } else if (point.maximum &&
                   *point.maximum > NumberOf(object, PropertyId::Number_Of_States).value_or(0)) {
            SetNumber(EdeColumn::Maximum, PropertyId::Number_Of_States, point.maximum);
        }
    }

    ObjectRecord& object;
    VariableConfig const& variable;
    PointFields const& point;
};

class ProjectReader {
public:
    void Add(BlockConfig const& block) {
        if (!block.deviceInstance) {
            throw ProjectError(
                Prefix(block.where.place) + "block " + tools::Quoted(block.name) +
                ": has no DeviceInstance, by which a point list names its device; add the instance "
                "of the Device object, such as DeviceInstance = 2001");
        }
        DeviceRecord& device = DeviceOf(*block.deviceInstance);
        if (NameOf(device.device).empty()) {
            device.device.Set(PropertyId::Object_Name, {TextDatum(block.name)});
        }
        for (VariableConfig const& variable : block.variables) {
            ObjectFiller(ObjectOf(device, variable), variable).Fill();
        }
    }

    Inventory Take() {
        Inventory inventory;
        for (auto& device : devices) {
            inventory.devices.push_back(std::move(device.second));
        }
        return inventory;
    }

private:
    DeviceRecord& DeviceOf(std::uint32_t instance) {
        DeviceRecord& device = devices[instance];
        device.device.id = {DeviceType, instance};
        return device;
    }

    ObjectRecord& ObjectOf(DeviceRecord& device, VariableConfig const& variable) {
        ObjectId const id{static_cast<std::uint16_t>(variable.objectType->bacnetNumber),
                          static_cast<std::uint32_t>(variable.objectNumber)};
        if (id == device.device.id) {
            return device.device;
        }
        auto const known = indices.emplace(std::pair(device.Instance(), id.Encoded()), device.objects.size());
        if (known.second) {
            device.objects.emplace_back();
            device.objects.back().id = id;
        }
        return device.objects[known.first->second];
    }

    std::map<std::uint32_t, DeviceRecord> devices;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> indices;
};

}  // namespace

Inventory InventoryOfProject(std::deque<BlockConfig> const& blocks) {
    ProjectReader reader;
    for (BlockConfig const& block : blocks) {
        reader.Add(block);
    }
    return reader.Take();
}

Inventory InventoryOfProject(std::string const& path, std::map<std::string, std::string> const& params) {
    ProjectScript script(path, params, {}, ProjectScript::OnMistake::Throw);
    if (!OpenStandInDriver(script.State()) || !script.InstallNames()) {
        throw std::bad_alloc();
    }
    script.Read(SourceText::FromFile(path), nullptr);
    return InventoryOfProject(script.Blocks());
}

}  // namespace workbench
