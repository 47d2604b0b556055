#include "RunOutlets.h"

namespace workbench {

void AddOutlets(OutletList& outlets, RunOptions const& options, OutletParts const& parts) {
    static_cast<void>(outlets);
    static_cast<void>(options);
    static_cast<void>(parts);
}

}  // namespace workbench
