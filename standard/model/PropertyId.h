#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace standard {

// The known properties with their numbers of BACnetPropertyIdentifier (clause 21). In device files they have
// the same names in lower case: present_value.
#define BACNET_PROPERTIES(ROW)                  \
    ROW(Acked_Transitions, 0)                   \
    ROW(Action, 2)                              \
    ROW(Active_Text, 4)                         \
    ROW(Alarm_Value, 6)                         \
    ROW(Alarm_Values, 7)                        \
    ROW(APDU_Segment_Timeout, 10)               \
    ROW(APDU_Timeout, 11)                       \
    ROW(Application_Software_Version, 12)       \
    ROW(Bias, 14)                               \
    ROW(Change_Of_State_Count, 15)              \
    ROW(Change_Of_State_Time, 16)               \
    ROW(Notification_Class, 17)                 \
    ROW(Controlled_Variable_Reference, 19)      \
    ROW(Controlled_Variable_Units, 20)          \
    ROW(Controlled_Variable_Value, 21)          \
    ROW(COV_Increment, 22)                      \
    ROW(Daylight_Savings_Status, 24)            \
    ROW(Deadband, 25)                           \
    ROW(Derivative_Constant, 26)                \
    ROW(Derivative_Constant_Units, 27)          \
    ROW(Description, 28)                        \
    ROW(Device_Address_Binding, 30)             \
    ROW(Device_Type, 31)                        \
    ROW(Effective_Period, 32)                   \
    ROW(Elapsed_Active_Time, 33)                \
    ROW(Error_Limit, 34)                        \
    ROW(Event_Enable, 35)                       \
    ROW(Event_State, 36)                        \
    ROW(Exception_Schedule, 38)                 \
    ROW(Fault_Values, 39)                       \
    ROW(Feedback_Value, 40)                     \
    ROW(Firmware_Revision, 44)                  \
    ROW(High_Limit, 45)                         \
    ROW(Inactive_Text, 46)                      \
    ROW(Integral_Constant, 49)                  \
    ROW(Integral_Constant_Units, 50)            \
    ROW(Limit_Enable, 52)                       \
    ROW(List_Of_Object_Property_References, 54) \
    ROW(Local_Date, 56)                         \
    ROW(Local_Time, 57)                         \
    ROW(Location, 58)                           \
    ROW(Low_Limit, 59)                          \
    ROW(Manipulated_Variable_Reference, 60)     \
    ROW(Maximum_Output, 61)                     \
    ROW(Max_APDU_Length_Accepted, 62)           \
    ROW(Max_Pres_Value, 65)                     \
    ROW(Minimum_Off_Time, 66)                   \
    ROW(Minimum_On_Time, 67)                    \
    ROW(Minimum_Output, 68)                     \
    ROW(Min_Pres_Value, 69)                     \
    ROW(Model_Name, 70)                         \
    ROW(Notify_Type, 72)                        \
    ROW(Number_Of_APDU_Retries, 73)             \
    ROW(Number_Of_States, 74)                   \
    ROW(Object_Identifier, 75)                  \
    ROW(Object_List, 76)                        \
    ROW(Object_Name, 77)                        \
    ROW(Object_Property_Reference, 78)          \
    ROW(Object_Type, 79)                        \
    ROW(Out_Of_Service, 81)                     \
    ROW(Output_Units, 82)                       \
    ROW(Polarity, 84)                           \
    ROW(Present_Value, 85)                      \
    ROW(Priority_Array, 87)                     \
    ROW(Priority_For_Writing, 88)               \
    ROW(Proportional_Constant, 93)              \
    ROW(Proportional_Constant_Units, 94)        \
    ROW(Protocol_Object_Types_Supported, 96)    \
    ROW(Protocol_Services_Supported, 97)        \
    ROW(Protocol_Version, 98)                   \
    ROW(Reliability, 103)                       \
    ROW(Relinquish_Default, 104)                \
    ROW(Resolution, 106)                        \
    ROW(Segmentation_Supported, 107)            \
    ROW(Setpoint, 108)                          \
    ROW(Setpoint_Reference, 109)                \
    ROW(State_Text, 110)                        \
    ROW(Status_Flags, 111)                      \
    ROW(System_Status, 112)                     \
    ROW(Time_Delay, 113)                        \
    ROW(Time_Of_Active_Time_Reset, 114)         \
    ROW(Time_Of_State_Count_Reset, 115)         \
    ROW(Units, 117)                             \
    ROW(Update_Interval, 118)                   \
    ROW(UTC_Offset, 119)                        \
    ROW(Vendor_Identifier, 120)                 \
    ROW(Vendor_Name, 121)                       \
    ROW(Weekly_Schedule, 123)                   \
    ROW(Attempted_Samples, 124)                 \
    ROW(Average_Value, 125)                     \
    ROW(Event_Time_Stamps, 130)                 \
    ROW(Maximum_Value, 135)                     \
    ROW(Minimum_Value, 136)                     \
    ROW(Protocol_Revision, 139)                 \
    ROW(Valid_Samples, 146)                     \
    ROW(Window_Interval, 147)                   \
    ROW(Window_Samples, 148)                    \
    ROW(Maximum_Value_Timestamp, 149)           \
    ROW(Minimum_Value_Timestamp, 150)           \
    ROW(Variance_Value, 151)                    \
    ROW(Database_Revision, 155)                 \
    ROW(Tracking_Value, 164)                    \
    ROW(Max_Segments_Accepted, 167)             \
    ROW(Profile_Name, 168)                      \
    ROW(Schedule_Default, 174)                  \
    ROW(Adjust_Value, 176)                      \
    ROW(Count, 177)                             \
    ROW(Count_Before_Change, 178)               \
    ROW(Count_Change_Time, 179)                 \
    ROW(COV_Period, 180)                        \
    ROW(Input_Reference, 181)                   \
    ROW(Limit_Monitoring_Interval, 182)         \
    ROW(Prescale, 185)                          \
    ROW(Pulse_Rate, 186)                        \
    ROW(Scale, 187)                             \
    ROW(Scale_Factor, 188)                      \
    ROW(Update_Time, 189)                       \
    ROW(Value_Before_Change, 190)               \
    ROW(Value_Set, 191)                         \
    ROW(Value_Change_Time, 192)                 \
    ROW(Last_Restart_Reason, 196)               \
    ROW(Bit_Text, 343)                          \
    ROW(Is_UTC, 344)                            \
    ROW(Property_List, 371)                     \
    ROW(Serial_Number, 372)                     \
    ROW(Blink_Warn_Enable, 373)                 \
    ROW(Default_Fade_Time, 374)                 \
    ROW(Default_Ramp_Rate, 375)                 \
    ROW(Default_Step_Increment, 376)            \
    ROW(Egress_Time, 377)                       \
    ROW(In_Progress, 378)                       \
    ROW(Instantaneous_Power, 379)               \
    ROW(Lighting_Command, 380)                  \
    ROW(Lighting_Command_Default_Priority, 381) \
    ROW(Max_Actual_Value, 382)                  \
    ROW(Min_Actual_Value, 383)                  \
    ROW(Power, 384)                             \
    ROW(Transition, 385)                        \
    ROW(Egress_Active, 386)

enum class PropertyId : std::uint32_t {
#define BACNET_PROPERTY(name, number) name = number,
    BACNET_PROPERTIES(BACNET_PROPERTY)
#undef BACNET_PROPERTY
    // Each means several properties in ReadPropertyMultiple (clause 15.7).
    All = 8,
    Optional = 80,
    Required = 105
};

// The property with that name of a device file.
std::optional<PropertyId> PropertyOfName(std::string_view name);
// The name in device files, or the number as a text for an unknown property.
std::string NameOf(PropertyId id);

}  // namespace standard
