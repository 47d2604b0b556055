#include "WrittenSchedule.h"

#include <algorithm>

#include "Calendar.h"
#include "Content.h"
#include "PriorityArray.h"
#include "Refusal.h"
#include "WrittenPrimitive.h"

namespace simulator {

namespace {

constexpr std::uint16_t kCalendarType = 6;

void expect(bool isSo, ErrorCode otherwise) {
    if (!isSo) {
        throw ServiceError{ErrorClass::Property, otherwise};
    }
}

void copy(TagReader& reader, ApplicationTag tag, TagWriter& writer) {
    Primitive const primitive = reader.application();
    expect(primitive.tag == tag, ErrorCode::InvalidDataType);
    writtenAny(primitive)->encode(writer, {});
}

void copyEntry(TagReader& reader, bool isLenient, TagWriter& writer) {
    Primitive const time = reader.application();
    expect(time.tag == ApplicationTag::Time, ErrorCode::InvalidDataType);
    bool const isWild =
        std::find(time.content.begin(), time.content.end(), static_cast<char>(kAny)) != time.content.end();
    expect(isLenient || !isWild, ErrorCode::ValueOutOfRange);
    writtenAny(time)->encode(writer, {});
    writtenAny(reader.application())->encode(writer, {});
}

void copyEntries(TagReader& reader, std::uint8_t number, bool isLenient, TagWriter& writer) {
    Octets const enclosed = reader.enclosed(number);
    TagReader entries(enclosed);
    writer.opening(number);
    while (!entries.atEnd()) {
        copyEntry(entries, isLenient, writer);
    }
    writer.closing(number);
}

void checkWeekNDay(Octets const& content, bool isLenient) {
    constexpr unsigned kHighest[] = {14, 9, 7};
    expect(content.size() == std::size(kHighest), ErrorCode::InvalidDataType);
    for (std::size_t i = 0; i < content.size(); ++i) {
        unsigned const part = static_cast<unsigned char>(content[i]);
        expect(part == kAny || (part <= kHighest[i] && (part > 0 || isLenient)), ErrorCode::ValueOutOfRange);
    }
}

// BACnetCalendarEntry
void copyCalendarEntry(TagReader& reader, bool isLenient, TagWriter& writer) {
    Octets const enclosed = reader.enclosed(0);
    TagReader entry(enclosed);
    writer.opening(0);
    if (entry.nextIsContext(0)) {
        Octets const date = entry.contextOctets(0);
        checkDate(date);
        writer.context(0, date);
    } else if (entry.nextIsOpening(1)) {
        Octets const range = entry.enclosed(1);
        TagReader dates(range);
        writer.opening(1);
        copyDateRange(dates, writer);
        dates.expectEnd();
        writer.closing(1);
    } else {
        Octets const weekNDay = entry.contextOctets(2);
        checkWeekNDay(weekNDay, isLenient);
        writer.context(2, weekNDay);
    }
    entry.expectEnd();
    writer.closing(0);
}

void copyPeriod(TagReader& reader, bool isLenient, TagWriter& writer) {
    if (reader.nextIsOpening(0)) {
        copyCalendarEntry(reader, isLenient, writer);
        return;
    }
    ObjectId const calendar = reader.objectIdentifier(1);
    expect(calendar.type == kCalendarType, ErrorCode::ValueOutOfRange);
    writer.context(1, content::objectIdentifier(calendar));
}

}  // namespace

ValuePtr writtenDay(TagReader& reader, bool isLenient) {
    TagWriter writer;
    copyEntries(reader, 0, isLenient, writer);
    return std::make_shared<FixedValue>(writer.take());
}

ValuePtr writtenEvent(TagReader& reader, bool isLenient) {
    TagWriter writer;
    copyPeriod(reader, isLenient, writer);
    copyEntries(reader, 2, isLenient, writer);
    std::uint32_t const priority = reader.unsignedNumber(3);
    expect(priority >= 1 && priority <= PriorityArray::kLowest, ErrorCode::ValueOutOfRange);
    writer.context(3, content::unsignedNumber(priority));
    return std::make_shared<FixedValue>(writer.take());
}

void copyDateRange(TagReader& reader, TagWriter& writer) {
    copy(reader, ApplicationTag::Date, writer);
    copy(reader, ApplicationTag::Date, writer);
}

}  // namespace simulator
