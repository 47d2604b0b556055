#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "ScriptValue.h"

struct lua_State;

namespace simulator {

// Octets that a Lua state has and may have, instructions that it may still run, and when its time is over.
struct LuaLimits {
    std::size_t used;
    std::size_t most;
    int instructions;
    std::chrono::steady_clock::time_point deadline;
};

// Runs device files. They get Lua's base language, math, and a few functions of string and table; no
// files, no modules, no operating system, nothing that runs long without Lua instructions. Instructions,
// time and memory are limited. Every name in `constructors` is a function that gives its table back with its
// name and line on it; the tables of `device` calls are collected.
class LuaSandbox {
public:
    explicit LuaSandbox(std::vector<std::string> const& constructors,
                        std::size_t mostMemory = 64 * 1024 * 1024);
    LuaSandbox(LuaSandbox const&) = delete;
    LuaSandbox& operator=(LuaSandbox const&) = delete;

    // The tables of all `device` calls, in their order. Throws Mistake with the line.
    std::vector<ScriptValue> Run(std::string const& text);
    // The value of an expression.
    ScriptValue Evaluate(std::string const& expression);

private:
    void Execute(std::string const& text, int results);

    LuaLimits limits;  // have to outlive the state
    std::unique_ptr<lua_State, void (*)(lua_State*)> lua;
};

}  // namespace simulator
