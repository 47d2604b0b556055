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
    virtual void Encode(TagWriter& writer, Moment const& now) const = 0;
    // The value as a number: 0 or 1 of a Boolean, 0 of everything that is not a number.
    virtual double Number(Moment const&) const { return 0; }
    // Whether time alone changes it.
    virtual bool IsMoving() const { return false; }
};

using ValuePtr = std::shared_ptr<Value const>;

// A value that stays as it is; `octets` includes the tags.
class FixedValue : public Value {
public:
    explicit FixedValue(Octets octets, double asNumber = 0) : encoded(std::move(octets)), number(asNumber) {}
    void Encode(TagWriter& writer, Moment const&) const override { writer.Encoded(encoded); }
    double Number(Moment const&) const override { return number; }

private:
    Octets encoded;
    double number;
};

// A number that moves. `valueTag` is Boolean, Unsigned, Signed, Real, Double or Enumerated; what doesn't fit
// it is rounded and kept within 0 to 2^32-1 or -2^31 to 2^31-1.
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

// The wall clock's date, its time of day, or one after the other as a BACnetDateTime.
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

// Another value between an opening and a closing context tag.
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
