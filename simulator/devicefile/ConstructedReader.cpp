#include "ConstructedReader.h"

#include "Content.h"
#include "Mistake.h"
#include "PrimitiveReader.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

// {in_alarm = true} or "1000"
void StatusFlags(ScriptValue const& value, TagWriter& writer) {
    std::string bits = "0000";
    if (value.IsText()) {
        bits = checks::Bits(value);
        if (bits.size() != 4) {
            throw Mistake("must have four bits");
        }
    } else {
        constexpr char const* names[] = {"in_alarm", "fault", "overridden", "out_of_service"};
        checks::Fields(value, {names[0], names[1], names[2], names[3]});
        for (std::size_t i = 0; i < bits.size(); ++i) {
            ScriptValue const& flag = value[names[i]];
            bits[i] = !flag.IsNil() && checks::Boolean(flag) ? '1' : '0';
        }
    }
    writer.Application(ApplicationTag::BitString, content::BitString(bits));
}

// BACnetTimeStamp: a date and time, or the number of an event.
void TimeStamp(ScriptValue const& value, TagWriter& writer) {
    if (value.IsNumber()) {
        writer.Context(1, content::UnsignedNumber(checks::UnsignedUpTo(value, 65535)));
        return;
    }
    writer.Opening(2);
    writer.Encoded(ReadDateTime(value));
    writer.Closing(2);
}

// {float_scale = 0.1} or {integer_scale = -2}
void Scale(ScriptValue const& value, TagWriter& writer) {
    checks::Fields(value, {"float_scale", "integer_scale"});
    if (value.fields.size() != 1) {
        throw Mistake("must have float_scale or integer_scale");
    }
    if (!value["float_scale"].IsNil()) {
        writer.Context(0, content::Real(checks::SingleNumber(value["float_scale"])));
    } else {
        writer.Context(1, content::SignedNumber(checks::SignedNumber(value["integer_scale"])));
    }
}

void Prescale(ScriptValue const& value, TagWriter& writer) {
    checks::Fields(value, {"multiplier", "modulo_divide"});
    writer.Context(0, content::UnsignedNumber(checks::UnsignedNumber(value["multiplier"])));
    writer.Context(1, content::UnsignedNumber(checks::UnsignedNumber(value["modulo_divide"])));
}

// {from = "2024-01-01", to = "2024-12-31"}; a missing end is unspecified.
void DateRange(ScriptValue const& value, TagWriter& writer) {
    checks::Fields(value, {"from", "to"});
    WriteDateRange(value, writer);
}

// BACnetObjectPropertyReference, which is also a BACnetDeviceObjectPropertyReference within the device:
// {"analog_input", 1, "present_value"}
void PropertyReference(ScriptValue const& value, TagWriter& writer) {
    if (checks::List(value).size() != 3) {
        throw Mistake("must be a property like {\"analog_input\", 1, \"present_value\"}");
    }
    writer.Context(0, content::ObjectIdentifier(checks::ObjectIdentifier(value)));
    writer.Context(1, content::UnsignedNumber(static_cast<std::uint32_t>(checks::Property(value.list[2]))));
}

// A property reference, or none: {}
void SetpointReference(ScriptValue const& value, TagWriter& writer) {
    if (checks::List(value).empty()) {
        return;
    }
    writer.Opening(0);
    PropertyReference(value, writer);
    writer.Closing(0);
}

void LightingCommand(ScriptValue const& value, TagWriter& writer) {
    checks::Fields(value, {"operation", "target_level", "fade_time", "priority"});
    writer.Context(0, content::UnsignedNumber(checks::UnsignedUpTo(value["operation"], 65535)));
    if (!value["target_level"].IsNil()) {
        writer.Context(1, content::Real(checks::SingleNumber(value["target_level"])));
    }
    if (!value["fade_time"].IsNil()) {
        writer.Context(4, content::UnsignedNumber(checks::UnsignedNumber(value["fade_time"])));
    }
    if (!value["priority"].IsNil()) {
        writer.Context(5, content::UnsignedNumber(checks::UnsignedUpTo(value["priority"], 16)));
    }
}

struct Row {
    Datatype datatype;
    void (*write)(ScriptValue const&, TagWriter&);
};

constexpr Row Rows[] = {
    {Datatype::StatusFlags, StatusFlags},
    {Datatype::TimeStamp, TimeStamp},
    {Datatype::Scale, Scale},
    {Datatype::Prescale, Prescale},
    {Datatype::DateRange, DateRange},
    {Datatype::PropertyReference, PropertyReference},
    {Datatype::SetpointReference, SetpointReference},
    {Datatype::LightingCommand, LightingCommand},
};

}  // namespace

bool IsConstructed(Datatype datatype) {
    for (Row const& row : Rows) {
        if (row.datatype == datatype) {
            return true;
        }
    }
    return false;
}

void WriteDateRange(ScriptValue const& value, TagWriter& writer) {
    for (char const* end : {"from", "to"}) {
        CalendarDate const date = value[end].IsNil() ? AnyDate : checks::Date(value[end]);
        writer.Application(ApplicationTag::Date, content::Date(date));
    }
}

ValuePtr ReadConstructed(Datatype datatype, ScriptValue const& value) {
    TagWriter writer;
    for (Row const& row : Rows) {
        if (row.datatype == datatype) {
            row.write(value, writer);
        }
    }
    return std::make_shared<FixedValue>(writer.Take());
}

}  // namespace simulator
