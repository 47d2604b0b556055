#include "ObjectTypeRows.h"

// The Device object (clause 12.11). Object_List, Protocol_Object_Types_Supported,
// Protocol_Services_Supported and Max_Segments_Accepted are added by the device, which knows them.
namespace standard {

namespace rows {

namespace {

constexpr PropertyRow DeviceRows[] = {
    Required(P::System_Status, D::DeviceStatus, "'operational'"),
    Required(P::Vendor_Name, D::CharacterString, "'Simulated'"),
    Required(P::Vendor_Identifier, D::Unsigned, "999"),
    Required(P::Model_Name, D::CharacterString, "'bacnet-simulator'"),
    Required(P::Firmware_Revision, D::CharacterString, "'1'"),
    Required(P::Application_Software_Version, D::CharacterString, "'1'"),
    Optional(P::Location, D::CharacterString),
    Optional(P::Description, D::CharacterString, "''"),
    Required(P::Protocol_Version, D::Unsigned, "1"),
    Required(P::Protocol_Revision, D::Unsigned, "14"),
    Required(P::Protocol_Services_Supported, D::BitString, nullptr),
    Required(P::Max_APDU_Length_Accepted, D::Unsigned, "1476"),
    Required(P::Segmentation_Supported, D::Segmentation, "'segmented-transmit'"),
    Optional(P::Max_Segments_Accepted, D::Unsigned),
    Optional(P::Local_Date, D::Date, "clock()"),
    Optional(P::Local_Time, D::Time, "clock()"),
    Optional(P::UTC_Offset, D::Signed),
    Optional(P::Daylight_Savings_Status, D::Boolean),
    Required(P::APDU_Segment_Timeout, D::Unsigned, "2000"),
    Required(P::APDU_Timeout, D::Unsigned, "3000"),
    Required(P::Number_Of_APDU_Retries, D::Unsigned, "3"),
    Required(P::Device_Address_Binding, D::Any, "{}", Shape::List),
    Required(P::Database_Revision, D::Unsigned, "1"),
    Optional(P::Last_Restart_Reason, D::RestartReason),
    Optional(P::Serial_Number, D::CharacterString),
    Optional(P::Profile_Name, D::CharacterString),
};

constexpr ObjectType TypeRow{8, "device", {Group(DeviceRows), {}, {}, {}}};

}  // namespace

}  // namespace rows

ObjectType const& DeviceObjectType() {
    return rows::TypeRow;
}

}  // namespace standard
