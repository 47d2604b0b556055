#include "ObjectUse.h"

#include "ObjectNames.h"

namespace workbench {

namespace {

// The failure of the present value, if the device answers it with an error.
standard::Failure const* ErrorOfValue(ObjectRecord const& object) {
    auto const found =
        object.properties.find(static_cast<std::uint32_t>(standard::PropertyId::Present_Value));
    bool const isError = found != object.properties.end() && found->second.failure &&
                         found->second.failure->kind == standard::Failure::Kind::Error;
    return isError ? &*found->second.failure : nullptr;
}

}  // namespace

PointSupport UseOf(ObjectRecord const& object) {
    PointSupport use = SupportOf(object.id);
    if (standard::Failure const* const error = ErrorOfValue(object)) {
        use.canRead = false;
        use.canWrite = false;
        use.whyNot = use.whyNot.empty() ? "the device answers with: " + FailureText(*error) : use.whyNot;
        use.whyNotWritten = use.whyNotWritten.empty() ? use.whyNot : use.whyNotWritten;
        return use;
    }
    if (use.canWrite && !IsSettable(object)) {
        use.canWrite = false;
        use.whyNotWritten =
            "the device sets present-value of " + standard::ObjectTypeText(object.id.type) + " itself";
    }
    return use;
}

}  // namespace workbench
