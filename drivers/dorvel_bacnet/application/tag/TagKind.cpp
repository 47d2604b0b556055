#include "TagKind.h"

#include "Exceptions.h"

namespace {

template <class Kind>
Kind& Require(TagBase* tag) {
    if (auto* const kind = dynamic_cast<Kind*>(tag)) {
        return *kind;
    }
    throw FormatErrorException();
}

}  // namespace

Tag& RequirePrimitive(TagBase* tag) {
    return Require<Tag>(tag);
}

ComplexTag& RequireComplex(TagBase* tag) {
    return Require<ComplexTag>(tag);
}
