#include "Refusal.h"
#include "Service.h"
#include "WriteLog.h"
#include "WriteRequest.h"
#include "WrittenValue.h"

namespace simulator {

namespace {

constexpr std::uint16_t kLightingOutputType = 54;
constexpr double kFullLight = 100;  // percent

[[noreturn]] void fail(ErrorCode code, ErrorClass errorClass = ErrorClass::Property) {
    throw ServiceError{errorClass, code};
}

void checkAccess(BacnetObject const& object, Property const& property, WriteRequest const& request,
                 Moment const& now) {
    if (request.index) {
        property.checkIndex(*request.index);
    }
    bool const isOpen = property.access == Access::Writable ||
                        (property.access == Access::WhileOutOfService && object.isOutOfService(now));
    bool const wantsResizing = request.index == 0u;
    if (!isOpen || wantsResizing) {
        fail(ErrorCode::WriteAccessDenied);
    }
}

// Only lists and Exception_Schedule change their number of elements.
void checkCount(Property const& property, bool isElement, std::size_t count) {
    if (isElement || property.shape == Shape::Single) {
        if (count != 1) {
            fail(ErrorCode::InvalidDataType);
        }
        return;
    }
    bool const isFixed = property.shape == Shape::Array && property.datatype != Datatype::SpecialEvent;
    if (isFixed && count != property.values.size()) {
        fail(ErrorCode::ValueOutOfRange);
    }
}

// The limits are those of Present_Value and of what it may fall back to.
void checkRange(BacnetObject const& object, PropertyId id, double value, Moment const& now) {
    auto const check = [&](ValuePtr const& limit, int direction) {
        if (limit && direction * value > direction * limit->number(now)) {
            fail(ErrorCode::ValueOutOfRange);
        }
    };
    if (id == PropertyId::Priority_For_Writing) {
        check(fixedUnsigned(1), -1);
        check(fixedUnsigned(PriorityArray::kLowest), 1);
    }
    if (id != PropertyId::Present_Value && id != PropertyId::Relinquish_Default) {
        return;
    }
    check(object.valueOf(PropertyId::Min_Pres_Value), -1);
    check(object.valueOf(PropertyId::Max_Pres_Value), 1);
    if (ValuePtr const states = object.valueOf(PropertyId::Number_Of_States)) {
        check(fixedUnsigned(1), -1);
        check(states, 1);
    }
    if (object.id().type == kLightingOutputType && !(value >= 0 && value <= kFullLight)) {
        fail(ErrorCode::ValueOutOfRange);
    }
}

void carryOut(WriteRequest const& request, Device& device, Moment const& now) {
    BacnetObject* const object = device.find(request.object);
    if (!object) {
        fail(ErrorCode::UnknownObject, ErrorClass::Object);
    }
    Property const* const property = object->find(request.property);
    if (!property) {
        fail(ErrorCode::UnknownProperty);
    }
    checkAccess(*object, *property, request, now);
    bool const isCommand = request.property == PropertyId::Present_Value && object->isCommandable();
    std::uint8_t const priority = request.priority.value_or(PriorityArray::kLowest);
    bool const isNull = request.value == Octets(1, '\0');
    if (isCommand && isNull) {
        object->command(priority, nullptr);
        return;
    }
    auto values = writtenValues(property->datatype, request.value, device.settings().isLenient);
    checkCount(*property, request.index.has_value(), values.size());
    for (ValuePtr const& value : values) {
        checkRange(*object, request.property, value->number(now), now);
    }
    if (isCommand) {
        object->command(priority, values.front());
    } else {
        object->write(request.property, request.index, std::move(values), now);
    }
}

}  // namespace

void writeProperty(TagReader& parameters, Device& device, Moment const& now, TagWriter&) {
    WriteLog log(device.writeObserver());
    try {
        WriteRequest const request = WriteRequest::decode(parameters);
        log.asked(request);
        carryOut(request, device, now);
        log.done();
    } catch (Reject const& reject) {
        log.rejected(reject.reason);
        throw;
    } catch (ServiceError const& error) {
        log.refused(error.errorCode);
        throw;
    }
}

}  // namespace simulator
