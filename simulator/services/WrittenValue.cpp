#include "WrittenValue.h"

#include "Refusal.h"
#include "WrittenPrimitive.h"
#include "WrittenSchedule.h"

namespace simulator {

namespace {

ValuePtr WrittenDateRange(TagReader& reader) {
    TagWriter writer;
    CopyDateRange(reader, writer);
    return std::make_shared<FixedValue>(writer.Take());
}

ValuePtr WrittenDateTime(TagReader& reader) {
    TagWriter writer;
    WrittenAs(Datatype::Date, reader.Application(), false)->Encode(writer, {});
    WrittenAs(Datatype::Time, reader.Application(), false)->Encode(writer, {});
    return std::make_shared<FixedValue>(writer.Take());
}

ValuePtr WrittenOne(Datatype datatype, TagReader& reader, bool isLenient) {
    switch (datatype) {
        case Datatype::DailySchedule:
            return WrittenDay(reader, isLenient);
        case Datatype::SpecialEvent:
            return WrittenEvent(reader, isLenient);
        case Datatype::DateRange:
            return WrittenDateRange(reader);
        case Datatype::DateTime:
            return WrittenDateTime(reader);
        case Datatype::Any:
            return WrittenAny(reader.Application());
        default:
            return WrittenAs(datatype, reader.Application(), isLenient);
    }
}

}  // namespace

// The tags are well-formed, so a Reject of the reader means another datatype.
std::vector<ValuePtr> WrittenValues(Datatype datatype, Octets const& octets, bool isLenient) try {
    TagReader reader(octets);
    std::vector<ValuePtr> values;
    while (!reader.AtEnd()) {
        values.push_back(WrittenOne(datatype, reader, isLenient));
    }
    return values;
} catch (Reject const&) {
    throw ServiceError{ErrorClass::Property, ErrorCode::InvalidDataType};
}

}  // namespace simulator
