#include "WrittenValue.h"

#include "Refusal.h"
#include "WrittenPrimitive.h"
#include "WrittenSchedule.h"

namespace simulator {

namespace {

ValuePtr writtenDateRange(TagReader& reader) {
    TagWriter writer;
    copyDateRange(reader, writer);
    return std::make_shared<FixedValue>(writer.take());
}

ValuePtr writtenDateTime(TagReader& reader) {
    TagWriter writer;
    writtenAs(Datatype::Date, reader.application(), false)->encode(writer, {});
    writtenAs(Datatype::Time, reader.application(), false)->encode(writer, {});
    return std::make_shared<FixedValue>(writer.take());
}

ValuePtr writtenOne(Datatype datatype, TagReader& reader, bool isLenient) {
    switch (datatype) {
        case Datatype::DailySchedule:
            return writtenDay(reader, isLenient);
        case Datatype::SpecialEvent:
            return writtenEvent(reader, isLenient);
        case Datatype::DateRange:
            return writtenDateRange(reader);
        case Datatype::DateTime:
            return writtenDateTime(reader);
        case Datatype::Any:
            return writtenAny(reader.application());
        default:
            return writtenAs(datatype, reader.application(), isLenient);
    }
}

}  // namespace

// The tags are sound as such: what the reader rejects here is of another datatype.
std::vector<ValuePtr> writtenValues(Datatype datatype, Octets const& octets, bool isLenient) try {
    TagReader reader(octets);
    std::vector<ValuePtr> values;
    while (!reader.atEnd()) {
        values.push_back(writtenOne(datatype, reader, isLenient));
    }
    return values;
} catch (Reject const&) {
    throw ServiceError{ErrorClass::Property, ErrorCode::InvalidDataType};
}

}  // namespace simulator
