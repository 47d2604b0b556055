#include "WrittenSchedule.h"

#include <algorithm>

#include "Calendar.h"
#include "Content.h"
#include "PriorityArray.h"
#include "Refusal.h"
#include "WrittenPrimitive.h"

namespace simulator {

namespace {

constexpr std::uint16_t CalendarType = 6;

void Expect(bool isSo, ErrorCode otherwise) {
    if (!isSo) {
        throw ServiceError{ErrorClass::Property, otherwise};
    }
}

void Copy(TagReader& reader, ApplicationTag tag, TagWriter& writer) {
    Primitive const primitive = reader.Application();
    Expect(primitive.tag == tag, ErrorCode::InvalidDataType);
    WrittenAny(primitive)->Encode(writer, {});
}

void CopyEntry(TagReader& reader, bool isLenient, TagWriter& writer) {
    Primitive const time = reader.Application();
    Expect(time.tag == ApplicationTag::Time, ErrorCode::InvalidDataType);
    bool const isWild = std::find(time.content.begin(), time.content.end(), static_cast<char>(Unspecified)) !=
                        time.content.end();
    Expect(isLenient || !isWild, ErrorCode::ValueOutOfRange);
    WrittenAny(time)->Encode(writer, {});
    WrittenAny(reader.Application())->Encode(writer, {});
}

void CopyEntries(TagReader& reader, std::uint8_t number, bool isLenient, TagWriter& writer) {
    Octets const enclosed = reader.Enclosed(number);
    TagReader entries(enclosed);
    writer.Opening(number);
    while (!entries.AtEnd()) {
        CopyEntry(entries, isLenient, writer);
    }
    writer.Closing(number);
}

void CheckWeekNDay(Octets const& content, bool isLenient) {
    constexpr unsigned highest[] = {14, 9, 7};
    Expect(content.size() == std::size(highest), ErrorCode::InvalidDataType);
    for (std::size_t i = 0; i < content.size(); ++i) {
        unsigned const part = OctetValue(content[i]);
        Expect(part == Unspecified || (part <= highest[i] && (part > 0 || isLenient)),
               ErrorCode::ValueOutOfRange);
    }
}

// BACnetCalendarEntry
void CopyCalendarEntry(TagReader& reader, bool isLenient, TagWriter& writer) {
    Octets const enclosed = reader.Enclosed(0);
    TagReader entry(enclosed);
    writer.Opening(0);
    if (entry.NextIsContext(0)) {
        Octets const date = entry.ContextOctets(0);
        CheckDate(date);
        writer.Context(0, date);
    } else if (entry.NextIsOpening(1)) {
        Octets const range = entry.Enclosed(1);
        TagReader dates(range);
        writer.Opening(1);
        CopyDateRange(dates, writer);
        dates.ExpectEnd();
        writer.Closing(1);
    } else {
        Octets const weekNDay = entry.ContextOctets(2);
        CheckWeekNDay(weekNDay, isLenient);
        writer.Context(2, weekNDay);
    }
    entry.ExpectEnd();
    writer.Closing(0);
}

void CopyPeriod(TagReader& reader, bool isLenient, TagWriter& writer) {
    if (reader.NextIsOpening(0)) {
        CopyCalendarEntry(reader, isLenient, writer);
        return;
    }
    ObjectId const calendar = reader.ObjectIdentifier(1);
    Expect(calendar.type == CalendarType, ErrorCode::ValueOutOfRange);
    writer.Context(1, content::ObjectIdentifier(calendar));
}

}  // namespace

ValuePtr WrittenDay(TagReader& reader, bool isLenient) {
    TagWriter writer;
    CopyEntries(reader, 0, isLenient, writer);
    return std::make_shared<FixedValue>(writer.Take());
}

ValuePtr WrittenEvent(TagReader& reader, bool isLenient) {
    TagWriter writer;
    CopyPeriod(reader, isLenient, writer);
    CopyEntries(reader, 2, isLenient, writer);
    std::uint32_t const priority = reader.UnsignedNumber(3);
    Expect(priority >= 1 && priority <= PriorityArray::Lowest, ErrorCode::ValueOutOfRange);
    writer.Context(3, content::UnsignedNumber(priority));
    return std::make_shared<FixedValue>(writer.Take());
}

void CopyDateRange(TagReader& reader, TagWriter& writer) {
    Copy(reader, ApplicationTag::Date, writer);
    Copy(reader, ApplicationTag::Date, writer);
}

}  // namespace simulator
