#pragma once

#include <memory>
#include <vector>

#include "Signal.h"
#include "Standard.h"
#include "TagWriter.h"

namespace simulator {

// The value of a property, or of one element of an array or a list.
class Value {
public:
    virtual ~Value() = default;
    // Writes the current value with its tags.
    virtual void Encode(TagWriter& writer, Moment const& now) const = 0;
    // The value as a number: 0 or 1 for a Boolean, 0 for a value that is not numeric.
    virtual double Number(Moment const&) const { return 0; }
    // Whether it changes with time.
    virtual bool IsMoving() const { return false; }
};

using ValuePtr = std::shared_ptr<Value const>;

// A fixed value. `octets` includes the tags.
class FixedValue : public Value {
public:
    explicit FixedValue(Octets octets, double asNumber = 0) : encoded(std::move(octets)), number(asNumber) {}
    void Encode(TagWriter& writer, Moment const&) const override { writer.Encoded(encoded); }
    double Number(Moment const&) const override { return number; }

private:
    Octets encoded;
    double number;
};

// A number that moves. `valueTag` is Boolean, Unsigned, Signed, Real, Double or Enumerated. For a whole
// number the value is rounded and limited to 0 to 2^32-1 or -2^31 to 2^31-1.
class MovingValue : public Value {
public:
    MovingValue(std::shared_ptr<Signal const> movingSignal, ApplicationTag valueTag)
        : signal(std::move(movingSignal)), tag(valueTag) {}
    void Encode(TagWriter& writer, Moment const& now) const override;
    double Number(Moment const& now) const override { return signal->At(now); }
    bool IsMoving() const override { return true; }

private:
    std::shared_ptr<Signal const> signal;
    ApplicationTag tag;
};

// The date or the time of day of the wall clock, or both as a BACnetDateTime.
class ClockValue : public Value {
public:
    ClockValue(bool withDate, bool withTime) : hasDate(withDate), hasTime(withTime) {}
    void Encode(TagWriter& writer, Moment const& now) const override;
    bool IsMoving() const override { return true; }

private:
    bool hasDate, hasTime;
};

// Status_Flags as clause 12 derives them: in-alarm from Event_State, fault from Reliability, and
// out-of-service from Out_Of_Service; never overridden. A source that the object lacks is null.
class StatusFlagsValue : public Value {
public:
    StatusFlagsValue(ValuePtr stateSource, ValuePtr reliabilitySource, ValuePtr serviceSource)
        : eventState(std::move(stateSource)),
          reliability(std::move(reliabilitySource)),
          outOfService(std::move(serviceSource)) {}
    void Encode(TagWriter& writer, Moment const& now) const override;

private:
    ValuePtr eventState, reliability, outOfService;
};

// A value between an opening and a closing context tag.
class WrappedValue : public Value {
public:
    WrappedValue(std::uint8_t contextNumber, ValuePtr innerValue)
        : number(contextNumber), inner(std::move(innerValue)) {}
    void Encode(TagWriter& writer, Moment const& now) const override;

private:
    std::uint8_t number;
    ValuePtr inner;
};

}  // namespace simulator
