#include "WakeEvent.h"

#include <sys/eventfd.h>
#include <unistd.h>

namespace workbench {

WakeEvent::WakeEvent() : handle(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

WakeEvent::~WakeEvent() {
    if (handle >= 0) {
        close(handle);
    }
}

void WakeEvent::Notify() const {
    eventfd_write(handle, 1);
}

bool WakeEvent::Take() const {
    eventfd_t count = 0;
    return eventfd_read(handle, &count) == 0;
}

}  // namespace workbench
