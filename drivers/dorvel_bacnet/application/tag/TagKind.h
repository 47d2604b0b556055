#pragma once

#include "ComplexTag.h"
#include "Tag.h"
#include "TagBase.h"

// A tag from the wire can be of either kind, or missing, wherever one kind is expected. These functions cast
// a tag to the expected kind; its owner stays the same. As... returns null for the other kind and for null;
// Require... throws FormatErrorException.
Tag* AsPrimitive(TagBase* tag);
ComplexTag* AsComplex(TagBase* tag);
Tag& RequirePrimitive(TagBase* tag);
ComplexTag& RequireComplex(TagBase* tag);
