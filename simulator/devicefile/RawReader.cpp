#include "RawReader.h"

#include "Mistake.h"
#include "PrimitiveReader.h"
#include "ScriptChecks.h"

namespace simulator {

namespace {

constexpr std::uint32_t LastContextTag = 254;
constexpr std::uint32_t LastApplicationTag = 14;  // 13 and 14 are reserved by ASHRAE
constexpr std::uint32_t BooleanTag = 1;

// The number and the octets of tagged(2, "0A").
struct NumberAndOctets {
    std::uint8_t number;
    Octets octets;
};

NumberAndOctets ReadPair(ScriptValue const& value, std::uint32_t highest) {
    if (value.list.size() != 2 || !value.fields.empty()) {
        throw Mistake("must have a tag number and octets in hexadecimal");
    }
    return {static_cast<std::uint8_t>(checks::UnsignedUpTo(value.list[0], highest)),
            checks::Hexadecimal(value.list[1])};
}

void WriteTagged(ScriptValue const& value, TagWriter& writer) {
    NumberAndOctets const pair = ReadPair(value, LastApplicationTag);
    if (pair.number == BooleanTag) {
        throw Mistake("a Boolean has no contents octets: use boolean(true)");
    }
    writer.Application(static_cast<ApplicationTag>(pair.number), pair.octets);
}

void WriteContext(ScriptValue const& value, TagWriter& writer) {
    NumberAndOctets const pair = ReadPair(value, LastContextTag);
    writer.Context(pair.number, pair.octets);
}

void WriteAll(ScriptValue const& value, std::size_t first, TagWriter& writer) {
    for (std::size_t i = first; i < value.list.size(); ++i) {
        ValuePtr const inner = ReadPrimitive(Datatype::Any, value.list[i]);
        if (inner->IsMoving()) {
            throw Mistake("must not move");
        }
        inner->Encode(writer, {});
    }
}

void WriteConstructed(ScriptValue const& value, TagWriter& writer) {
    if (value.list.empty() || !value.fields.empty()) {
        throw Mistake("must have a tag number and then the values");
    }
    auto const number = static_cast<std::uint8_t>(checks::UnsignedUpTo(value.list[0], LastContextTag));
    writer.Opening(number);
    WriteAll(value, 1, writer);
    writer.Closing(number);
}

void WriteSequence(ScriptValue const& value, TagWriter& writer) {
    if (!value.fields.empty()) {
        throw Mistake("must have values without names");
    }
    WriteAll(value, 0, writer);
}

struct Row {
    char const* name;
    void (*write)(ScriptValue const&, TagWriter&);
};

constexpr Row Rows[] = {
    {"tagged", WriteTagged},
    {"context", WriteContext},
    {"constructed", WriteConstructed},
    {"sequence", WriteSequence},
};

constexpr char const* ArrayName = "array";

}  // namespace

std::vector<std::string> RawConstructors() {
    std::vector<std::string> names{ArrayName};
    for (Row const& row : Rows) {
        names.emplace_back(row.name);
    }
    return names;
}

ValuePtr ReadRaw(ScriptValue const& value) {
    for (Row const& row : Rows) {
        if (value.IsMade(row.name)) {
            try {
                TagWriter writer;
                row.write(value, writer);
                return std::make_shared<FixedValue>(writer.Take());
            } catch (Mistake const& mistake) {
                throw mistake.In(row.name);
            }
        }
    }
    return nullptr;
}

FreeValues ReadFreeValues(ScriptValue const& value) {
    bool const isArray = value.IsMade(ArrayName);
    if (!isArray && !value.IsPlainTable()) {
        return {Shape::Single, {ReadPrimitive(Datatype::Any, value)}};
    }
    if (!value.fields.empty()) {
        throw Mistake("must have values without names");
    }
    FreeValues result{isArray ? Shape::Array : Shape::List, {}};
    for (ScriptValue const& element : value.list) {
        try {
            result.values.push_back(ReadPrimitive(Datatype::Any, element));
        } catch (Mistake const& mistake) {
            throw mistake.In("element " + std::to_string(result.values.size() + 1));
        }
    }
    return result;
}

}  // namespace simulator
