#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "DriverFields.h"
#include "SchedulePlace.h"

namespace workbench {

// Why a text of the driver cannot be read.
struct ScheduleMistake {
    ScheduleMistake(std::string place, std::string_view found, std::string const& expected);
    ScheduleRemark remark;
};

// A text of the driver, read from its beginning. It must outlive the cursor, and so must the notes.
class TextCursor {
public:
    TextCursor(std::string_view octets, ScheduleRemarks& remarks) : text(octets), notes(remarks) {}

    bool IsAtEnd() const { return at == text.size(); }
    char Next() const { return IsAtEnd() ? '\0' : text[at]; }
    std::string_view Rest() const { return text.substr(at); }
    std::string_view Whole() const { return text; }
    void Skip(std::size_t octets) { at += octets; }
    // Takes that octet if it is the next one.
    bool Take(char octet);

    // The octets up to the next "," or ";" or the end. A "," after them is taken too.
    std::string_view Field();
    // A field of at most ten digits; throws ScheduleMistake for another.
    unsigned Number(std::string const& place, char const* expected);

    // Nothing for an empty reason. No more than some hundred notes are kept.
    void Note(std::string const& place, std::string const& reason);

private:
    std::string_view text;
    std::size_t at = 0;
    ScheduleRemarks& notes;
};

enum class EntryStyle { Weekly, Exception };

struct EntryContext {
    EntryStyle style;
    std::string place;  // of the day or the event
};

// Reads an entry, and leaves the cursor after its value. In an exception schedule the next event can follow
// there without a ";". Throws ScheduleMistake.
ScheduleEntry ReadEntry(TextCursor& text, EntryContext const& context);

}  // namespace workbench
