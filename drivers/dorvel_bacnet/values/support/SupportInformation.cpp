#include "SupportInformation.h"

#include "BinaryValue.h"
#include "BitStringValue.h"
#include "BooleanValue.h"
#include "CharacterStringValue.h"
#include "DateTimeValue.h"
#include "DateValue.h"
#include "DoubleValue.h"
#include "EnumValue.h"
#include "ExceptionScheduleValue.h"
#include "IntValue.h"
#include "OctetStringValue.h"
#include "RealValue.h"
#include "SupportTable.h"
#include "TimeValue.h"
#include "UintValue.h"
#include "WeeklyScheduleValue.h"

namespace {

template <typename Parser>
std::unique_ptr<PropertyValueParser> Make() {
    return std::make_unique<Parser>();
}

struct ParserRow {
    PropertyTypeEnum type;
    std::unique_ptr<PropertyValueParser> (*make)();
};

using Type = PropertyTypeEnum;

// The parser of each type. A later row for a type replaces an earlier one.
constexpr ParserRow ParserRows[] = {
    {Type::Boolean, Make<BooleanValueParser>},
    {Type::Real, Make<RealValueParser>},
    {Type::Double, Make<DoubleValueParser>},
    {Type::Binary_PV, Make<BinaryValueParser>},
    {Type::Signed, Make<IntValueParser>},
    {Type::Unsigned, Make<UintValueParser>},
    {Type::Character_String, Make<CharacterStringValueParser>},
    {Type::Octet_String, Make<OctetStringValueParser>},
    {Type::Time, Make<TimeValueParser>},
    {Type::Date, Make<DateValueParser>},
    {Type::Date_Time, Make<DateTimeValueParser>},
    {Type::Object_Type, Make<EnumValueParser>},
    {Type::Life_Safety_State, Make<EnumValueParser>},
    {Type::Life_Safety_Mode, Make<EnumValueParser>},
    {Type::Silenced_State, Make<EnumValueParser>},
    {Type::Life_Safety_Operation, Make<EnumValueParser>},
    {Type::Engineering_Units, Make<EnumValueParser>},
    {Type::Polarity, Make<EnumValueParser>},
    {Type::Event_State, Make<EnumValueParser>},
    {Type::Reliability, Make<EnumValueParser>},
    {Type::Device_Status, Make<EnumValueParser>},
    {Type::Segmentation, Make<EnumValueParser>},
    {Type::Bit_String, Make<BitStringValueParser>},
    {Type::Restart_Reason, Make<EnumValueParser>},
    {Type::Status_Flags, Make<EnumValueParser>},
    {Type::Spare_Enumeration, Make<EnumValueParser>},
    {Type::Exception_Schedule, Make<EnumValueParser>},
    {Type::Weekly_Schedule, Make<WeeklyScheduleValueParser>},
    {Type::Exception_Schedule, Make<ExceptionScheduleValueParser>},
};

}  // namespace

std::unique_ptr<SupportInformation> SupportInformation::m_instance(new SupportInformation);

SupportInformation::SupportInformation() {
    for (support_table::Line const& line : support_table::Lines) {
        for (ObjectTypeEnum const object : line.objects) {
            for (PropertyIdentifierEnum const property : line.properties) {
                properties.emplace(ObjPropKey(object, property), PropertyInfo(line.type));
            }
        }
    }
    for (ParserRow const& row : ParserRows) {
        parsers[static_cast<std::size_t>(row.type)] = row.make();
    }
}

SupportInformation* SupportInformation::GetInstance() {
    return m_instance.get();
}

PropertyInfo SupportInformation::GetPropertyInfo(ObjectTypeEnum objectType,
                                                 PropertyIdentifierEnum property) const {
    auto const found = properties.find(ObjPropKey(objectType, property));
    if (found == properties.end()) {
        throw SupportInformationException("Support Information not found");
    }
    return found->second;
}

PropertyValueParser* SupportInformation::GetPropertyParser(PropertyTypeEnum type) const {
    auto const number = static_cast<std::size_t>(type);
    return number < parsers.size() ? parsers[number].get() : nullptr;
}
