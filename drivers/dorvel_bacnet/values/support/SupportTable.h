#pragma once

#include <initializer_list>

#include "ObjectTypeEnum.h"
#include "PropertyIdentifierEnum.h"
#include "PropertyTypeEnum.h"

// The properties that the driver reads and writes, by object type. Each line lists every pair of one of
// its object types and one of its properties: 445 pairs, none of them twice. These depart from the types and
// properties of ASHRAE 135 clause 12; installed systems rely on them:
//
// - Status_Flags is a number of all its octets, including that of the unused bits (a bit string, clause 21);
// - the Present_Value of a calendar is an Unsigned (a Boolean), that of a schedule always a Real (any type);
// - the Feedback_Value of a binary output is a Real (a BACnetBinaryPV), the Default_Fade_Time of a lighting
//   output a Real (an Unsigned);
// - Object_Identifier has a type without a parser;
// - every object type of the common lines has Units, and a binary input has a Relinquish_Default;
// - notification classes and lighting outputs have their own lines only.
namespace support_table {

using Object = ObjectTypeEnum;
using Property = PropertyIdentifierEnum;
using Type = PropertyTypeEnum;

struct Line {
    std::initializer_list<Object> objects;
    Type type;
    std::initializer_list<Property> properties;
};

// The object types that have the common properties.
inline constexpr std::initializer_list<Object> Common = {
    Object::Accumulator,
    Object::Analog_Input,
    Object::Analog_Output,
    Object::Analog_Value,
    Object::Averaging,
    Object::Binary_Input,
    Object::Binary_Output,
    Object::Binary_Value,
    Object::Bitstring_Value,
    Object::Characterstring_Value,
    Object::Calendar,
    Object::Command,
    Object::Date_Value,
    Object::Datetime_Value,
    Object::Device,
    Object::File,
    Object::Integer_Value,
    Object::Positive_Integer_Value,
    Object::Event_Enrollment,
    Object::Large_Analog_Value,
    Object::Loop,
    Object::Multi_State_Input,
    Object::Multi_State_Output,
    Object::Multi_State_Value,
    Object::Pulse_Converter,
    Object::Trend_Log,
    Object::Life_Safety_Point,
    Object::Life_Safety_Zone,
    Object::Octetstring_Value,
    Object::Time_Value,
    Object::Schedule,
};

// clang-format off
inline constexpr Line Lines[] = {
    {Common, Type::Object_Identifier, {Property::Object_Identifier}},
    {Common, Type::Object_Type,       {Property::Object_Type}},
    {Common, Type::Character_String,  {Property::Object_Name, Property::Profile_Name, Property::Description}},
    {Common, Type::Boolean,           {Property::Out_Of_Service}},
    {Common, Type::Status_Flags,      {Property::Status_Flags}},
    {Common, Type::Event_State,       {Property::Event_State}},
    {Common, Type::Reliability,       {Property::Reliability}},
    {Common, Type::Engineering_Units, {Property::Units}},

    {{Object::Analog_Input}, Type::Real,
     {Property::Present_Value, Property::Max_Pres_Value, Property::Min_Pres_Value}},
    {{Object::Analog_Output, Object::Analog_Value}, Type::Real,
     {Property::Present_Value, Property::Max_Pres_Value, Property::Min_Pres_Value,
      Property::Relinquish_Default}},

    {{Object::Binary_Input, Object::Binary_Output, Object::Binary_Value}, Type::Binary_PV,
     {Property::Present_Value, Property::Alarm_Value, Property::Relinquish_Default}},
    {{Object::Binary_Input, Object::Binary_Output, Object::Binary_Value}, Type::Polarity,
     {Property::Polarity}},
    {{Object::Binary_Input, Object::Binary_Output, Object::Binary_Value}, Type::Character_String,
     {Property::Inactive_Text, Property::Active_Text, Property::Device_Type}},
    {{Object::Binary_Input, Object::Binary_Output, Object::Binary_Value}, Type::Unsigned,
     {Property::Elapsed_Active_Time}},
    {{Object::Binary_Output}, Type::Real, {Property::Feedback_Value}},

    {{Object::Calendar}, Type::Unsigned, {Property::Present_Value}},

    {{Object::Command}, Type::Boolean, {Property::In_Process, Property::All_Writes_Successful}},

    {{Object::Device}, Type::Unsigned,
     {Property::Protocol_Revision, Property::Protocol_Version, Property::Vendor_Identifier,
      Property::Max_APDU_Length_Accepted, Property::Database_Revision, Property::Number_Of_APDU_Retries,
      Property::APDU_Timeout, Property::APDU_Segment_Timeout, Property::Max_Segments_Accepted}},
    {{Object::Device}, Type::Character_String,
     {Property::Vendor_Name, Property::Model_Name, Property::Firmware_Revision,
      Property::Application_Software_Version, Property::Location}},
    {{Object::Device}, Type::Device_Status,  {Property::System_Status}},
    {{Object::Device}, Type::Segmentation,   {Property::Segmentation_Supported}},
    {{Object::Device}, Type::Restart_Reason, {Property::Last_Restart_Reason}},

    {{Object::File}, Type::Unsigned, {Property::File_Size}},
    {{Object::File}, Type::Boolean,  {Property::Archive, Property::Read_Only}},

    {{Object::Loop}, Type::Real,
     {Property::Present_Value, Property::Controlled_Variable_Value, Property::Setpoint,
      Property::Proportional_Constant, Property::Integral_Constant, Property::Derivative_Constant}},
    {{Object::Loop}, Type::Engineering_Units,
     {Property::Output_Units, Property::Controlled_Variable_Units}},
    {{Object::Loop}, Type::Unsigned, {Property::Priority_For_Writing}},

    {{Object::Multi_State_Input}, Type::Unsigned, {Property::Present_Value, Property::Number_Of_States}},
    {{Object::Multi_State_Output, Object::Multi_State_Value}, Type::Unsigned,
     {Property::Present_Value, Property::Relinquish_Default, Property::Number_Of_States}},

    {{Object::Notification_Class}, Type::Unsigned, {Property::Notification_Class}},
    {{Object::Notification_Class}, Type::Character_String,
     {Property::Object_Name, Property::Description, Property::Profile_Name}},

    {{Object::Schedule}, Type::Real,               {Property::Present_Value}},
    {{Object::Schedule}, Type::Weekly_Schedule,    {Property::Weekly_Schedule}},
    {{Object::Schedule}, Type::Exception_Schedule, {Property::Exception_Schedule}},

    {{Object::Averaging}, Type::Real,
     {Property::Minimum_Value, Property::Average_Value, Property::Maximum_Value}},
    {{Object::Averaging}, Type::Unsigned,
     {Property::Attempted_Samples, Property::Valid_Samples, Property::Window_Interval,
      Property::Window_Samples}},

    {{Object::Trend_Log}, Type::Boolean, {Property::Enable, Property::Stop_When_Full}},
    {{Object::Trend_Log}, Type::Unsigned,
     {Property::Buffer_Size, Property::Record_Count, Property::Total_Record_Count}},

    {{Object::Life_Safety_Point, Object::Life_Safety_Zone}, Type::Life_Safety_State,
     {Property::Present_Value, Property::Tracking_Value}},
    {{Object::Life_Safety_Point, Object::Life_Safety_Zone}, Type::Life_Safety_Mode, {Property::Mode}},
    {{Object::Life_Safety_Point, Object::Life_Safety_Zone}, Type::Silenced_State, {Property::Silenced}},
    {{Object::Life_Safety_Point, Object::Life_Safety_Zone}, Type::Life_Safety_Operation,
     {Property::Operation_Expected}},

    {{Object::Accumulator}, Type::Unsigned, {Property::Present_Value, Property::Max_Pres_Value}},

    {{Object::Pulse_Converter}, Type::Real,
     {Property::Present_Value, Property::Scale_Factor, Property::Adjust_Value}},
    {{Object::Pulse_Converter}, Type::Unsigned, {Property::Count, Property::Count_Before_Change}},

    {{Object::Bitstring_Value},        Type::Bit_String,       {Property::Present_Value}},
    {{Object::Characterstring_Value},  Type::Character_String, {Property::Present_Value}},
    {{Object::Date_Value},     Type::Date,         {Property::Present_Value, Property::Relinquish_Default}},
    {{Object::Datetime_Value}, Type::Date_Time,    {Property::Present_Value, Property::Relinquish_Default}},
    {{Object::Integer_Value},          Type::Signed,           {Property::Present_Value}},
    {{Object::Large_Analog_Value},     Type::Double,           {Property::Present_Value}},
    {{Object::Octetstring_Value}, Type::Octet_String,
     {Property::Present_Value, Property::Relinquish_Default}},
    {{Object::Positive_Integer_Value}, Type::Unsigned,         {Property::Present_Value}},
    {{Object::Time_Value},     Type::Time,         {Property::Present_Value, Property::Relinquish_Default}},

    {{Object::Lighting_Output}, Type::Real,
     {Property::Present_Value, Property::Tracking_Value, Property::Relinquish_Default,
      Property::Default_Fade_Time, Property::Default_Ramp_Rate, Property::Default_Step_Increment}},
    {{Object::Lighting_Output}, Type::Boolean, {Property::Blink_Warn_Enable, Property::Egress_Active}},
    {{Object::Lighting_Output}, Type::Unsigned,
     {Property::Egress_Time, Property::Lighting_Command_Default_Priority}},
};
// clang-format on

}  // namespace support_table
