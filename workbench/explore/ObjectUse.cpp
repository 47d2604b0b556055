#include "ObjectUse.h"

#include "ObjectNames.h"

namespace workbench {

PointSupport UseOf(ObjectRecord const& object) {
    PointSupport use = SupportOf(object.id);
    if (use.canWrite && !IsSettable(object)) {
        use.canWrite = false;
        use.whyNotWritten =
            "the device sets present-value of " + standard::ObjectTypeText(object.id.type) + " itself";
    }
    return use;
}

}  // namespace workbench
