#include "TagKind.h"

#include "Exceptions.h"

namespace {

template <class Kind>
Kind& Require(TagBase* tag, bool isConstructed) {
    if (tag && tag->IsConstructed() == isConstructed) {
        return static_cast<Kind&>(*tag);
    }
    throw FormatErrorException();
}

}  // namespace

Tag& RequirePrimitive(TagBase* tag) {
    return Require<Tag>(tag, false);
}

ComplexTag& RequireComplex(TagBase* tag) {
    return Require<ComplexTag>(tag, true);
}
