#include "ScheduleWords.h"

#include <cstdlib>
#include <optional>

#include "HexText.h"
#include "OctetVector.h"
#include "SixDecimals.h"

namespace workbench {

namespace {

using standard::Datum;
using standard::DatumKind;

constexpr char Unknown[] = "?";

// Context tags of BACnetSpecialEvent and BACnetCalendarEntry.
enum EventTag : std::uint8_t {
    CalendarEntryTag = 0,
    CalendarReferenceTag = 1,
    EntriesTag = 2,
    PriorityTag = 3
};
enum PeriodTag : std::uint8_t { DateTag = 0, DateRangeTag = 1, WeekNDayTag = 2 };

std::string Digits(std::uint8_t octet) {
    return (octet < 10 ? "0" : "") + std::to_string(octet);
}

std::string Cut(std::uint8_t octet, std::size_t length) {
    return Digits(octet).substr(0, length);
}

bool IsConstructed(Datum const& datum, std::uint8_t tag) {
    return datum.kind == DatumKind::Constructed && datum.tag == tag;
}

bool IsPrimitive(Datum const& datum, std::uint8_t tag, std::size_t octets) {
    return datum.kind == DatumKind::Unknown && datum.isContext && datum.tag == tag &&
           datum.octets.size() == octets;
}

std::array<std::uint8_t, 4> Four(std::vector<char> const& octets) {
    std::array<std::uint8_t, 4> four{};
    for (std::size_t i = 0; i < four.size(); ++i) {
        four[i] = static_cast<std::uint8_t>(octets[i]);
    }
    return four;
}

class Writer {
public:
    explicit Writer(bool isWeeklySchedule) : isWeekly(isWeeklySchedule) {}

    ScheduleWords Weekly(std::vector<Datum> const& days) {
        bool good = days.size() == 7;
        for (Datum const& day : days) {
            good = good && IsConstructed(day, 0) && Entries(day);
            words.text += ';';
        }
        return Result(good);
    }

    ScheduleWords Exception(std::vector<Datum> const& parts) {
        bool good = parts.size() % 3 == 0;
        for (std::size_t i = 0; good && i < parts.size(); i += 3) {
            good = Event(parts[i], parts[i + 1], parts[i + 2]);
        }
        return Result(good);
    }

private:
    ScheduleWords Result(bool good) const { return good ? words : ScheduleWords{Unknown, {}}; }

    void Lose(char const* what) {
        if (words.lost.find(what) == std::string::npos) {
            words.lost += (words.lost.empty() ? "" : "; ") + std::string(what);
        }
    }

    // Three parts of the flat sequence: the period, the entries and the priority.
    bool Event(Datum const& period, Datum const& entries, Datum const& priority) {
        std::optional<std::string> const when = Period(period);
        bool const isGood = when && IsConstructed(entries, EntriesTag) &&
                            priority.kind == DatumKind::Unknown && priority.tag == PriorityTag &&
                            priority.octets.size() == 1;
        if (!isGood) {
            return false;
        }
        if (!entries.children.empty()) {
            words.text += *when + std::to_string(static_cast<std::uint8_t>(priority.octets[0])) + ",";
        }
        if (!Entries(entries)) {
            return false;
        }
        // An event without entries removes the ";" of the event before it.
        if (!words.text.empty() && words.text.back() == ';') {
            words.text.pop_back();
        } else if (!words.text.empty()) {
            words.text += ';';
        }
        if (entries.children.empty()) {
            Lose("an event without entries is left out");
        }
        return true;
    }

    std::optional<std::string> Period(Datum const& period) {
        if (IsPrimitive(period, CalendarReferenceTag, 4)) {
            auto const four = Four(period.octets);
            std::uint32_t const instance = (four[1] & 0x3Fu) << 16 | four[2] << 8 | four[3];
            return "3," + std::to_string(instance) + ",";
        }
        if (!IsConstructed(period, CalendarEntryTag) || period.children.size() != 1) {
            return std::nullopt;
        }
        Datum const& entry = period.children.front();
        if (IsPrimitive(entry, DateTag, 4)) {
            return "0," + DateText(Four(entry.octets)) + ",";
        }
        if (IsPrimitive(entry, WeekNDayTag, 3)) {
            return "2," + WeekNDay(entry.octets) + ",";
        }
        if (!IsConstructed(entry, DateRangeTag) || entry.children.size() != 2) {
            return std::nullopt;
        }
        return "1," + DateText(entry.children[0].calendar) + "," + DateText(entry.children[1].calendar) + ",";
    }

    static std::string WeekNDay(std::vector<char> const& octets) {
        auto const month = static_cast<std::uint8_t>(octets[0]);
        std::string text = month == 0 ? "**" : Digits(month);
        for (std::size_t i : {std::size_t{1}, std::size_t{2}}) {
            auto const octet = static_cast<std::uint8_t>(octets[i]);
            text += octet == 0 ? "*" : std::to_string(octet);
        }
        return text;
    }

    // Weekday, day, month, year.
    std::string DateText(standard::CalendarDate const& date) {
        for (std::uint8_t const field : date) {
            if (field == standard::Unspecified) {
                Lose("unspecified parts of a date become digits");
            }
        }
        return std::to_string(date[3]).substr(0, 1) + Cut(date[2], 2) + Cut(date[1], 2) +
               std::to_string(date[0] + 1900);
    }

    std::string TimeText(standard::TimeOfDay const& time) {
        std::string text;
        for (std::uint8_t const field : time) {
            text += Digits(field);
            if (field == standard::Unspecified) {
                Lose("unspecified parts of a time become digits");
            }
        }
        return text;
    }

    // Pairs of a time and a value.
    bool Entries(Datum const& list) {
        std::vector<Datum> const& parts = list.children;
        if (parts.size() % 2 != 0) {
            return false;
        }
        for (std::size_t i = 0; i < parts.size(); i += 2) {
            if (parts[i].kind != DatumKind::Time) {
                return false;
            }
            if (isWeekly && parts[i + 1].kind == DatumKind::Null) {
                Lose("entries with Null are left out");
                continue;
            }
            words.text += (i == 0 ? "" : ",") + TimeText(parts[i].calendar) + "," + Tail(parts[i + 1]);
        }
        return true;
    }

    // Type, length and value.
    std::string Tail(Datum const& value) {
        switch (value.kind) {
            case DatumKind::Null:
                return "";
            case DatumKind::Boolean:
                return value.number != 0 ? "1,1,1" : "1,1,0";
            case DatumKind::ObjectIdentifier:
                return "12," + std::to_string(value.Object().type) + "," +
                       std::to_string(value.Object().instance);
            default: {
                std::string const text = Text(value);
                return std::to_string(value.tag) + "," + std::to_string(text.size()) + "," + text;
            }
        }
    }

    std::string Text(Datum const& value) {
        switch (value.kind) {
            case DatumKind::Unsigned:
                return Number(value) + (isWeekly ? "d" : "");
            case DatumKind::Signed:
            case DatumKind::Enumerated:
                return Number(value);
            case DatumKind::Real:
            case DatumKind::Double:
                return Decimal(value);
            case DatumKind::OctetString:
                return tools::HexText(value.octets, tools::HexDigits::Lower);
            case DatumKind::Date:
                return DateText(value.calendar);
            case DatumKind::Time:
                return TimeText(value.calendar);
            default:
                return value.text;
        }
    }

    // The low 32 bits; a negative Signed without its sign, as the driver reads its octets.
    std::string Number(Datum const& value) {
        if (value.kind == DatumKind::Signed && value.Signed() < 0) {
            Lose("the sign of a Signed is lost");
            std::int64_t const number = value.Signed();
            int bits = 8;
            while (bits < 64 && number < -(std::int64_t{1} << (bits - 1))) {
                bits += 8;
            }
            auto const octets = bits == 64 ? value.number : value.number & ((std::uint64_t{1} << bits) - 1);
            return std::to_string(static_cast<std::int32_t>(octets));
        }
        if (value.number > 0xFFFFFFFF) {
            Lose("the bits above 32 of a number are lost");
        }
        auto const low = static_cast<std::uint32_t>(value.number);
        return value.kind == DatumKind::Unsigned ? std::to_string(low)
                                                 : std::to_string(static_cast<std::int32_t>(low));
    }

    std::string Decimal(Datum const& value) {
        bool const isReal = value.kind == DatumKind::Real;
        std::string const text =
            SixDecimals(value.real, isReal ? ScheduleValueType::Real : ScheduleValueType::Double);
        double const back = isReal ? static_cast<double>(std::strtof(text.c_str(), nullptr))
                                   : std::strtod(text.c_str(), nullptr);
        if (back != value.real) {
            Lose("decimals after the sixth are lost");
        }
        return text;
    }

    bool isWeekly;
    ScheduleWords words;
};

}  // namespace

ScheduleWords WeeklyWords(std::vector<Datum> const& values) {
    return Writer(true).Weekly(values);
}

ScheduleWords ExceptionWords(std::vector<Datum> const& values) {
    return Writer(false).Exception(values);
}

}  // namespace workbench
