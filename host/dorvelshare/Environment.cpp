#include <atomic>

#include "LeftPorts.h"
#include "dorvelshare/HostEnvironment.h"

namespace dorvel {
namespace {

std::atomic<HostEnvironment*> replacement{nullptr};

}  // namespace

HostEnvironment& Environment() {
    HostEnvironment* const environment = replacement.load(std::memory_order_acquire);
    return environment ? *environment : SystemEnvironment();
}

void SetEnvironment(HostEnvironment* environment) {
    replacement.store(environment, std::memory_order_release);
    TheLeftPorts().Clear();
}

}  // namespace dorvel
