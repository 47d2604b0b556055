#pragma once

#include <cstdlib>
#include <lua.hpp>
#include <memory>

namespace test {

// A Lua state that runs out of memory. Requests for more memory are counted from 1. One request fails, and
// with it the retry that Lua makes after a garbage collection, or all requests from there on fail; with 0
// none does.
class FailingLua {
public:
    enum class Mode { Once, ForEver };

    explicit FailingLua(long long numberRefused, Mode refusalMode = Mode::Once)
        : refused(numberRefused), mode(refusalMode), state(lua_newstate(Allocate, this), Close) {}

    // Null if the memory was not enough for a state.
    lua_State* Get() const { return state.get(); }
    // Closes the state and returns the octets that it did not free.
    long long Close() {
        state.reset();
        return octets;
    }
    bool HasRefused() const { return refused > 0 && requests >= refused; }

private:
    static void* Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize) {
        auto& lua = *static_cast<FailingLua*>(self);
        std::size_t const before = block ? oldSize : 0;
        if (newSize > before && lua.IsRefused()) {
            return nullptr;
        }
        lua.octets += static_cast<long long>(newSize) - static_cast<long long>(before);
        if (newSize == 0) {
            std::free(block);
            return nullptr;
        }
        return std::realloc(block, newSize);
    }

    bool IsRefused() {
        ++requests;
        bool const isReached = refused > 0 && requests >= refused;
        return isReached && (mode == Mode::ForEver || requests <= refused + 1);
    }

    static void Close(lua_State* L) { lua_close(L); }

    long long refused;
    Mode mode;
    long long requests = 0;
    long long octets = 0;
    std::unique_ptr<lua_State, void (*)(lua_State*)> state;
};

}  // namespace test
