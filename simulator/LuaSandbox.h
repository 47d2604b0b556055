#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ScriptValue.h"

struct lua_State;

namespace simulator {

// Runs device files. They get Lua's base language, math, and a few functions of string and table; no
// files, no modules, no operating system, nothing that runs long without Lua instructions. Instructions
// and memory are limited. Every name in `constructors` is a function that gives its table back with its
// name and line on it; the tables of `device` calls are collected.
class LuaSandbox {
public:
    explicit LuaSandbox(std::vector<std::string> const& constructors);
    ~LuaSandbox();
    LuaSandbox(LuaSandbox const&) = delete;
    LuaSandbox& operator=(LuaSandbox const&) = delete;

    // The tables of all `device` calls, in their order. Throws Mistake with the line.
    std::vector<ScriptValue> run(std::string const& text);
    // The value of an expression.
    ScriptValue evaluate(std::string const& expression);

private:
    void execute(std::string const& text, int results);

    std::size_t m_memory = 0;
    lua_State* m_lua;
};

}  // namespace simulator
