// Weekly and exception schedules: a text to tags, to octets and back, and octets to a text.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

#include "CharacterStringValue.h"
#include "ExceptionScheduleValue.h"
#include "Exceptions.h"
#include "FakeStream.h"
#include "Octets.h"
#include "Require.h"
#include "TagKind.h"
#include "TagParser.h"
#include "WeeklyScheduleValue.h"

using fuzz::Require;

namespace {

// The longest data whose length the driver writes in the form in which it reads it.
constexpr std::size_t LongestData = 253;

// A constructed tag around these octets, null if they are not a sequence of whole tags.
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

// The text of the tags in the wrapper, or nothing if the parser throws its one exception.
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

// Whether the driver writes all lengths in the form in which it reads them. The lists of a schedule are
// nested at most two deep.
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

// The octets that the writer makes from a text.
struct Written {
    Octets octets;
    bool readable = true;
};

// Nothing for a text that does not follow the grammar. The writer documents these exceptions.
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

// The text that is read from the octets of a text.
template <class Value, class Parser>
std::optional<std::string> ThereAndBack(std::string const& text) {
    auto const written = Write<Value>(text);
    if (!written || !written->readable) {
        return std::nullopt;
    }
    auto const wrapper = Wrap(written->octets);
    Require(wrapper != nullptr, "what is written is a sequence of whole tags");
    return Read<Parser>(*wrapper);
}

// A text that is written and read repeatedly stops changing.
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
    Require(false, "a text that is written and read repeatedly stops changing");
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

// The input is used as a text and as the octets of a schedule.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text(data, data + size);
    auto const wrapper = Wrap(Octets(text.begin(), text.end()));
    Check<WeeklyScheduleValue, WeeklyScheduleValueParser>(text, wrapper.get());
    Check<ExceptionScheduleValue, ExceptionScheduleValueParser>(text, wrapper.get());
    return 0;
}
