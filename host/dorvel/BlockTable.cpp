// The blocks of a runtime.

#include <algorithm>
#include <lua.hpp>

#include "RuntimeImpl.h"
#include "dorvel/ScadaProtocol.h"

namespace dorvel {

void Runtime::Impl::Forget(ScadaProtocol const& block) {
    auto const entry = std::find_if(blocks.begin(), blocks.end(),
                                    [&](auto const& candidate) { return candidate->block == &block; });
    if (entry == blocks.end()) {
        return;
    }
    if (lua_checkstack(L, 2)) {
        luaL_unref(L, LUA_REGISTRYINDEX, (*entry)->reference);
    }
    blocks.erase(entry);
}

BlockEntry* Runtime::Impl::Find(ScadaProtocol const& block) {
    for (auto const& entry : blocks) {
        if (entry->block == &block) {
            return entry.get();
        }
    }
    return nullptr;
}

STTask* Runtime::Impl::TaskOf(BlockEntry const& entry) const {
    if (entry.task || tasks.empty()) {
        return entry.task;
    }
    return tasks.front().get();
}

LuaDataProvider* Runtime::Impl::ProviderOf(ScadaProtocol const& block) {
    BlockEntry const* const entry = Find(block);
    STTask* const task = entry ? TaskOf(*entry) : nullptr;
    return task ? &task->provider : nullptr;
}

std::vector<BlockEntry*> Runtime::Impl::BlocksOf(STTask const& task) {
    std::vector<BlockEntry*> entries;
    for (auto const& entry : blocks) {
        if (TaskOf(*entry) == &task) {
            entries.push_back(entry.get());
        }
    }
    return entries;
}

}  // namespace dorvel
