#include "CodeMaps.h"

#include <mutex>

namespace dorvel::BACnet {

std::map<int, ObjectTypeEnum> objectTypesMap;
std::map<int, PropertyIdentifierEnum> propertyTypesMap;

namespace {

std::mutex mapsMutex;

template <class Enum>
struct CodeRow {
    int configurationNumber;
    Enum code;
};

constexpr CodeRow<ObjectTypeEnum> ObjectTypeRows[] = {
    {0, ObjectTypeEnum::Accumulator},
    {1, ObjectTypeEnum::Analog_Input},
    {2, ObjectTypeEnum::Analog_Output},
    {3, ObjectTypeEnum::Analog_Value},
    {4, ObjectTypeEnum::Binary_Input},
    {5, ObjectTypeEnum::Binary_Output},
    {6, ObjectTypeEnum::Binary_Value},
    {7, ObjectTypeEnum::Integer_Value},
    {8, ObjectTypeEnum::Large_Analog_Value},
    {9, ObjectTypeEnum::Positive_Integer_Value},
    {10, ObjectTypeEnum::Averaging},
    {11, ObjectTypeEnum::Bitstring_Value},
    {12, ObjectTypeEnum::Date_Value},
    {13, ObjectTypeEnum::Datetime_Value},
    {14, ObjectTypeEnum::Time_Value},
    {15, ObjectTypeEnum::Lighting_Output},
    {16, ObjectTypeEnum::Loop},
    {17, ObjectTypeEnum::Multi_State_Input},
    {18, ObjectTypeEnum::Multi_State_Value},
    {19, ObjectTypeEnum::Multi_State_Output},
    {20, ObjectTypeEnum::Octetstring_Value},
    {21, ObjectTypeEnum::Pulse_Converter},
    {22, ObjectTypeEnum::Schedule},
};

constexpr CodeRow<PropertyIdentifierEnum> PropertyRows[] = {
    {0, PropertyIdentifierEnum::Present_Value},
    {1, PropertyIdentifierEnum::Setpoint},
    {2, PropertyIdentifierEnum::Feedback_Value},
    {3, PropertyIdentifierEnum::Low_Limit},
    {4, PropertyIdentifierEnum::High_Limit},
    {5, PropertyIdentifierEnum::Minimum_Value},
    {6, PropertyIdentifierEnum::Minimum_Value_Timestamp},
    {7, PropertyIdentifierEnum::Maximum_Value},
    {8, PropertyIdentifierEnum::Maximum_Value_Timestamp},
    {9, PropertyIdentifierEnum::Proportional_Constant},
    {10, PropertyIdentifierEnum::Integral_Constant},
    {11, PropertyIdentifierEnum::Derivative_Constant},
    {12, PropertyIdentifierEnum::Average_Value},
    {13, PropertyIdentifierEnum::Bias},
    {14, PropertyIdentifierEnum::Blink_Warn_Enable},
    {15, PropertyIdentifierEnum::Deadband},
    {16, PropertyIdentifierEnum::Status_Flags},
    {17, PropertyIdentifierEnum::Out_Of_Service},
    {18, PropertyIdentifierEnum::Reliability},
    {19, PropertyIdentifierEnum::Instantaneous_Power},
    {20, PropertyIdentifierEnum::Power},
    {21, PropertyIdentifierEnum::Resolution},
    {22, PropertyIdentifierEnum::Tracking_Value},
    {23, PropertyIdentifierEnum::Variance_Value},
    {24, PropertyIdentifierEnum::Window_Interval},
    {25, PropertyIdentifierEnum::Window_Samples},
    {26, PropertyIdentifierEnum::Is_UTC},
    {27, PropertyIdentifierEnum::Units},
    {28, PropertyIdentifierEnum::Description},
    {29, PropertyIdentifierEnum::Event_State},
    {30, PropertyIdentifierEnum::Weekly_Schedule},
    {31, PropertyIdentifierEnum::Exception_Schedule},
    {32, PropertyIdentifierEnum::Polarity},
    {33, PropertyIdentifierEnum::Scale},
    {34, PropertyIdentifierEnum::Scale_Factor},
    {35, PropertyIdentifierEnum::Adjust_Value},
    {36, PropertyIdentifierEnum::Count_Change_Time},
    {37, PropertyIdentifierEnum::Count_Before_Change},
};

}  // namespace

void InitObjectTypesMap() {
    std::lock_guard<std::mutex> const lock(mapsMutex);
    for (auto const& row : ObjectTypeRows) {
        objectTypesMap[row.configurationNumber] = row.code;
    }
    for (auto const& row : PropertyRows) {
        propertyTypesMap[row.configurationNumber] = row.code;
    }
}

ObjectTypeEnum GetBacnetObjectType(int configurationNumber) {
    std::lock_guard<std::mutex> const lock(mapsMutex);
    return objectTypesMap[configurationNumber];
}

PropertyIdentifierEnum GetPropertyType(int configurationNumber) {
    std::lock_guard<std::mutex> const lock(mapsMutex);
    return propertyTypesMap[configurationNumber];
}

}  // namespace dorvel::BACnet
