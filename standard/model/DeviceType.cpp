#include "ObjectTypeRows.h"

// The Device object (clause 12.11). Object_List and Protocol_Object_Types_Supported are added by the
// device, which knows them.
namespace standard {

namespace rows {

namespace {

constexpr PropertyRow kDevice[] = {
    required(P::System_Status, D::DeviceStatus, "'operational'"),
    required(P::Vendor_Name, D::CharacterString, "'Simulated'"),
    required(P::Vendor_Identifier, D::Unsigned, "999"),
    required(P::Model_Name, D::CharacterString, "'bacnet-simulator'"),
    required(P::Firmware_Revision, D::CharacterString, "'1'"),
    required(P::Application_Software_Version, D::CharacterString, "'1'"),
    optional(P::Location, D::CharacterString),
    optional(P::Description, D::CharacterString, "''"),
    required(P::Protocol_Version, D::Unsigned, "1"),
    required(P::Protocol_Revision, D::Unsigned, "14"),
    // Bit 12 ReadProperty, 14 ReadPropertyMultiple, 15 WriteProperty, 34 Who-Is.
    required(P::Protocol_Services_Supported, D::BitString, "'0000000000001011000000000000000000100000'"),
    required(P::Max_APDU_Length_Accepted, D::Unsigned, "1476"),
    required(P::Segmentation_Supported, D::Segmentation, "'segmented-transmit'"),
    optional(P::Max_Segments_Accepted, D::Unsigned),
    optional(P::Local_Date, D::Date, "clock()"),
    optional(P::Local_Time, D::Time, "clock()"),
    optional(P::UTC_Offset, D::Signed),
    optional(P::Daylight_Savings_Status, D::Boolean),
    required(P::APDU_Segment_Timeout, D::Unsigned, "2000"),
    required(P::APDU_Timeout, D::Unsigned, "3000"),
    required(P::Number_Of_APDU_Retries, D::Unsigned, "3"),
    required(P::Device_Address_Binding, D::Any, "{}", Shape::List),
    required(P::Database_Revision, D::Unsigned, "1"),
    optional(P::Last_Restart_Reason, D::RestartReason),
    optional(P::Serial_Number, D::CharacterString),
    optional(P::Profile_Name, D::CharacterString),
};

constexpr ObjectType kType{8, "device", {group(kDevice), {}, {}, {}}};

}  // namespace

}  // namespace rows

ObjectType const& deviceObjectType() {
    return rows::kType;
}

}  // namespace standard
