#pragma once

#include <memory>

#include "CPropertyValue.h"
#include "ComplexTag.h"

// Reads one kind of property value from an acknowledgement. A parser has no state: one instance serves all
// threads.
class PropertyValueParser {
public:
    virtual ~PropertyValueParser() = default;

    // The value in `wrapper`, the constructed tag around the tags of the value. Tags of another shape throw
    // ParseException, unless the class of the parser documents another exception.
    virtual std::unique_ptr<CPropertyValue> Parse(ComplexTag& wrapper) const = 0;
};
