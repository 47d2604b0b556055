#pragma once

#include "ComplexTag.h"
#include "Exceptions.h"
#include "Tag.h"
#include "TagBase.h"

// A tag from the wire can be of either kind, or missing, wherever one kind is expected. These functions cast
// a tag to the expected kind; its owner stays the same. As... returns null for the other kind and for null;
// Require... throws FormatErrorException.

inline Tag* AsPrimitive(TagBase* tag) {
    return tag && !tag->IsConstructed() ? static_cast<Tag*>(tag) : nullptr;
}

inline ComplexTag* AsComplex(TagBase* tag) {
    return tag && tag->IsConstructed() ? static_cast<ComplexTag*>(tag) : nullptr;
}

inline Tag& RequirePrimitive(TagBase* tag) {
    return AsPrimitive(tag) ? static_cast<Tag&>(*tag) : throw FormatErrorException();
}

inline ComplexTag& RequireComplex(TagBase* tag) {
    return AsComplex(tag) ? static_cast<ComplexTag&>(*tag) : throw FormatErrorException();
}
