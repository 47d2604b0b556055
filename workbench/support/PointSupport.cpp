#include "PointSupport.h"

#include <algorithm>
#include <iterator>

#include "DriverTables.h"
#include "ObjectNames.h"
#include "PropertyNames.h"

namespace workbench {

namespace {

using Type = PropertyTypeEnum;

struct ElementRow {
    PropertyTypeEnum type;
    char const* element;
};

// As the driver stores its values; every other type is an enumeration.
constexpr ElementRow ElementRows[] = {
    {Type::Boolean, "Boolean"},
    {Type::Binary_PV, "Boolean"},
    {Type::Signed, "Int32"},
    {Type::Real, "Float"},
    {Type::Double, "Double"},
    {Type::Octet_String, "String"},
    {Type::Character_String, "String"},
    {Type::Bit_String, "String"},
    {Type::Exception_Schedule, "String"},
    {Type::Weekly_Schedule, "String"},
    {Type::Date, "DateTime"},
    {Type::Date_Time, "DateTime"},
    {Type::Status_Flags, "UInt64"},
};

char const* ElementOf(PropertyTypeEnum type) {
    auto const row = std::find_if(std::begin(ElementRows), std::end(ElementRows),
                                  [type](ElementRow const& candidate) { return candidate.type == type; });
    return row == std::end(ElementRows) ? "UInt32" : row->element;
}

// One property of an object type, in the driver's numbers and in words.
struct Point {
    ObjectTypeEnum objectType;
    PropertyIdentifierEnum property;
    std::string objectText;
    std::string propertyText;
};

std::string PropertyText(PropertyIdentifierEnum property) {
    return standard::PropertyText(static_cast<std::uint32_t>(property));
}

// "the object type calendar", but "object type 1023" where a number has no name.
std::string WithKind(std::string const& kind, std::string const& text) {
    return text.compare(0, kind.size(), kind) == 0 ? text : "the " + kind + ' ' + text;
}

std::string WhyUnknown(Point const& point) {
    if (!HasCode(point.objectType)) {
        return "the driver does not know " + WithKind("object type", point.objectText);
    }
    return HasCode(point.property) ? std::string()
                                   : "the driver does not know " + WithKind("property", point.propertyText);
}

std::string WhyNotRead(Point const& point) {
    PropertyIdentifierEnum const sent = SentAs(point.objectType, point.property);
    if (sent != point.property) {
        return "the driver requests " + PropertyText(sent) + " in place of " + point.propertyText;
    }
    if (!DecodedAs(point.objectType, point.property)) {
        return "the driver cannot decode " + point.propertyText + " of " + point.objectText;
    }
    return DecodedAs(point.objectType, PropertyIdentifierEnum::Status_Flags)
               ? std::string()
               : "the driver cannot decode status-flags of " + point.objectText +
                     ", which it always requests";
}

std::string WhyNotWritten(Point const& point) {
    DriverWrite const write = WriteOf(point.objectType, point.property);
    if (!write.refusal.empty()) {
        return "the driver does not write " + point.propertyText + " of " + point.objectText;
    }
    return write.property == point.property
               ? std::string()
               : "the driver writes " + PropertyText(write.property) + " in place of " + point.propertyText;
}

}  // namespace

PointSupport SupportOf(standard::ObjectId const& object, standard::PropertyId property) {
    auto const number = static_cast<std::uint32_t>(property);
    Point const point{static_cast<ObjectTypeEnum>(object.type), static_cast<PropertyIdentifierEnum>(number),
                      standard::ObjectTypeText(object.type), standard::PropertyText(number)};
    std::string const unknown = WhyUnknown(point);
    PointSupport support;
    support.whyNot = unknown.empty() ? WhyNotRead(point) : unknown;
    support.whyNotWritten = unknown.empty() ? WhyNotWritten(point) : unknown;
    support.canRead = support.whyNot.empty();
    support.canWrite = support.whyNotWritten.empty();
    if (support.canRead) {
        support.elementType = ElementOf(*DecodedAs(point.objectType, point.property));
    }
    return support;
}

}  // namespace workbench
