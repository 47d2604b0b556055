#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "ScheduleCalendar.h"
#include "ScheduleModel.h"
#include "ScheduleParts.h"
#include "ScheduleValues.h"

namespace test {

// Random schedules of every kind of period and value, with parts and values at the ends of their ranges. Some
// cannot be written: they have an empty value, an unspecified time, a text with a delimiter.
class RandomSchedules {
public:
    explicit RandomSchedules(std::uint32_t seed) : random(seed) {}

    workbench::WeeklySchedule Weekly() {
        workbench::WeeklySchedule schedule;
        for (auto& day : schedule.days) {
            day = Entries(Below(4));
        }
        return schedule;
    }

    workbench::ExceptionSchedule Exception() {
        workbench::ExceptionSchedule schedule;
        unsigned const count = Below(5);
        for (unsigned i = 0; i < count; ++i) {
            schedule.events.push_back({Period(), 1 + Below(16), Entries(OneIn(30) ? 0 : 1 + Below(3))});
        }
        return schedule;
    }

private:
    unsigned Below(unsigned bound) { return static_cast<unsigned>(random() % bound); }
    bool OneIn(unsigned count) { return Below(count) == 0; }

    // At ascending times, so that a place names one entry.
    std::vector<workbench::ScheduleEntry> Entries(unsigned count) {
        std::vector<workbench::ScheduleEntry> entries;
        for (unsigned i = 0; i < count; ++i) {
            workbench::ScheduleTime time{i * 6 + Below(6), Below(60), 0u, 0u};
            if (OneIn(4)) {
                time.second = Below(60);
                time.hundredths = Below(100);
            }
            if (OneIn(60)) {
                time.minute.reset();
            }
            entries.push_back({time, Value()});
        }
        return entries;
    }

    std::optional<unsigned> Part(unsigned low, unsigned high) {
        return OneIn(4) ? std::nullopt : std::optional(low + Below(high - low + 1));
    }

    workbench::ScheduleDate Date() {
        if (OneIn(2)) {
            return workbench::CompleteDate(2020 + Below(20), 1 + Below(12), OneIn(3) ? 25 : 1 + Below(28));
        }
        workbench::ScheduleDate date;
        do {
            date = {Part(1900, 2154), Part(1, 14), OneIn(4) ? std::optional(25u) : Part(1, 34), Part(1, 7)};
        } while (!workbench::MistakeOf(date).empty());
        return date;
    }

    workbench::Period Period() {
        switch (Below(4)) {
            case 0:
                return Date();
            case 1:
                return workbench::DateRange{Date(), Date()};
            case 2:
                return workbench::WeekAndDay{Part(1, 14), Part(1, 9), Part(1, 7)};
            default:
                return workbench::CalendarReference{OneIn(2) ? Below(100) : Below(4194304)};
        }
    }

    std::string Letters(char const* from, unsigned count) {
        std::string const letters = from;
        std::string text;
        unsigned const length = OneIn(50) ? 0 : count;
        for (unsigned i = 0; i < length; ++i) {
            text += letters[Below(static_cast<unsigned>(letters.size()))];
        }
        return text;
    }

    std::string RealText() {
        switch (Below(6)) {
            case 0:
                return std::to_string(static_cast<int>(Below(200)) - 100);
            case 1:
                return "0.00000" + std::to_string(Below(100000));
            case 2:
                return std::to_string(Below(100000)) + "e" + std::to_string(Below(30));
            case 3:
                return OneIn(2) ? "inf" : "-3.4028234e+38";
            default:
                return std::to_string(Below(400)) + "." + std::to_string(Below(100));
        }
    }

    std::string UnsignedText() {
        return std::to_string(OneIn(2) ? Below(3) : static_cast<std::uint32_t>(random()));
    }

    std::string ValueText(workbench::ScheduleValueType type) {
        using Type = workbench::ScheduleValueType;
        switch (type) {
            case Type::Null:
                return "";
            case Type::Boolean:
                return OneIn(2) ? "true" : "false";
            case Type::Unsigned:
            case Type::Enumerated:
                return UnsignedText();
            case Type::Signed:
                return std::to_string(OneIn(2) ? static_cast<int>(Below(5)) - 2
                                               : static_cast<std::int32_t>(random()));
            case Type::Real:
            case Type::Double:
                return RealText();
            case Type::OctetString:
                return Letters("0123456789abcdef", 2 * (1 + Below(OneIn(20) ? 300 : 4)));
            case Type::CharacterString:
                return Letters(OneIn(10) ? "abc,; \"" : "abcdefgh 0123(){}'\"\\%/-*\xC2\xB0",
                               1 + Below(OneIn(20) ? 300 : 8));
            case Type::BitString:
                return Letters("01", 1 + Below(OneIn(20) ? 3000 : 20));
            case Type::Date:
                return workbench::PartText(Date());
            case Type::Time:
                return workbench::PartText(workbench::ScheduleTime{
                    OneIn(20) ? std::nullopt : std::optional(Below(24)), Below(60), Below(60), Below(100)});
            case Type::ObjectIdentifier:
                return "analog-value " + std::to_string(Below(4194304));
        }
        return "";
    }

    workbench::ScheduleValue Value() {
        auto const type = static_cast<workbench::ScheduleValueType>(Below(workbench::ScheduleValueTypes));
        return {type, ValueText(type)};
    }

    std::mt19937 random;
};

}  // namespace test
