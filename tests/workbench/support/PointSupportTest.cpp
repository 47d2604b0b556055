#include "PointSupport.h"

#include <gtest/gtest.h>

#include <memory>

#include "BinaryValue.h"
#include "BitStringValue.h"
#include "BooleanValue.h"
#include "CharacterStringValue.h"
#include "CodeMaps.h"
#include "DateTimeValue.h"
#include "DateValue.h"
#include "DoubleValue.h"
#include "DriverTables.h"
#include "EnumValue.h"
#include "IntValue.h"
#include "OctetStringValue.h"
#include "RealValue.h"
#include "StoreValue.h"
#include "TimeValue.h"
#include "TypeName.h"
#include "UintValue.h"

using namespace workbench;
using standard::PropertyId;

namespace {

using Type = PropertyTypeEnum;

std::unique_ptr<CPropertyValue> ValueOf(PropertyTypeEnum type) {
    switch (type) {
        case Type::Boolean:
            return std::make_unique<BooleanValue>(true);
        case Type::Unsigned:
            return std::make_unique<UintValue>(1);
        case Type::Signed:
            return std::make_unique<IntValue>(1);
        case Type::Real:
            return std::make_unique<RealValue>(1.0f);
        case Type::Double:
            return std::make_unique<DoubleValue>(1.0);
        case Type::Octet_String:
            return std::make_unique<OctetStringValue>(std::vector<char>{1});
        case Type::Character_String:
        case Type::Exception_Schedule:
        case Type::Weekly_Schedule:
            return std::make_unique<CharacterStringValue>("text", EncodingTypeEnum::Utf8);
        case Type::Bit_String:
            return std::make_unique<BitStringValue>(std::vector<bool>{true});
        case Type::Time:
            return std::make_unique<TimeValue>(char(1), char(2), char(3), char(4));
        case Type::Date:
            return std::make_unique<DateValue>(char(124), char(3), char(15), char(5));
        case Type::Date_Time:
            return std::make_unique<DateTimeValue>(Date(124, 3, 15, 5), Time(1, 0, 0, 0));
        case Type::Binary_PV:
            return std::make_unique<BinaryValue>(BACnetBinaryPV::Active);
        default:
            return std::make_unique<EnumValue>(1u);
    }
}

std::string DeliveredAs(PropertyTypeEnum type) {
    OpcUa_VariantHlp variant;
    return dorvel::BACnet::StoreValue(type, *ValueOf(type), 0, variant)
               ? TypeName(static_cast<_OpcUa_BuiltInType>(variant.Datatype))
               : std::string();
}

standard::ObjectId First(ObjectTypeEnum type) {
    return {static_cast<std::uint16_t>(type), 1};
}

}  // namespace

TEST(PointSupport, ElementTypesAreThoseThatTheDriverDelivers) {
    dorvel::BACnet::InitObjectTypesMap();
    int readable = 0;
    for (auto const& [objectCode, objectType] : dorvel::BACnet::objectTypesMap) {
        for (auto const& [propertyCode, property] : dorvel::BACnet::propertyTypesMap) {
            PointSupport const support = SupportOf(First(objectType), static_cast<PropertyId>(property));
            EXPECT_EQ(support.canRead, !support.elementType.empty());
            EXPECT_EQ(support.canRead, support.whyNot.empty());
            EXPECT_EQ(support.canWrite, support.whyNotWritten.empty());
            if (support.canRead) {
                ++readable;
                EXPECT_EQ(support.elementType, DeliveredAs(*DecodedAs(objectType, property)))
                    << objectCode << ' ' << propertyCode;
            }
        }
    }
    // 22 object types with 6 common properties, 21 of them with a present value, and 18 further pairs.
    EXPECT_EQ(readable, 22 * 6 + 21 + 18);
}

TEST(PointSupport, PresentValuesHaveTheTypesOfTheManual) {
    std::map<ObjectTypeEnum, std::string> const types = {
        {ObjectTypeEnum::Analog_Input, "Float"},        {ObjectTypeEnum::Schedule, "Float"},
        {ObjectTypeEnum::Large_Analog_Value, "Double"}, {ObjectTypeEnum::Binary_Value, "Boolean"},
        {ObjectTypeEnum::Multi_State_Input, "UInt32"},  {ObjectTypeEnum::Integer_Value, "Int32"},
        {ObjectTypeEnum::Bitstring_Value, "String"},    {ObjectTypeEnum::Date_Value, "DateTime"},
        {ObjectTypeEnum::Time_Value, "UInt32"},         {ObjectTypeEnum::Octetstring_Value, "String"},
    };
    for (auto const& [type, element] : types) {
        EXPECT_EQ(SupportOf(First(type)).elementType, element);
    }
}

TEST(PointSupport, SaysWhyTheDriverCannotReadAPoint) {
    auto const why = [](std::uint16_t type, PropertyId property = PropertyId::Present_Value) {
        return SupportOf({type, 1}, property).whyNot;
    };
    EXPECT_EQ(why(0), "");
    EXPECT_EQ(why(18), "the driver cannot decode present-value of averaging");
    EXPECT_EQ(why(18, PropertyId::Average_Value), "");
    EXPECT_EQ(why(54), "the driver cannot decode status-flags of lighting-output, which it always requests");
    EXPECT_EQ(why(54, static_cast<PropertyId>(373)),
              "the driver requests units in place of blink-warn-enable");
    // It could decode these, but no project can name them.
    EXPECT_EQ(why(40), "the driver does not know the object type characterstring-value");
    EXPECT_EQ(why(0, PropertyId::Min_Pres_Value), "the driver does not know the property min-pres-value");
    EXPECT_EQ(why(1023), "the driver does not know object type 1023");
    EXPECT_EQ(why(65535, static_cast<PropertyId>(4194303)), "the driver does not know object type 65535");
}

TEST(PointSupport, SaysWhyTheDriverCannotWriteAPoint) {
    auto const why = [](std::uint16_t type, PropertyId property = PropertyId::Present_Value) {
        return SupportOf({type, 1}, property).whyNotWritten;
    };
    EXPECT_EQ(why(1), "");
    EXPECT_EQ(why(17, PropertyId::Weekly_Schedule), "");
    EXPECT_EQ(why(39), "the driver does not write present-value of bitstring-value");
    EXPECT_EQ(why(2, PropertyId::Out_Of_Service),
              "the driver writes present-value in place of out-of-service");
    EXPECT_EQ(why(6), "the driver does not know the object type calendar");
}
