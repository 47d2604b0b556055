#include "ConstructedReader.h"

#include "Content.h"
#include "Mistake.h"
#include "PrimitiveReader.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

// {in_alarm = true} or "1000"
void statusFlags(ScriptValue const& value, TagWriter& writer) {
    std::string bits = "0000";
    if (value.type == ScriptValue::Type::Text) {
        bits = checks::bits(value);
        if (bits.size() != 4) {
            throw Mistake("must have four bits");
        }
    } else {
        constexpr char const* names[] = {"in_alarm", "fault", "overridden", "out_of_service"};
        checks::fields(value, {names[0], names[1], names[2], names[3]});
        for (std::size_t i = 0; i < bits.size(); ++i) {
            ScriptValue const& flag = value[names[i]];
            bits[i] = !flag.isNil() && checks::boolean(flag) ? '1' : '0';
        }
    }
    writer.application(ApplicationTag::BitString, content::bitString(bits));
}

// BACnetTimeStamp: a date and time, or the number of an event.
void timeStamp(ScriptValue const& value, TagWriter& writer) {
    if (value.isNumber()) {
        writer.context(1, content::unsignedNumber(checks::unsignedUpTo(value, 65535)));
        return;
    }
    writer.opening(2);
    writer.encoded(readDateTime(value));
    writer.closing(2);
}

// {float_scale = 0.1} or {integer_scale = -2}
void scale(ScriptValue const& value, TagWriter& writer) {
    checks::fields(value, {"float_scale", "integer_scale"});
    if (value.fields.size() != 1) {
        throw Mistake("wants float_scale or integer_scale");
    }
    if (!value["float_scale"].isNil()) {
        writer.context(0, content::real(checks::singleNumber(value["float_scale"])));
    } else {
        writer.context(1, content::signedNumber(checks::signedNumber(value["integer_scale"])));
    }
}

void prescale(ScriptValue const& value, TagWriter& writer) {
    checks::fields(value, {"multiplier", "modulo_divide"});
    writer.context(0, content::unsignedNumber(checks::unsignedNumber(value["multiplier"])));
    writer.context(1, content::unsignedNumber(checks::unsignedNumber(value["modulo_divide"])));
}

// {from = "2024-01-01", to = "2024-12-31"}; an end that is not given is open.
void dateRange(ScriptValue const& value, TagWriter& writer) {
    checks::fields(value, {"from", "to"});
    writeDateRange(value, writer);
}

// BACnetObjectPropertyReference, which is also a BACnetDeviceObjectPropertyReference within the device:
// {"analog_input", 1, "present_value"}
void propertyReference(ScriptValue const& value, TagWriter& writer) {
    if (checks::list(value).size() != 3) {
        throw Mistake("must be a property like {\"analog_input\", 1, \"present_value\"}");
    }
    writer.context(0, content::objectIdentifier(checks::objectIdentifier(value)));
    writer.context(1, content::unsignedNumber(static_cast<std::uint32_t>(checks::property(value.list[2]))));
}

// A property reference, or none: {}
void setpointReference(ScriptValue const& value, TagWriter& writer) {
    if (checks::list(value).empty()) {
        return;
    }
    writer.opening(0);
    propertyReference(value, writer);
    writer.closing(0);
}

void lightingCommand(ScriptValue const& value, TagWriter& writer) {
    checks::fields(value, {"operation", "target_level", "fade_time", "priority"});
    writer.context(0, content::unsignedNumber(checks::unsignedUpTo(value["operation"], 65535)));
    if (!value["target_level"].isNil()) {
        writer.context(1, content::real(checks::singleNumber(value["target_level"])));
    }
    if (!value["fade_time"].isNil()) {
        writer.context(4, content::unsignedNumber(checks::unsignedNumber(value["fade_time"])));
    }
    if (!value["priority"].isNil()) {
        writer.context(5, content::unsignedNumber(checks::unsignedUpTo(value["priority"], 16)));
    }
}

struct Row {
    Datatype datatype;
    void (*write)(ScriptValue const&, TagWriter&);
};

constexpr Row kRows[] = {
    {Datatype::StatusFlags, statusFlags},
    {Datatype::TimeStamp, timeStamp},
    {Datatype::Scale, scale},
    {Datatype::Prescale, prescale},
    {Datatype::DateRange, dateRange},
    {Datatype::PropertyReference, propertyReference},
    {Datatype::SetpointReference, setpointReference},
    {Datatype::LightingCommand, lightingCommand},
};

}  // namespace

bool isConstructed(Datatype datatype) {
    for (Row const& row : kRows) {
        if (row.datatype == datatype) {
            return true;
        }
    }
    return false;
}

void writeDateRange(ScriptValue const& value, TagWriter& writer) {
    for (char const* end : {"from", "to"}) {
        CalendarDate const date = value[end].isNil() ? kAnyDate : checks::date(value[end]);
        writer.application(ApplicationTag::Date, content::date(date));
    }
}

ValuePtr readConstructed(Datatype datatype, ScriptValue const& value) {
    TagWriter writer;
    for (Row const& row : kRows) {
        if (row.datatype == datatype) {
            row.write(value, writer);
        }
    }
    return std::make_shared<FixedValue>(writer.take());
}

}  // namespace simulator
