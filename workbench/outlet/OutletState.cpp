#include "OutletState.h"

namespace workbench {

char const* HealthName(OutletHealth health) {
    switch (health) {
        case OutletHealth::Starting:
            return "starting";
        case OutletHealth::Good:
            return "good";
        case OutletHealth::Waiting:
            return "waiting";
        case OutletHealth::Failed:
            return "failed";
    }
    return "";
}

}  // namespace workbench
