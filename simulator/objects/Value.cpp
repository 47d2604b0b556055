#include "Value.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "Content.h"

namespace simulator {

namespace {

constexpr double UnsignedLimit = 4294967295.0;
constexpr double SignedLimit = 2147483647.0;

char Flag(ValuePtr const& source, Moment const& now) {
    return source && source->Number(now) != 0 ? '1' : '0';
}

}  // namespace

void MovingValue::Encode(TagWriter& writer, Moment const& now) const {
    double const value = signal->At(now);
    double const rounded = std::round(value);
    switch (tag) {
        case ApplicationTag::Boolean:
            writer.Boolean(value != 0);
            break;
        case ApplicationTag::Signed:
            writer.Application(tag, content::SignedNumber(static_cast<std::int64_t>(
                                        std::clamp(rounded, -SignedLimit - 1, SignedLimit))));
            break;
        case ApplicationTag::Real:
            writer.Application(tag, content::Real(static_cast<float>(value)));
            break;
        case ApplicationTag::Double:
            writer.Application(tag, content::DoubleNumber(value));
            break;
        default:
            writer.Application(tag, content::UnsignedNumber(
                                        static_cast<std::uint64_t>(std::clamp(rounded, 0.0, UnsignedLimit))));
            break;
    }
}

void ClockValue::Encode(TagWriter& writer, Moment const& now) const {
    if (hasDate) {
        writer.Application(ApplicationTag::Date, content::Date(DateOf(now.local)));
    }
    if (hasTime) {
        writer.Application(ApplicationTag::Time, content::Time(TimeOf(now.local)));
    }
}

void StatusFlagsValue::Encode(TagWriter& writer, Moment const& now) const {
    std::string const bits{Flag(eventState, now), Flag(reliability, now), '0', Flag(outOfService, now)};
    writer.Application(ApplicationTag::BitString, content::BitString(bits));
}

void WrappedValue::Encode(TagWriter& writer, Moment const& now) const {
    writer.Opening(number);
    inner->Encode(writer, now);
    writer.Closing(number);
}

}  // namespace simulator
