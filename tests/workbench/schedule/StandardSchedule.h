#pragma once

#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>

#include "ObjectNames.h"
#include "Octets.h"
#include "ScheduleModel.h"
#include "ScheduleParts.h"
#include "ScheduleValues.h"
#include "TagReader.h"

namespace test {

// Reads the octets of a schedule as the standard has them (clause 21: BACnetDailySchedule,
// BACnetSpecialEvent). A 0 for an unspecified part stays a 0.
class StandardSchedule {
public:
    explicit StandardSchedule(Octets const& sent) : octets(sent.begin(), sent.end()), reader(octets) {}

    workbench::WeeklySchedule Weekly() {
        workbench::WeeklySchedule schedule;
        for (auto& day : schedule.days) {
            reader.Opening(0);
            day = Entries(0);
        }
        reader.ExpectEnd();
        return schedule;
    }

    workbench::ExceptionSchedule Exception() {
        workbench::ExceptionSchedule schedule;
        while (!reader.AtEnd()) {
            workbench::SpecialEvent event;
            event.period = Period();
            reader.Opening(2);
            event.entries = Entries(2);
            event.priority = reader.UnsignedNumber(3);
            schedule.events.push_back(event);
        }
        return schedule;
    }

private:
    using Contents = std::vector<std::uint8_t>;

    static Contents ContentsOf(standard::Octets const& content) { return {content.begin(), content.end()}; }

    static std::optional<unsigned> Part(std::uint8_t octet) {
        return octet == 255 ? std::nullopt : std::optional<unsigned>(octet);
    }

    static workbench::ScheduleDate Date(Contents const& content) {
        auto const year = Part(content.at(0));
        return {year ? std::optional(*year + 1900) : std::nullopt, Part(content.at(1)), Part(content.at(2)),
                Part(content.at(3))};
    }

    static workbench::ScheduleTime Time(Contents const& content) {
        return {Part(content.at(0)), Part(content.at(1)), Part(content.at(2)), Part(content.at(3))};
    }

    workbench::Period Period() {
        if (reader.NextIsContext(1)) {
            return workbench::CalendarReference{reader.ObjectIdentifier(1).instance};
        }
        reader.Opening(0);
        workbench::Period period;
        if (reader.NextIsContext(0)) {
            period = Date(ContentsOf(reader.ContextOctets(0)));
        } else if (reader.NextIsOpening(1)) {
            reader.Opening(1);
            workbench::ScheduleDate const from =
                Date(ContentsOf(reader.ApplicationOctets(standard::ApplicationTag::Date)));
            period = workbench::DateRange{
                from, Date(ContentsOf(reader.ApplicationOctets(standard::ApplicationTag::Date)))};
            if (!reader.Closes(1)) {
                throw std::runtime_error("a range of more than two dates");
            }
        } else {
            Contents const days = ContentsOf(reader.ContextOctets(2));
            period = workbench::WeekAndDay{Part(days.at(0)), Part(days.at(1)), Part(days.at(2))};
        }
        if (!reader.Closes(0)) {
            throw std::runtime_error("a calendar entry of more than one part");
        }
        return period;
    }

    std::vector<workbench::ScheduleEntry> Entries(std::uint8_t closing) {
        std::vector<workbench::ScheduleEntry> entries;
        while (!reader.Closes(closing)) {
            workbench::ScheduleTime const time =
                Time(ContentsOf(reader.ApplicationOctets(standard::ApplicationTag::Time)));
            standard::Primitive const value = reader.Application();
            auto const type = static_cast<workbench::ScheduleValueType>(value.tag);
            std::string const text = Text(type, ContentsOf(value.content));
            entries.push_back(
                {time, {type, workbench::UsualText(type, text).value_or("not usual: " + text)}});
        }
        return entries;
    }

    static std::uint64_t Number(Contents const& content) {
        std::uint64_t number = 0;
        for (std::uint8_t const octet : content) {
            number = number << 8 | octet;
        }
        return number;
    }

    static std::int64_t SignedNumber(Contents const& content) {
        auto const number = static_cast<std::int64_t>(Number(content));
        bool const isNegative = content.at(0) >= 0x80 && content.size() < 8;
        return isNegative ? number - (std::int64_t{1} << (8 * content.size())) : number;
    }

    static std::string Digits(char const* format, double number) {
        char text[64];
        std::snprintf(text, sizeof text, format, number);
        return text;
    }

    static std::string RealText(Contents const& content) {
        auto const bits = static_cast<std::uint32_t>(Number(content));
        float number = 0;
        std::memcpy(&number, &bits, sizeof number);
        return Digits("%.9g", static_cast<double>(number));
    }

    static std::string DoubleText(Contents const& content) {
        std::uint64_t const bits = Number(content);
        double number = 0;
        std::memcpy(&number, &bits, sizeof number);
        return Digits("%.17g", number);
    }

    static std::string Hex(Contents const& content) {
        std::string text;
        for (std::uint8_t const octet : content) {
            text += "0123456789abcdef"[octet >> 4];
            text += "0123456789abcdef"[octet & 15];
        }
        return text;
    }

    static std::string Bits(Contents const& content) {
        std::string text;
        for (std::size_t i = 8; i + content.at(0) < content.size() * 8; ++i) {
            text += (content[i / 8] >> (7 - i % 8) & 1) != 0 ? '1' : '0';
        }
        return text;
    }

    static std::string Text(workbench::ScheduleValueType type, Contents const& content) {
        using Type = workbench::ScheduleValueType;
        switch (type) {
            case Type::Null:
                return "";
            case Type::Boolean:
                return content.at(0) != 0 ? "true" : "false";
            case Type::Unsigned:
            case Type::Enumerated:
                return std::to_string(Number(content));
            case Type::Signed:
                return std::to_string(SignedNumber(content));
            case Type::Real:
                return RealText(content);
            case Type::Double:
                return DoubleText(content);
            case Type::OctetString:
                return Hex(content);
            case Type::CharacterString:  // after the octet of its character set, 0 for UTF-8
                return std::string(content.at(0), '!') + std::string(content.begin() + 1, content.end());
            case Type::BitString:
                return Bits(content);
            case Type::Date:
                return workbench::PartText(Date(content));
            case Type::Time:
                return workbench::PartText(Time(content));
            case Type::ObjectIdentifier:
                return standard::ObjectText({static_cast<std::uint16_t>(Number(content) >> 22),
                                             static_cast<std::uint32_t>(Number(content) & 0x3FFFFF)});
        }
        return "";
    }

    standard::Octets octets;
    standard::TagReader reader;
};

}  // namespace test
