#pragma once

#include <memory>
#include <string>

#include "CharacterStringValue.h"
#include "ComplexTag.h"
#include "ExceptionScheduleValue.h"
#include "FakeStream.h"
#include "Octets.h"
#include "TagParser.h"
#include "WeeklyScheduleValue.h"

namespace test {

// The octets that the driver sends for a text. Throws what the driver throws for one that it refuses.
template <typename Value>
Octets SentOctets(std::string const& text) {
    Octets octets;
    for (auto const& tag : Value(text, EncodingTypeEnum::Utf8).ToApplicationComplexTags()) {
        Octets const bytes = tag->GetBytes();
        octets.insert(octets.end(), bytes.begin(), bytes.end());
    }
    return octets;
}

// The text that the driver delivers for the octets of a schedule.
template <typename Parser>
std::string DeliveredText(Octets octets) {
    octets.insert(octets.begin(), '\x3E');
    octets.push_back('\x3F');
    FakeStream stream(octets);
    std::unique_ptr<TagBase> tag = TagParser::ReadTag(stream);
    auto const value = Parser().Parse(dynamic_cast<ComplexTag&>(*tag));
    return dynamic_cast<CharacterStringValue&>(*value).GetValue();
}

inline std::string WeeklyThroughDriver(std::string const& text) {
    return DeliveredText<WeeklyScheduleValueParser>(SentOctets<WeeklyScheduleValue>(text));
}

inline std::string ExceptionThroughDriver(std::string const& text) {
    return DeliveredText<ExceptionScheduleValueParser>(SentOctets<ExceptionScheduleValue>(text));
}

}  // namespace test
