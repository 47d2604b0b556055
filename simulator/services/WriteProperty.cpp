#include "Refusal.h"
#include "Service.h"
#include "WriteLog.h"
#include "WriteRequest.h"
#include "WrittenValue.h"

namespace simulator {

namespace {

constexpr std::uint16_t LightingOutputType = 54;
constexpr double FullLight = 100;  // percent

[[noreturn]] void Fail(ErrorCode code, ErrorClass errorClass = ErrorClass::Property) {
    throw ServiceError{errorClass, code};
}

void CheckAccess(BacnetObject const& object, Property const& property, WriteRequest const& request,
                 Moment const& now) {
    if (request.index) {
        property.CheckIndex(*request.index);
    }
    bool const isOpen = property.access == Access::Writable ||
                        (property.access == Access::WhileOutOfService && object.IsOutOfService(now));
    bool const wantsResizing = request.index == 0u;
    if (!isOpen || wantsResizing) {
        Fail(ErrorCode::WriteAccessDenied);
    }
}

// Only lists and Exception_Schedule change their number of elements.
void CheckCount(Property const& property, bool isElement, std::size_t count) {
    if (isElement || property.shape == Shape::Single) {
        if (count != 1) {
            Fail(ErrorCode::InvalidDataType);
        }
        return;
    }
    bool const isFixed = property.shape == Shape::Array && property.datatype != Datatype::SpecialEvent;
    if (isFixed && count != property.values.size()) {
        Fail(ErrorCode::ValueOutOfRange);
    }
}

// The limits apply to Present_Value and to the default after a relinquish.
void CheckRange(BacnetObject const& object, PropertyId id, double value, Moment const& now) {
    auto const check = [&](ValuePtr const& limit, int direction) {
        if (limit && direction * value > direction * limit->Number(now)) {
            Fail(ErrorCode::ValueOutOfRange);
        }
    };
    if (id == PropertyId::Priority_For_Writing) {
        check(FixedUnsigned(1), -1);
        check(FixedUnsigned(PriorityArray::Lowest), 1);
    }
    if (id != PropertyId::Present_Value && id != PropertyId::Relinquish_Default) {
        return;
    }
    check(object.ValueOf(PropertyId::Min_Pres_Value), -1);
    check(object.ValueOf(PropertyId::Max_Pres_Value), 1);
    if (ValuePtr const states = object.ValueOf(PropertyId::Number_Of_States)) {
        check(FixedUnsigned(1), -1);
        check(states, 1);
    }
    if (object.Id().type == LightingOutputType && !(value >= 0 && value <= FullLight)) {
        Fail(ErrorCode::ValueOutOfRange);
    }
}

void CarryOut(WriteRequest const& request, Device& device, Moment const& now) {
    BacnetObject* const object = device.Find(request.object);
    if (!object) {
        Fail(ErrorCode::UnknownObject, ErrorClass::Object);
    }
    Property const* const property = object->Find(request.property);
    if (!property) {
        Fail(ErrorCode::UnknownProperty);
    }
    CheckAccess(*object, *property, request, now);
    bool const isCommand = request.property == PropertyId::Present_Value && object->IsCommandable();
    std::uint8_t const priority = request.priority.value_or(PriorityArray::Lowest);
    bool const isNull = request.value == Octets(1, '\0');
    if (isCommand && isNull) {
        object->Command(priority, nullptr);
        return;
    }
    auto values = WrittenValues(property->datatype, request.value, device.Settings().isLenient);
    CheckCount(*property, request.index.has_value(), values.size());
    for (ValuePtr const& value : values) {
        CheckRange(*object, request.property, value->Number(now), now);
    }
    if (isCommand) {
        object->Command(priority, values.front());
    } else {
        object->Write(request.property, request.index, std::move(values), now);
    }
}

}  // namespace

void WriteProperty(TagReader& parameters, Device& device, Moment const& now, TagWriter&) {
    WriteLog log(device.GetWriteObserver());
    try {
        WriteRequest const request = WriteRequest::Decode(parameters);
        log.Asked(request);
        CarryOut(request, device, now);
        log.Done();
    } catch (Reject const& reject) {
        log.Rejected(reject.reason);
        throw;
    } catch (ServiceError const& error) {
        log.Refused(error.errorCode);
        throw;
    }
}

}  // namespace simulator
