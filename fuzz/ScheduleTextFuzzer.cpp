// Schedules: a text to tags and octets and back, and octets to a text, for the weekly and the exception
// schedule.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

#include "CharacterStringValue.h"
#include "ExceptionScheduleValue.h"
#include "Exceptions.h"
#include "FakeStream.h"
#include "Require.h"
#include "TagKind.h"
#include "TagParser.h"
#include "WeeklyScheduleValue.h"

using fuzz::Require;

namespace {

using Octets = std::vector<char>;

// The longest data whose length the driver writes as it is read.
constexpr std::size_t LongestData = 253;

// The constructed tag around these octets, null if they are no run of whole tags.
std::unique_ptr<ComplexTag> Wrap(Octets contents) {
    contents.insert(contents.begin(), '\x3E');
    contents.push_back('\x3F');
    FakeStream stream(contents);
    try {
        auto tag = TagParser::ReadTag(stream);
        if (stream.Available() != 0) {
            return nullptr;
        }
        return std::unique_ptr<ComplexTag>(&RequireComplex(tag.release()));
    } catch (WrongLengthException const&) {
        return nullptr;
    }
}

// The text of the tags in the wrapper, or nothing if they are refused, for which there is one exception.
template <class Parser>
std::optional<std::string> Read(ComplexTag& wrapper) {
    try {
        auto const value = Parser().Parse(wrapper);
        auto const& text = dynamic_cast<CharacterStringValue&>(*value);
        Require(text.GetEncoding() == EncodingTypeEnum::Schedule, "a schedule has the encoding of schedules");
        return text.GetValue();
    } catch (ParseException const&) {
        return std::nullopt;
    }
}

// Whether the driver writes the length of all data as it is read. The lists of a schedule are two deep at
// most.
bool IsReadable(TagBase const& tag) {
    auto const* const complex = dynamic_cast<ComplexTag const*>(&tag);
    if (complex == nullptr) {
        return dynamic_cast<Tag const&>(tag).data.size() <= LongestData;
    }
    for (int i = 0; i < complex->size(); ++i) {
        if (!IsReadable(*complex->GetSubTag(i))) {
            return false;
        }
    }
    return true;
}

// What the writer makes of a text.
struct Written {
    Octets octets;
    bool readable = true;
};

// Nothing for a text that does not follow the grammar. The exceptions are those that the writer promises.
template <class Value>
std::optional<Written> Write(std::string const& text) {
    try {
        Written written;
        for (auto const& tag : Value(text, EncodingTypeEnum::Utf8).ToApplicationComplexTags()) {
            Octets const bytes = tag->GetBytes();
            written.octets.insert(written.octets.end(), bytes.begin(), bytes.end());
            written.readable = written.readable && IsReadable(*tag);
        }
        return written;
    } catch (std::runtime_error const&) {
    } catch (std::invalid_argument const&) {
    } catch (std::out_of_range const&) {
    }
    return std::nullopt;
}

// What is read of the octets that a text makes.
template <class Value, class Parser>
std::optional<std::string> ThereAndBack(std::string const& text) {
    auto const written = Write<Value>(text);
    if (!written || !written->readable) {
        return std::nullopt;
    }
    auto const wrapper = Wrap(written->octets);
    Require(wrapper != nullptr, "what is written is a run of whole tags");
    return Read<Parser>(*wrapper);
}

// A text that was read and is written again settles: it does not change for ever.
template <class Value, class Parser>
void RequireSettles(std::string text) {
    constexpr int mostRounds = 8;
    for (int round = 0; round < mostRounds; ++round) {
        auto next = ThereAndBack<Value, Parser>(text);
        if (!next || *next == text) {
            return;
        }
        text = std::move(*next);
    }
    Require(false, "a text that goes there and back settles");
}

template <class Value, class Parser>
void Check(std::string const& text, ComplexTag* wrapper) {
    RequireSettles<Value, Parser>(text);
    auto const read = wrapper ? Read<Parser>(*wrapper) : std::nullopt;
    if (read) {
        Require(read->size() <= 40 * text.size() + 40, "a text is in proportion to its octets");
        RequireSettles<Value, Parser>(*read);
    }
}

}  // namespace

// The input is taken for a text, and for the octets of a schedule.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text(data, data + size);
    auto const wrapper = Wrap(Octets(text.begin(), text.end()));
    Check<WeeklyScheduleValue, WeeklyScheduleValueParser>(text, wrapper.get());
    Check<ExceptionScheduleValue, ExceptionScheduleValueParser>(text, wrapper.get());
    return 0;
}
