#include "WeeklyScheduleValue.h"

#include <stdexcept>
#include <utility>

#include "CharacterStringValue.h"
#include "ScheduleEntryWriter.h"
#include "ScheduleText.h"
#include "TagAccess.h"
#include "TagKind.h"

namespace {

constexpr int DaysOfWeek = 7;

}  // namespace

WeeklyScheduleValue::WeeklyScheduleValue(std::string text, EncodingTypeEnum textEncoding)
    : ScheduleValue(std::move(text), textEncoding, DaysOfWeek) {}

std::vector<std::unique_ptr<TagBase>> WeeklyScheduleValue::ToApplicationComplexTags() const {
    std::vector<std::string> const dayTexts = SplitText(value, ';');
    if (dayTexts.size() != DaysOfWeek) {
        throw std::runtime_error("Number days != 7");
    }
    std::vector<std::unique_ptr<TagBase>> tags;
    for (std::string const& dayText : dayTexts) {
        std::vector<std::string> const fields = SplitText(dayText, ',');
        if (fields.size() % 4 != 0) {
            throw std::runtime_error("Number not odd");
        }
        auto day = std::make_unique<ComplexTag>(static_cast<char>(0), true);
        for (std::size_t i = 0; i < fields.size(); i += 4) {
            day->AddSubTag(std::make_unique<Tag>(ToTimeTag(fields[i])));
            Tag const tag = ToComplexTag(fields[i + 1], fields[i + 2], fields[i + 3]);
            day->AddSubTag(std::make_unique<Tag>(tag));
        }
        tags.push_back(std::move(day));
    }
    return tags;
}

int WeeklyScheduleValue::Compare(CPropertyValue& other) const {
    return CompareText(dynamic_cast<WeeklyScheduleValue&>(other));
}

std::unique_ptr<CPropertyValue> WeeklyScheduleValueParser::Parse(ComplexTag& wrapper) const {
    ExpectSize(wrapper, DaysOfWeek, "(WeeklySchedule) tag quantity does not meet expectations");
    std::string text;
    for (int i = 0; i < DaysOfWeek; ++i) {
        AppendEntries(text, RequireComplex(&SubTag(wrapper, i)), WeeklyEntries);
        text += ';';
    }
    return std::make_unique<CharacterStringValue>(std::move(text), EncodingTypeEnum::Schedule);
}
