#include "Registry.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace dorvel {
namespace {

struct Registry {
    std::mutex mutex;
    std::vector<RegisteredProcessor> processors;
    std::vector<RegisteredLibrary> libraries;
};

// Created at the first use: add-ins may register while their library is being loaded.
Registry& TheRegistry() {
    static Registry registry;
    return registry;
}

template <class Entry>
bool IsTaken(std::vector<Entry> const& entries, std::string const& name) {
    return std::any_of(entries.begin(), entries.end(),
                       [&](Entry const& entry) { return entry.name == name; });
}

}  // namespace

std::vector<RegisteredProcessor> RegisteredProcessors() {
    Registry& registry = TheRegistry();
    std::lock_guard<std::mutex> const lock(registry.mutex);
    return registry.processors;
}

std::vector<RegisteredLibrary> RegisteredLibraries() {
    Registry& registry = TheRegistry();
    std::lock_guard<std::mutex> const lock(registry.mutex);
    return registry.libraries;
}

}  // namespace dorvel

int RegisterConfigProcessor(char const* name, int order, ConfigProcessor processor, void const* source,
                            void* /*reserved1*/, void* /*reserved2*/) {
    dorvel::Registry& registry = dorvel::TheRegistry();
    std::lock_guard<std::mutex> const lock(registry.mutex);
    auto& processors = registry.processors;
    if (!name || !processor || dorvel::IsTaken(processors, name)) {
        return -1;
    }
    auto const position = std::upper_bound(
        processors.begin(), processors.end(), order,
        [](int value, dorvel::RegisteredProcessor const& entry) { return value < entry.order; });
    processors.insert(position, {name, order, processor, source});
    return 0;
}

int RegisterExternalSTLib(char const* name, lua_CFunction open) {
    dorvel::Registry& registry = dorvel::TheRegistry();
    std::lock_guard<std::mutex> const lock(registry.mutex);
    if (!name || !open || dorvel::IsTaken(registry.libraries, name)) {
        return -1;
    }
    registry.libraries.push_back({name, open});
    return 0;
}
