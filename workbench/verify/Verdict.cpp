#include "Verdict.h"

namespace workbench {

std::vector<VerdictRow> const& Verdicts() {
    static std::vector<VerdictRow> const rows = {
        {Verdict::Agrees, "agrees", false, "The driver has the value that the device has."},
        {Verdict::Moving, "moving", false,
         "The value changed during the comparison, and the driver's value fits the change."},
        {Verdict::Differs, "differs", true, "The driver has another value than the device."},
        {Verdict::LosesInformation, "loses information", true,
         "The driver's value is what its decoding or the type of the variable makes of the device's value: "
         "sign, bits above 32, fraction, enumeration, text or unspecified parts are lost."},
        {Verdict::NoValue, "no value", true,
         "The device has the value, and the variable does not get it. The explanation has the cause."},
        {Verdict::NotDecoded, "not decoded by the driver", true,
         "The driver cannot decode this property of this object type, or that of another variable of the "
         "same object. None of the object's variables gets a value."},
        {Verdict::NoSuchObject, "no such object", true,
         "The device does not have the object. For most types the driver shows a small number with quality "
         "Good, which is not a value of the device."},
        {Verdict::NoSuchProperty, "no such property", true,
         "The object does not have the property. For most types the driver shows a small number with "
         "quality Good, which is not a value of the device."},
        {Verdict::DeviceError, "device error", true,
         "The device answers with another error, whose class and code are stated."},
        {Verdict::DeviceRejects, "device rejects", true, "The device answers with a Reject."},
        {Verdict::DeviceAborts, "device aborts", true, "The device answers with an Abort."},
        {Verdict::UnreadableAnswer, "unreadable answer", true,
         "The device answers, and the answer is not BACnet by the standard."},
        {Verdict::Late, "late", true,
         "The device answers later than the 1000 ms that the driver waits. The measured time is stated."},
        {Verdict::DeviceSilent, "device silent", true, "The device does not answer."},
        {Verdict::NotVerified, "not verified", true, "The run ended before this point was compared."},
    };
    return rows;
}

VerdictRow const& RowOf(Verdict verdict) {
    return Verdicts()[static_cast<std::size_t>(verdict)];
}

std::vector<RemarkRow> const& Remarks() {
    static std::vector<RemarkRow> const rows = {
        {Remark::InAlarm, "in alarm", "The object has an event state other than normal."},
        {Remark::Fault, "fault", "The object reports a fault; the reliability states which."},
        {Remark::Overridden, "overridden", "The value is overridden at the device, for example by a switch."},
        {Remark::NotInService, "not in service",
         "The object is out of service: its value is not the process."},
        {Remark::HundredthsAsTenths, "hundredths as tenths",
         "The driver counts the hundredths of a second of a Time as tenths."},
        {Remark::LocalTime, "local time as UTC",
         "The driver takes a date and time of the device, which is local, as UTC."},
    };
    return rows;
}

RemarkRow const& RowOf(Remark remark) {
    return Remarks()[static_cast<std::size_t>(remark)];
}

std::vector<Remark> RemarksOfFlags(std::string const& bits) {
    static constexpr Remark Order[] = {Remark::InAlarm, Remark::Fault, Remark::Overridden,
                                       Remark::NotInService};
    std::vector<Remark> remarks;
    for (std::size_t i = 0; i < std::size(Order) && i < bits.size(); ++i) {
        if (bits[i] == '1') {
            remarks.push_back(Order[i]);
        }
    }
    return remarks;
}

}  // namespace workbench
