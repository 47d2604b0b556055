#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "AnswerStore.h"
#include "Tag.h"
#include "TagBase.h"

// The value of one BACnet property, between its tags on the wire and the variable of the runtime. The data
// types are those of ASHRAE 135 clause 20.2. One thread uses a value at a time.
class CPropertyValue : public PartOfAnswer {
public:
    virtual ~CPropertyValue() = default;

    // The value as one application tag. A value of several tags throws std::runtime_error.
    virtual Tag ToApplicationTag() const = 0;
    // The value as the sequence of primitive tags that is written; by default the tag of ToApplicationTag().
    // Empty for a value that is written through ToApplicationComplexTags().
    virtual std::vector<Tag> ToApplicationTags() const;
    // The value as tags of any kind, owned by the caller; none by default. Only schedules implement it.
    virtual std::vector<std::unique_ptr<TagBase>> ToApplicationComplexTags() const;
    // Negative, 0 or positive when this value sorts before, with or after the other; 0 by default. A value of
    // another class throws std::bad_cast.
    virtual int Compare(CPropertyValue& other) const;
};

// A property value of one field: the common base of the scalar, string and date classes.
template <typename T>
class HeldValue : public CPropertyValue {
public:
    HeldValue() = default;
    explicit HeldValue(T held) : value(std::move(held)) {}

    T GetValue() const { return value; }
    // The same without a copy, valid until this object changes or ends.
    T const& View() const& { return value; }
    T const& View() const&& = delete;
    void SetValue(T newValue) { value = std::move(newValue); }

protected:
    T value{};
};
