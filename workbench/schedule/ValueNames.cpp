#include "ValueNames.h"

#include <cmath>
#include <cstddef>

#include "Printable.h"
#include "ScheduleParts.h"
#include "ScheduleValues.h"

namespace workbench {

namespace {

bool CountsFromZero(ScheduleValueType type) {
    return type == ScheduleValueType::Boolean || type == ScheduleValueType::Enumerated;
}

// Takes the types of the entries; false if they differ.
bool TakeTypes(std::vector<ScheduleEntry> const& entries, std::optional<ScheduleValueType>& type) {
    for (ScheduleEntry const& entry : entries) {
        if (entry.value.type == ScheduleValueType::Null) {
            continue;
        }
        if (type && *type != entry.value.type) {
            return false;
        }
        type = entry.value.type;
    }
    return true;
}

}  // namespace

std::optional<std::string> StateText(ScheduleValue const& value, ValueNames const& names) {
    if (names.stateTexts.empty() || (value.type != ScheduleValueType::Boolean && !IsNumber(value.type))) {
        return std::nullopt;
    }
    double const place = NumberOf(value) - (CountsFromZero(value.type) ? 0 : 1);
    bool const isState =
        place >= 0 && place < static_cast<double>(names.stateTexts.size()) && std::trunc(place) == place;
    std::string const text = isState ? names.stateTexts[static_cast<std::size_t>(place)] : "";
    return text.empty() ? std::nullopt : std::optional(text);
}

std::string ValueWords(ScheduleValue const& value, ValueNames const& names) {
    if (value.type == ScheduleValueType::Null) {
        return "null";
    }
    if (value.type == ScheduleValueType::CharacterString) {
        return "\"" + tools::Printable(value.text) + "\"";
    }
    if (auto const state = StateText(value, names)) {
        return value.text + " (" + tools::Printable(*state) + ")";
    }
    bool const hasUnit =
        !names.unit.empty() && IsNumber(value.type) && value.type != ScheduleValueType::Enumerated;
    return value.text + (hasUnit ? " " + tools::Printable(names.unit) : "");
}

std::string EntryWords(ScheduleEntry const& entry, ValueNames const& names) {
    return PartText(entry.time) + " " + ValueWords(entry.value, names);
}

std::optional<ScheduleValueType> CommonType(WeeklySchedule const& schedule) {
    std::optional<ScheduleValueType> type;
    for (auto const& day : schedule.days) {
        if (!TakeTypes(day, type)) {
            return std::nullopt;
        }
    }
    return type;
}

std::optional<ScheduleValueType> CommonType(ExceptionSchedule const& schedule) {
    std::optional<ScheduleValueType> type;
    for (SpecialEvent const& event : schedule.events) {
        if (!TakeTypes(event.entries, type)) {
            return std::nullopt;
        }
    }
    return type;
}

}  // namespace workbench
