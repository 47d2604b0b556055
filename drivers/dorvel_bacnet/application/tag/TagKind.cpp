#include "TagKind.h"

#include "Exceptions.h"

namespace {

template <class Kind>
Kind& Require(Kind* tag) {
    if (!tag) {
        throw FormatErrorException();
    }
    return *tag;
}

}  // namespace

Tag* AsPrimitive(TagBase* tag) {
    return tag && !tag->IsConstructed() ? static_cast<Tag*>(tag) : nullptr;
}

ComplexTag* AsComplex(TagBase* tag) {
    return tag && tag->IsConstructed() ? static_cast<ComplexTag*>(tag) : nullptr;
}

Tag& RequirePrimitive(TagBase* tag) {
    return Require(AsPrimitive(tag));
}

ComplexTag& RequireComplex(TagBase* tag) {
    return Require(AsComplex(tag));
}
