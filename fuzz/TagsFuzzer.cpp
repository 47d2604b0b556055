// A sequence of tags, compared with what a second reader makes of it, and written again. The second reader
// was written from the encoding rules alone.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "Exceptions.h"
#include "FakeStream.h"
#include "Octets.h"
#include "Require.h"
#include "TagParser.h"

using fuzz::Require;

namespace {

using Tags = std::vector<std::unique_ptr<TagBase>>;

// One tag of a tree, in the order of the octets. A constructed tag ends with a token of kind Close.
struct Token {
    enum Kind { Primitive, Open, Close } kind;
    unsigned number = 0;
    bool context = true;
    unsigned valLenType = 0;
    Octets data;

    bool operator==(Token const& other) const {
        return kind == other.kind && number == other.number && context == other.context &&
               valLenType == other.valLenType && data == other.data;
    }
};

// The second reader.
class Reader {
public:
    Reader(std::uint8_t const* octets, std::size_t count) : position(octets), end(octets + count) {}

    // The tokens up to the end. Afterwards Whole() is false if the octets end inside a tag.
    std::vector<Token> ReadAll() {
        std::vector<std::size_t> ends;
        while (whole && position != end) {
            Read(*position++);
        }
        whole = whole && open.empty();
        return std::move(tokens);
    }

    bool Whole() const { return whole; }
    // Whether all tags were in the form that the writer uses.
    bool IsAsWritten() const { return asWritten; }

private:
    void Read(unsigned head) {
        unsigned const valLenType = head & 7;
        if (valLenType == 7 && !open.empty()) {
            // The writer's closing tag has the number of the opening tag and the context class.
            asWritten = asWritten && head == (open.back() << 4 | 0x0F);
            open.pop_back();
            tokens.push_back({Token::Close, 0, true, 0, {}});
            return;
        }
        unsigned number = head >> 4;
        bool const context = (head & 8) != 0;
        if (number == 15) {
            asWritten = false;
            number = Next();
        }
        asWritten = asWritten && !(number > 6 && context);
        if (valLenType == 6) {
            asWritten = asWritten && context;
            open.push_back(number);
            tokens.push_back({Token::Open, number, true, 0, {}});
            return;
        }
        ReadPrimitive(number, context, valLenType);
    }

    void ReadPrimitive(unsigned number, bool context, unsigned valLenType) {
        unsigned const extended = valLenType == 5 ? ReadLength() : 0;
        std::size_t const length = extended != 0 ? extended : valLenType;
        Octets data;
        if (context || number != 1) {
            if (length > static_cast<std::size_t>(end - position)) {
                whole = false;
                return;
            }
            data.assign(position, position + length);
            position += length;
        }
        tokens.push_back({Token::Primitive, number, context, valLenType, std::move(data)});
    }

    unsigned ReadLength() {
        unsigned const length = Next();
        if (length != 254) {
            return length;
        }
        asWritten = false;
        // A missing octet counts as zero.
        unsigned const high = position != end ? *position++ : 0;
        unsigned const low = position != end ? *position++ : 0;
        return high << 8 | low;
    }

    unsigned Next() {
        if (position == end) {
            whole = false;
            return 0;
        }
        return *position++;
    }

    std::uint8_t const* position;
    std::uint8_t const* end;
    std::vector<Token> tokens;
    std::vector<unsigned> open;
    bool whole = true;
    bool asWritten = true;
};

Token TokenOf(TagBase const& tag) {
    auto const number = OctetValue(tag.GetTagNumber());
    if (auto const* const primitive = dynamic_cast<Tag const*>(&tag)) {
        return {Token::Primitive, number, tag.GetIsClass(), OctetValue(tag.GetValLenType()), primitive->data};
    }
    return {Token::Open, number, tag.GetIsClass(), 0, {}};
}

// The tokens of a tree. Without recursion, as the sender chooses the depth.
void Flatten(TagBase const& root, std::vector<Token>& tokens) {
    struct Level {
        ComplexTag const* tag;
        int next;
    };
    std::vector<Level> open;
    TagBase const* tag = &root;
    for (;;) {
        tokens.push_back(TokenOf(*tag));
        if (auto const* const complex = dynamic_cast<ComplexTag const*>(tag)) {
            open.push_back({complex, 0});
        }
        while (!open.empty() && open.back().next == open.back().tag->size()) {
            tokens.push_back({Token::Close, 0, true, 0, {}});
            open.pop_back();
        }
        if (open.empty()) {
            return;
        }
        tag = open.back().tag->GetSubTag(open.back().next++);
    }
}

Octets Write(Tags const& tags) {
    Octets octets;
    for (auto const& tag : tags) {
        Octets const bytes = tag->GetBytes();
        octets.insert(octets.end(), bytes.begin(), bytes.end());
    }
    return octets;
}

// All tags, or nothing if the octets end inside one. No other exception is allowed.
std::optional<Tags> ReadAll(Octets const& octets) {
    FakeStream stream(octets);
    Tags tags;
    try {
        while (auto tag = TagParser::ReadTag(stream)) {
            tags.push_back(std::move(tag));
        }
    } catch (WrongLengthException const&) {
        return std::nullopt;
    }
    Require(stream.Available() == 0, "only the end of the octets ends a sequence of tags");
    return tags;
}

// Compares the numbers that the parser reads from a tag with its octets.
void RequireNumbers(Tag const& tag) {
    unsigned long long expected = 0;
    for (char const octet : tag.data) {
        expected = expected << 8 | OctetValue(octet);
    }
    bool const fits = tag.data.size() <= 8;
    try {
        Require(TagParser::GetUnsignedInteger(tag) == expected && fits, "an unsigned is its octets");
        Require(TagParser::GetSignedInteger(tag) == static_cast<long long>(expected),
                "a signed is its octets");
    } catch (ParseException const&) {
        Require(!fits, "up to eight octets are a number");
    }
    try {
        Require(static_cast<unsigned>(TagParser::GetPropertyIdentifier(tag)) == (expected & 0xFFFF) &&
                    tag.data.size() <= 4,
                "a property is the low sixteen bits of up to four octets");
    } catch (ParseException const&) {
        Require(tag.data.size() > 4, "up to four octets are a property");
    }
}

void RequireSequences(Octets const& octets, Tags const& tags) {
    FakeStream stream(octets);
    auto const elements = TagParser::ReadAppSequence(stream, 3);
    Require(elements.size() == 3, "a sequence has the requested number of elements");
    for (std::size_t i = 0; i < elements.size(); ++i) {
        Require((elements[i] != nullptr) == (i < tags.size()), "elements after the last tag are empty");
        Require(!elements[i] || elements[i]->GetBytes() == tags[i]->GetBytes(),
                "a sequence keeps the order of the tags");
    }
    FakeStream again(octets);
    for (auto const& [number, tag] : TagParser::ReadSequence(again, 4)) {
        Require(tag && tag->GetTagNumber() == number, "an element is stored under its number");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Reader reader(data, size);
    std::vector<Token> const expected = reader.ReadAll();
    Octets const octets(data, data + size);
    auto const tags = ReadAll(octets);
    Require(tags.has_value() == reader.Whole(), "octets are tags exactly when no tag is truncated");
    if (!tags) {
        return 0;
    }
    std::vector<Token> tokens;
    for (auto const& tag : *tags) {
        Flatten(*tag, tokens);
        if (auto const* const primitive = dynamic_cast<Tag const*>(tag.get())) {
            RequireNumbers(*primitive);
        }
    }
    Require(tokens == expected, "both readers read the same tags");
    Octets const written = Write(*tags);
    Require(!reader.IsAsWritten() || written == octets, "what is in the writer's form is written as it came");
    RequireSequences(octets, *tags);
    return 0;
}
