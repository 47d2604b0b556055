#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "Tag.h"
#include "TagBase.h"

// The value of one BACnet property, between its tags on the wire and the runtime's variable. The data
// types are those of ASHRAE 135 clause 20.2. A value belongs to one thread at a time.
class CPropertyValue {
public:
    virtual ~CPropertyValue() = default;

    // The value as one application tag. Values that are more than one tag throw std::runtime_error.
    virtual Tag ToApplicationTag() const = 0;
    // The value as the run of primitive tags that is written; here the one of ToApplicationTag(). Empty
    // for a value that is written through ToApplicationComplexTags().
    virtual std::vector<Tag> ToApplicationTags() const;
    // The value as tags of any kind, owned by the caller; here none. Only schedules need it.
    virtual std::vector<std::unique_ptr<TagBase>> ToApplicationComplexTags() const;
    // Negative, 0 or positive as this value stands before, with or behind the other; here always 0. A
    // value of another class throws std::bad_cast.
    virtual int Compare(CPropertyValue& other) const;
};

// A property value that is one field: what the scalar, string and date classes have in common.
template <typename T>
class HeldValue : public CPropertyValue {
public:
    HeldValue() = default;
    explicit HeldValue(T held) : value(std::move(held)) {}

    T GetValue() const { return value; }
    // The same without a copy, as long as this object lives and is not changed.
    T const& View() const& { return value; }
    T const& View() const&& = delete;
    void SetValue(T newValue) { value = std::move(newValue); }

protected:
    T value{};
};
