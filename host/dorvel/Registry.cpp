#include "Registry.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace dorvel {
namespace {

struct Registry {
    std::mutex Mutex;
    std::vector<RegisteredProcessor> Processors;
    std::vector<RegisteredLibrary> Libraries;
};

// Made at the first use: add-ins may register while their library is loaded.
Registry& TheRegistry() {
    static Registry registry;
    return registry;
}

template <class Entry>
bool IsTaken(std::vector<Entry> const& entries, std::string const& name) {
    return std::any_of(entries.begin(), entries.end(),
                       [&](Entry const& entry) { return entry.Name == name; });
}

}  // namespace

std::vector<RegisteredProcessor> RegisteredProcessors() {
    Registry& registry = TheRegistry();
    std::lock_guard<std::mutex> const lock(registry.Mutex);
    return registry.Processors;
}

std::vector<RegisteredLibrary> RegisteredLibraries() {
    Registry& registry = TheRegistry();
    std::lock_guard<std::mutex> const lock(registry.Mutex);
    return registry.Libraries;
}

}  // namespace dorvel

int RegisterConfigProcessor(char const* name, int order, ConfigProcessor processor, void const* source,
                            void* /*reserved1*/, void* /*reserved2*/) {
    dorvel::Registry& registry = dorvel::TheRegistry();
    std::lock_guard<std::mutex> const lock(registry.Mutex);
    auto& processors = registry.Processors;
    if (!name || !processor || dorvel::IsTaken(processors, name)) {
        return -1;
    }
    auto const place = std::upper_bound(
        processors.begin(), processors.end(), order,
        [](int value, dorvel::RegisteredProcessor const& entry) { return value < entry.Order; });
    processors.insert(place, {name, order, processor, source});
    return 0;
}

int RegisterExternalSTLib(char const* name, lua_CFunction open) {
    dorvel::Registry& registry = dorvel::TheRegistry();
    std::lock_guard<std::mutex> const lock(registry.Mutex);
    if (!name || !open || dorvel::IsTaken(registry.Libraries, name)) {
        return -1;
    }
    registry.Libraries.push_back({name, open});
    return 0;
}
