#pragma once

#include "ComplexTag.h"
#include "Tag.h"
#include "TagBase.h"

// A tag off the wire can be of either kind, or missing, wherever one kind is expected. These give the tag as
// the expected kind, which stays owned by whoever owns it. As... gives null for the other kind and for null,
// Require... throws FormatErrorException.
Tag* AsPrimitive(TagBase* tag);
ComplexTag* AsComplex(TagBase* tag);
Tag& RequirePrimitive(TagBase* tag);
ComplexTag& RequireComplex(TagBase* tag);
