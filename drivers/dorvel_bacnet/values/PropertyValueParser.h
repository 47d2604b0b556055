#pragma once

#include <memory>

#include "CPropertyValue.h"
#include "ComplexTag.h"

// Reads one kind of property value out of an acknowledgement. A parser holds no state: one instance
// serves all reads of all threads.
class PropertyValueParser {
public:
    virtual ~PropertyValueParser() = default;

    // The value in `wrapper`, the constructed tag around the value's own tags. Tags that are not such a
    // value throw ParseException, or what the class of the parser says.
    virtual std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const = 0;
};
