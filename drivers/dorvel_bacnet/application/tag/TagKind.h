#pragma once

#include "ComplexTag.h"
#include "Tag.h"
#include "TagBase.h"

// A tag off the wire can be of either kind, or missing, wherever one kind is awaited. These give the awaited
// kind and throw FormatErrorException for the other one and for null.
Tag& RequirePrimitive(TagBase* tag);
ComplexTag& RequireComplex(TagBase* tag);
