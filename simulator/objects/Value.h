#pragma once

#include <memory>
#include <vector>

#include "Signal.h"
#include "Standard.h"
#include "TagWriter.h"

namespace simulator {

// The value of a property, or of one element of it if the property is an array or a list.
class Value {
public:
    virtual ~Value() = default;
    // Writes the value as it is now, with its tags.
    virtual void encode(TagWriter& writer, Moment const& now) const = 0;
    // The value as a number: 0 or 1 of a Boolean, 0 of everything that is no number.
    virtual double number(Moment const&) const { return 0; }
    // Whether time alone changes it.
    virtual bool isMoving() const { return false; }
};

using ValuePtr = std::shared_ptr<Value const>;

// A value that stays as it is; `encoded` includes the tags.
class FixedValue : public Value {
public:
    explicit FixedValue(Octets encoded, double number = 0)
        : m_encoded(std::move(encoded)), m_number(number) {}
    void encode(TagWriter& writer, Moment const&) const override { writer.encoded(m_encoded); }
    double number(Moment const&) const override { return m_number; }

private:
    Octets m_encoded;
    double m_number;
};

// A number that moves. `tag` is Boolean, Unsigned, Signed, Real, Double or Enumerated; what doesn't fit
// it is rounded and kept within 0 to 2^32-1 or -2^31 to 2^31-1.
class MovingValue : public Value {
public:
    MovingValue(std::shared_ptr<Signal const> signal, ApplicationTag tag)
        : m_signal(std::move(signal)), m_tag(tag) {}
    void encode(TagWriter& writer, Moment const& now) const override;
    double number(Moment const& now) const override { return m_signal->at(now); }
    bool isMoving() const override { return true; }

private:
    std::shared_ptr<Signal const> m_signal;
    ApplicationTag m_tag;
};

// The wall clock's date, its time of day, or one behind the other as a BACnetDateTime.
class ClockValue : public Value {
public:
    ClockValue(bool hasDate, bool hasTime) : m_hasDate(hasDate), m_hasTime(hasTime) {}
    void encode(TagWriter& writer, Moment const& now) const override;
    bool isMoving() const override { return true; }

private:
    bool m_hasDate, m_hasTime;
};

// Status_Flags as clause 12 derives them: in-alarm from Event_State, fault from Reliability, and
// out-of-service from Out_Of_Service; never overridden. A source that the object lacks is null.
class StatusFlagsValue : public Value {
public:
    StatusFlagsValue(ValuePtr eventState, ValuePtr reliability, ValuePtr outOfService)
        : m_eventState(std::move(eventState)),
          m_reliability(std::move(reliability)),
          m_outOfService(std::move(outOfService)) {}
    void encode(TagWriter& writer, Moment const& now) const override;

private:
    ValuePtr m_eventState, m_reliability, m_outOfService;
};

// Another value between an opening and a closing context tag.
class WrappedValue : public Value {
public:
    WrappedValue(std::uint8_t number, ValuePtr inner) : m_number(number), m_inner(std::move(inner)) {}
    void encode(TagWriter& writer, Moment const& now) const override;

private:
    std::uint8_t m_number;
    ValuePtr m_inner;
};

}  // namespace simulator
