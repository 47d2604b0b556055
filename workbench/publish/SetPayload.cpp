#include "SetPayload.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <cstdint>
#include <string_view>

#include "JsonFields.h"
#include "Printable.h"
#include "opcua/OpcUa_Variant.h"

namespace workbench {

namespace {

constexpr char NullValue[] = "null is not a value that can be set";
constexpr char Form[] = R"(expected is {"value":21.5}, or the value alone)";

// Takes what a command needs from the events of RapidJSON's reader. A function that returns false ends the
// reading.
class CommandHandler {
public:
    explicit CommandHandler(SetPayload& result) : payload(result) {}

    bool Null() { return depth == 0 || Scalar("null", Kind::Null); }
    bool Bool(bool value) { return Scalar(value ? "true" : "false", Kind::Boolean); }
    bool RawNumber(char const* digits, rapidjson::SizeType length, bool) {
        return Scalar({digits, length}, Kind::Number);
    }
    bool String(char const* text, rapidjson::SizeType length, bool) {
        return Scalar({text, length}, Kind::Text);
    }
    bool Key(char const* name, rapidjson::SizeType length, bool) {
        if (depth == 1) {
            member.assign(name, length);
        }
        return true;
    }
    bool StartObject() { return Begin(depth == 0); }
    bool StartArray() { return Begin(false); }
    bool EndObject(rapidjson::SizeType) { return End(); }
    bool EndArray(rapidjson::SizeType) { return End(); }
    // Not called for numbers as texts.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

    bool HasValue() const { return hasValue; }

private:
    enum class Kind { Null, Boolean, Number, Text };

    bool Mistake(std::string const& text) {
        payload.mistake = text;
        return false;
    }

    bool Begin(bool isCommand) {
        if (++depth > SetPayload::Deepest) {
            return Mistake("the payload is nested more than " + std::to_string(SetPayload::Deepest) +
                           " deep; " + Form);
        }
        if (depth == 1 && !isCommand) {
            return Mistake(std::string("a list is not a value; ") + Form);
        }
        bool const isMember = depth == 2 && (member == "value" || member == "id" || member == "time");
        return !isMember || Mistake(member + " is an object or a list; " + Form);
    }

    bool End() {
        --depth;
        return true;
    }

    bool Scalar(std::string_view text, Kind kind) {
        if (depth == 0 || (depth == 1 && member == "value")) {
            return Value(text, kind);
        }
        if (depth == 1 && member == "id") {
            return Id(text, kind);
        }
        return depth != 1 || member != "time" || Time(text, kind);
    }

    bool Value(std::string_view text, Kind kind) {
        if (kind == Kind::Null || hasValue) {
            return Mistake(kind == Kind::Null ? NullValue : "value is there twice; one is allowed");
        }
        hasValue = true;
        payload.value.assign(text);
        return true;
    }

    bool Id(std::string_view text, Kind kind) {
        bool const isAllowed = kind == Kind::Text || kind == Kind::Number;
        if (!isAllowed || !payload.id.empty()) {
            return Mistake(isAllowed ? "id is there twice; one is allowed" : "id is not a text or a number");
        }
        std::string id(text);
        if (kind == Kind::Text) {
            rapidjson::StringBuffer buffer;
            JsonWriter writer(buffer);
            WriteText(writer, id);
            id = JsonLine(buffer);
            id.pop_back();
        }
        if (id.size() > SetPayload::LongestId) {
            return Mistake("id has " + std::to_string(id.size()) + " octets; allowed are " +
                           std::to_string(SetPayload::LongestId));
        }
        payload.id = std::move(id);
        return true;
    }

    bool Time(std::string_view text, Kind kind) {
        OpcUa_VariantHlp value;
        value.SetUTF8String(text.data(), static_cast<int>(text.size()));
        if (kind != Kind::Text || value.ChangeType(OpcUaType_DateTime) != OpcUa_Good) {
            return Mistake("time: " + tools::Quoted(text) +
                           R"( is not a time; expected is a text such as "2024-03-15T12:34:56Z")");
        }
        payload.time = value.Value.DateTime;
        return true;
    }

    SetPayload& payload;
    std::string member;
    unsigned depth = 0;
    bool hasValue = false;
};

bool IsBlank(char octet) {
    return octet == ' ' || octet == '\t' || octet == '\r' || octet == '\n';
}

void ReadPlainText(std::string const& text, SetPayload& result) {
    if (tools::ValidUtf8(text) != text || text.find('\0') != std::string::npos) {
        result.mistake = tools::Quoted(text) + " is not a text in UTF-8";
        return;
    }
    result = {};
    result.value = text;
}

}  // namespace

SetPayload ReadSetPayload(std::string const& payload) {
    SetPayload result;
    if (payload.size() > SetPayload::Longest) {
        result.mistake = "the payload has " + std::to_string(payload.size()) + " octets; allowed are " +
                         std::to_string(SetPayload::Longest);
        return result;
    }
    std::size_t first = 0;
    while (first < payload.size() && IsBlank(payload[first])) {
        ++first;
    }
    if (first == payload.size()) {
        result.mistake = std::string("the payload is empty; ") + Form;
        return result;
    }
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag |
                               rapidjson::kParseNumbersAsStringsFlag;
    CommandHandler handler(result);
    rapidjson::Reader reader;
    rapidjson::MemoryStream stream(payload.data(), payload.size());
    rapidjson::ParseResult const parsed = reader.Parse<flags>(stream, handler);
    bool const isJson = payload[first] == '{' || payload[first] == '[' || payload[first] == '"';
    if (parsed.IsError() && result.mistake.empty() && isJson) {
        result.mistake = "the payload is not JSON: octet " + std::to_string(parsed.Offset()) + ": " +
                         rapidjson::GetParseError_En(parsed.Code());
    } else if (parsed.IsError() && result.mistake.empty()) {
        ReadPlainText(payload, result);
    } else if (result.mistake.empty() && !handler.HasValue()) {
        result.mistake = isJson ? std::string("value is missing; ") + Form : NullValue;
    }
    return result;
}

}  // namespace workbench
