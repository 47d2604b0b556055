#include "Value.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "Content.h"

namespace simulator {

namespace {

constexpr double kUnsignedLimit = 4294967295.0;
constexpr double kSignedLimit = 2147483647.0;

char flag(ValuePtr const& source, Moment const& now) {
    return source && source->number(now) != 0 ? '1' : '0';
}

}  // namespace

void MovingValue::encode(TagWriter& writer, Moment const& now) const {
    double const value = m_signal->at(now);
    double const rounded = std::round(value);
    switch (m_tag) {
        case ApplicationTag::Boolean:
            writer.boolean(value != 0);
            break;
        case ApplicationTag::Signed:
            writer.application(m_tag, content::signedNumber(static_cast<std::int64_t>(
                                          std::clamp(rounded, -kSignedLimit - 1, kSignedLimit))));
            break;
        case ApplicationTag::Real:
            writer.application(m_tag, content::real(static_cast<float>(value)));
            break;
        case ApplicationTag::Double:
            writer.application(m_tag, content::doubleNumber(value));
            break;
        default:
            writer.application(m_tag, content::unsignedNumber(static_cast<std::uint64_t>(
                                          std::clamp(rounded, 0.0, kUnsignedLimit))));
            break;
    }
}

void ClockValue::encode(TagWriter& writer, Moment const& now) const {
    if (m_hasDate) {
        writer.application(ApplicationTag::Date, content::date(dateOf(now.local)));
    }
    if (m_hasTime) {
        writer.application(ApplicationTag::Time, content::time(timeOf(now.local)));
    }
}

void StatusFlagsValue::encode(TagWriter& writer, Moment const& now) const {
    std::string const bits{flag(m_eventState, now), flag(m_reliability, now), '0', flag(m_outOfService, now)};
    writer.application(ApplicationTag::BitString, content::bitString(bits));
}

void WrappedValue::encode(TagWriter& writer, Moment const& now) const {
    writer.opening(m_number);
    m_inner->encode(writer, now);
    writer.closing(m_number);
}

}  // namespace simulator
