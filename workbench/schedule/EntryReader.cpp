#include "EntryReader.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

#include "ObjectNames.h"
#include "Printable.h"
#include "ScheduleParts.h"
#include "ScheduleValues.h"

namespace workbench {

namespace {

constexpr std::size_t MostNotes = 200;
constexpr char Delimiters[] = ",;";

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsEnd(std::string_view text, std::size_t at) {
    return at >= text.size() || text[at] == ',' || text[at] == ';';
}

// The length of a run of such characters and the "," after it; 0 if it is not between the bounds.
std::size_t FieldLength(std::string_view text, char const* characters, std::size_t least, std::size_t most) {
    std::size_t const end = std::min(text.substr(0, most + 1).find_first_not_of(characters), text.size());
    return end >= least && end <= most && end < text.size() && text[end] == ',' ? end + 1 : 0;
}

// Whether an event begins here: the driver lets it follow an event without entries without a ";".
bool IsEventHead(std::string_view text) {
    constexpr char digits[] = "0123456789";
    if (text.size() < 2 || text[1] != ',' || text[0] < '0' || text[0] > '3') {
        return false;
    }
    char const form = text[0];
    text.remove_prefix(2);
    int const dates = form == '0' ? 1 : form == '1' ? 2 : 0;
    for (int i = 0; i < dates; ++i) {
        std::size_t const length = FieldLength(text, digits, 9, 9);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    if (dates == 0) {
        std::size_t const length =
            form == '2' ? FieldLength(text, "0123456789*", 4, 9) : FieldLength(text, digits, 1, 7);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    std::size_t const priority = FieldLength(text, digits, 1, 10);
    return priority != 0 && FieldLength(text.substr(priority), digits, 8, 12) != 0;
}

std::uint32_t Unsigned32(std::string_view digits) {
    std::uint64_t number = 0;
    for (char const c : digits) {
        number = std::min<std::uint64_t>(number * 10 + static_cast<unsigned>(c - '0'), 0xFFFFFFFF);
    }
    return static_cast<std::uint32_t>(number);
}

// Reads the fields after the time.
class ValueReader {
public:
    ValueReader(TextCursor& cursor, EntryContext const& entryContext, std::string entryPlace)
        : text(cursor), context(entryContext), place(std::move(entryPlace)) {}

    ScheduleValue Read() {
        if (IsNull()) {
            return {};
        }
        std::string_view const type = text.Field();
        std::optional<unsigned> const number =
            type.size() <= 2 && std::all_of(type.begin(), type.end(), IsDigit) && !type.empty()
                ? std::optional(Unsigned32(type))
                : std::nullopt;
        if (!number || *number >= ScheduleValueTypes) {
            throw ScheduleMistake(place, type, "the number of a type from 0 to 12");
        }
        unsigned const length = text.Number(place, "the length of the value");
        auto const valueType = static_cast<ScheduleValueType>(*number);
        return valueType == ScheduleValueType::ObjectIdentifier ? Object(length) : Value(valueType, length);
    }

private:
    bool IsException() const { return context.style == EntryStyle::Exception; }

    // An entry of an exception schedule without a type; the type of the text belongs to the next event, if it
    // begins one.
    bool IsNull() {
        if (!IsException()) {
            return false;
        }
        std::string_view const rest = text.Rest();
        if (IsEnd(rest, 0)) {
            return true;
        }
        if (!IsEventHead(rest)) {
            return false;
        }
        if (rest[0] != '3' || !IsSigned(rest.substr(2))) {
            return true;
        }
        text.Note(place,
                  "this may also be Null, with an event on the days of a calendar after it: the driver's "
                  "text is the same for both");
        return false;
    }

    // Whether a length, and a whole number of that length, are next.
    static bool IsSigned(std::string_view rest) {
        std::size_t const comma = rest.find(',');
        std::size_t const length = Unsigned32(rest.substr(0, comma));
        std::string_view const value = rest.substr(comma + 1, length);
        return value.size() == length && IsEnd(rest, comma + 1 + length) &&
               UsualText(ScheduleValueType::Signed, value).has_value();
    }

    // Whether a value can end before that octet of the rest.
    bool CanEnd(std::size_t at) const {
        std::string_view const rest = text.Rest();
        return IsEnd(rest, at) || (IsException() && at < rest.size() && IsEventHead(rest.substr(at)));
    }

    std::string_view Octets(ScheduleValueType type, unsigned length) {
        std::string_view const rest = text.Rest();
        std::size_t taken = length;
        if (length > rest.size() || !CanEnd(length)) {
            taken = std::min(rest.find_first_of(Delimiters), rest.size());
            if (type != ScheduleValueType::Null) {
                text.Note(place, "the length is " + std::to_string(length) + ", and the value ends after " +
                                     std::to_string(taken) + " characters");
            }
        }
        text.Skip(taken);
        return rest.substr(0, taken);
    }

    ScheduleValue Value(ScheduleValueType type, unsigned length) {
        std::string_view const octets = Octets(type, length);
        auto const value = type == ScheduleValueType::Null ? std::string() : Lexical(type, octets);
        if (!value) {
            throw ScheduleMistake(place, octets, TypeForm(type));
        }
        return {type, *value};
    }

    static std::string TypeForm(ScheduleValueType type) {
        switch (type) {
            case ScheduleValueType::Boolean:
                return "0 or 1";
            case ScheduleValueType::Date:
                return "a date of nine digits, such as 525122026";
            case ScheduleValueType::Time:
                return "a time of eight digits, such as 06300000";
            default:
                return FormOf(type);
        }
    }

    std::optional<std::string> Lexical(ScheduleValueType type, std::string_view octets) {
        switch (type) {
            case ScheduleValueType::Boolean:
                return octets == "0"   ? std::optional<std::string>("false")
                       : octets == "1" ? std::optional<std::string>("true")
                                       : std::nullopt;
            case ScheduleValueType::Unsigned:
                if (!octets.empty() && octets.back() == 'd') {
                    octets.remove_suffix(1);
                }
                return UsualText(type, octets);
            case ScheduleValueType::Signed:
                return SignedText(octets);
            case ScheduleValueType::Enumerated:
                return EnumeratedText(octets);
            case ScheduleValueType::Date:
                return PartLexical(DateOf(octets));
            case ScheduleValueType::Time:
                return PartLexical(TimeValueOf(octets));
            default:
                return UsualText(type, octets);
        }
    }

    template <typename Part>
    std::optional<std::string> PartLexical(FieldReading<Part> const& reading) {
        if (!reading.part) {
            return std::nullopt;
        }
        text.Note(place, reading.note);
        text.Note(place, MistakeOf(*reading.part));
        return PartText(*reading.part);
    }

    // The driver reads a negative number of up to three octets as a positive one.
    std::optional<std::string> SignedText(std::string_view octets) {
        auto const usual = UsualText(ScheduleValueType::Signed, octets);
        std::int64_t const number = usual ? std::stoll(*usual) : 0;
        for (std::int64_t const range :
             {std::int64_t{1} << 8, std::int64_t{1} << 16, std::int64_t{1} << 24}) {
            if (number >= range / 2 && number < range) {
                text.Note(place, "the number can also be " + std::to_string(number - range) +
                                     ": the driver loses the sign");
            }
        }
        return usual;
    }

    // Printed as a number with a sign.
    static std::optional<std::string> EnumeratedText(std::string_view octets) {
        auto const negative = UsualText(ScheduleValueType::Signed, octets);
        if (negative && negative->front() == '-') {
            return std::to_string(static_cast<std::uint32_t>(std::stoll(*negative)));
        }
        return UsualText(ScheduleValueType::Enumerated, octets);
    }

    // The instance has no length: it ends before the next event, if that follows without a ";".
    ScheduleValue Object(unsigned type) {
        std::string_view const rest = text.Rest();
        std::size_t end = std::min(rest.find_first_not_of("0123456789"), rest.size());
        if (IsException() && end >= 2 && IsEventHead(rest.substr(end - 1))) {
            --end;
        }
        std::uint32_t const instance = Unsigned32(rest.substr(0, end));
        if (end == 0 || type > 1023 || instance > standard::ObjectId::LastInstance) {
            throw ScheduleMistake(place, rest.substr(0, end),
                                  "the instance of an object, and its type as the length");
        }
        text.Skip(end);
        return {ScheduleValueType::ObjectIdentifier,
                standard::ObjectText({static_cast<std::uint16_t>(type), instance})};
    }

    TextCursor& text;
    EntryContext const& context;
    std::string place;
};

}  // namespace

ScheduleMistake::ScheduleMistake(std::string place, std::string_view found, std::string const& expected)
    : remark{std::move(place), tools::Quoted(found) + " is not valid; expected " + expected} {}

bool TextCursor::Take(char octet) {
    bool const isNext = !IsAtEnd() && text[at] == octet;
    at += isNext ? 1 : 0;
    return isNext;
}

std::string_view TextCursor::Field() {
    std::size_t const end = std::min(text.find_first_of(Delimiters, at), text.size());
    std::string_view const field = text.substr(at, end - at);
    at = end;
    Take(',');
    return field;
}

unsigned TextCursor::Number(std::string const& place, char const* expected) {
    std::string_view const field = Field();
    constexpr std::size_t mostDigits = 10;
    if (field.empty() || field.size() > mostDigits || !std::all_of(field.begin(), field.end(), IsDigit)) {
        throw ScheduleMistake(place, field, expected);
    }
    return Unsigned32(field);
}

void TextCursor::Note(std::string const& place, std::string const& reason) {
    if (!reason.empty() && notes.size() < MostNotes) {
        notes.push_back({place, reason});
    }
}

ScheduleEntry ReadEntry(TextCursor& text, EntryContext const& context) {
    std::string_view const field = text.Field();
    auto const time = EntryTimeOf(field);
    if (!time.part) {
        throw ScheduleMistake(context.place, field, "a time of eight digits, such as 06000000");
    }
    std::string const separator = context.style == EntryStyle::Weekly ? " " : ", ";
    std::string const place = context.place + separator + PartText(*time.part);
    text.Note(place, time.note);
    text.Note(place, MistakeOf(*time.part));
    return {*time.part, ValueReader(text, context, place).Read()};
}

}  // namespace workbench
