#include "ExceptionScheduleValue.h"

#include <cstdint>
#include <stdexcept>
#include <utility>

#include "BitConverter.h"
#include "CharacterStringValue.h"
#include "DateValue.h"
#include "IntValue.h"
#include "ObjectIdentifier.h"
#include "ScheduleEntryWriter.h"
#include "ScheduleText.h"
#include "TagAccess.h"
#include "TagKind.h"

namespace {

// The text for a calendar entry of an unknown form.
constexpr char const* NoPeriod = "2,,";

// The forms of a period by their number in the text.
enum Form { DateForm = 0, DateRangeForm = 1, WeekNDayForm = 2, CalendarForm = 3 };

constexpr char const* NoValue = "ExceptionSchedule value = 0";

// A field that may be empty; its reader checks that.
std::string const& PresentField(std::vector<std::string> const& fields, std::size_t place) {
    if (place >= fields.size()) {
        throw std::runtime_error(NoValue);
    }
    return fields[place];
}

std::unique_ptr<Tag> DateTag(std::string const& text) {
    DateValue const date = DateFromText(text, "ExceptionSchedule Date - len != 9");
    return std::make_unique<Tag>(date.ToApplicationTag());
}

std::unique_ptr<Tag> WeekNDayTag(std::string const& text) {
    auto const octet = [&text](std::size_t place, std::size_t count) {
        return static_cast<char>(NumberOrWildcard(text, place, count, 0));
    };
    return std::make_unique<Tag>(Tag::FromOctets(2, true, {octet(0, 2), octet(2, 1), octet(3, 1)}));
}

std::unique_ptr<Tag> PriorityTag(int priority) {
    // An application Signed and the priority of a special event have the same tag number, 3.
    auto tag = std::make_unique<Tag>(IntValue(priority).ToApplicationTag());
    tag->SetIsClass(true);
    return tag;
}

std::string DateTagText(Tag const& tag) {
    return DateText(DateValueParser::GetDate(tag));
}

std::string WeekNDayText(std::vector<char> const& data) {
    auto const digit = [&data](std::size_t place) {
        auto const octet = static_cast<unsigned char>(data[place]);
        return octet == 0 ? std::string("*") : std::to_string(static_cast<int>(octet));
    };
    std::string month;
    if (data[0] == 0) {
        month = "**";
    } else {
        AppendTwoDigits(month, static_cast<unsigned char>(data[0]));
    }
    return month + digit(1) + digit(2);
}

// A calendar entry: a date, or a week and day. No other form has a text.
std::string CalendarEntryText(Tag const& entry) {
    switch (entry.data.size()) {
        case 4:
            return "0," + DateTagText(Tag::FromOctets(10, false, entry.data)) + ",";
        case 3:
            return "2," + WeekNDayText(entry.data) + ",";
        default:
            return NoPeriod;
    }
}

std::string CalendarText(TagBase& period) {
    // A constructed tag has no data, so it is calendar 0.
    auto const* const reference = AsPrimitive(&period);
    unsigned const instance = reference == nullptr ? 0 : ObjectIdentifier(*reference).GetInstanceNumber();
    return "3," + std::to_string(instance) + ",";
}

std::string PeriodText(TagBase& period) {
    auto* const choice = AsComplex(&period);
    if (choice == nullptr || choice->size() != 1) {
        return CalendarText(period);
    }
    auto* const range = AsComplex(choice->GetSubTag(0));
    if (range == nullptr) {
        return CalendarEntryText(PrimitiveSubTag(*choice, 0));
    }
    if (range->size() != 2) {
        return NoPeriod;
    }
    return "1," + DateTagText(PrimitiveSubTag(*range, 0)) + "," + DateTagText(PrimitiveSubTag(*range, 1)) +
           ",";
}

void AppendEvent(std::string& text, TagBase& period, ComplexTag& list, Tag const& priority) {
    auto const priorityNumber = static_cast<std::uint32_t>(BitConverter::ToInt64(priority.data, 0));
    std::string const head = PeriodText(period) + std::to_string(priorityNumber) + ",";
    if (list.size() != 0) {
        text += head;
    }
    AppendEntries(text, list, ExceptionEntries);
    // An event without entries thereby removes the ";" of the event before it. Installed systems rely on
    // this.
    if (!text.empty() && text.back() == ';') {
        text.pop_back();
    } else if (!text.empty()) {
        text += ';';
    }
}

}  // namespace

ExceptionScheduleValue::ExceptionScheduleValue(std::string text, EncodingTypeEnum textEncoding)
    : ScheduleValue(std::move(text), textEncoding, 3) {}

std::vector<std::unique_ptr<TagBase>> ExceptionScheduleValue::ToApplicationComplexTags() const {
    std::vector<std::string> const events = SplitText(value, ';');
    if (events.empty()) {
        throw std::runtime_error(NoValue);
    }
    std::vector<std::unique_ptr<TagBase>> tags;
    for (std::string const& event : events) {
        std::vector<std::string> const fields = SplitText(event, ',');
        int const form = std::stoi(PresentField(fields, 0));
        if (form < DateForm || form > CalendarForm) {
            tags.push_back(PriorityTag(0));
            continue;
        }
        tags.push_back(Period(form, fields));
        int const priorityPlace = form == DateRangeForm ? 3 : 2;
        auto priority = PriorityTag(std::stoi(gfv(fields, priorityPlace)));
        tags.push_back(Entries(fields, priorityPlace + 1));
        tags.push_back(std::move(priority));
    }
    return tags;
}

std::unique_ptr<TagBase> ExceptionScheduleValue::Period(int form, std::vector<std::string> const& fields) {
    if (form == CalendarForm) {
        auto const instance = static_cast<unsigned>(std::stoi(gfv(fields, 1)));
        ObjectIdentifier const calendar(ObjectTypeEnum::Calendar, instance);
        return std::make_unique<Tag>(Tag::FromOctets(1, true, calendar.GetBytes()));
    }
    auto entry = std::make_unique<ComplexTag>(static_cast<char>(0), true);
    if (form == DateForm) {
        auto date = DateTag(PresentField(fields, 1));
        date->SetTagNumber(0);
        date->SetIsClass(true);
        entry->AddSubTag(std::move(date));
    } else if (form == DateRangeForm) {
        auto range = std::make_unique<ComplexTag>(static_cast<char>(1), true);
        range->AddSubTag(DateTag(PresentField(fields, 1)));
        range->AddSubTag(DateTag(PresentField(fields, 2)));
        entry->AddSubTag(std::move(range));
    } else {
        entry->AddSubTag(WeekNDayTag(gfv(fields, 1)));
    }
    return entry;
}

std::unique_ptr<TagBase> ExceptionScheduleValue::Entries(std::vector<std::string> const& fields, int index) {
    auto list = std::make_unique<ComplexTag>(static_cast<char>(2), true);
    int const count = static_cast<int>(fields.size());
    while (index < count) {
        list->AddSubTag(std::make_unique<Tag>(ToTimeTag(gfv(fields, index))));
        bool const isNull = index + 1 >= count || fields[static_cast<std::size_t>(index) + 1].empty();
        Tag const tag =
            isNull ? ToComplexTag("0", "1", "0")
                   : ToComplexTag(gfv(fields, index + 1), gfv(fields, index + 2), gfv(fields, index + 3));
        list->AddSubTag(std::make_unique<Tag>(tag));
        index += isNull ? 2 : 4;
    }
    return list;
}

std::string ExceptionScheduleValue::gfv(std::vector<std::string> const& fields, int index) {
    auto const place = static_cast<std::size_t>(index);
    if (place >= fields.size() || fields[place].empty()) {
        throw std::runtime_error(NoValue);
    }
    return fields[place];
}

int ExceptionScheduleValue::Compare(CPropertyValue& other) const {
    return CompareText(dynamic_cast<ExceptionScheduleValue&>(other));
}

std::unique_ptr<CPropertyValue> ExceptionScheduleValueParser::Parse(ComplexTag& wrapper) const {
    std::string text;
    if (wrapper.size() % 3 == 0) {
        for (int i = 0; i < wrapper.size(); i += 3) {
            AppendEvent(text, SubTag(wrapper, i), RequireComplex(&SubTag(wrapper, i + 1)),
                        PrimitiveSubTag(wrapper, i + 2));
        }
    }
    return std::make_unique<CharacterStringValue>(std::move(text), EncodingTypeEnum::Schedule);
}
