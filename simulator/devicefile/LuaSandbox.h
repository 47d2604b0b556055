#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "LuaState.h"
#include "Script.h"

namespace simulator {

// Runs device files. They have the base language of Lua, math, and a few functions of string and table, but
// no files, no modules, no operating system and no function that can run long without Lua instructions.
// Instructions, time and memory are limited. Every name in `constructors` is a function that returns its
// table, marked with the name and the line of the call. The tables of `device` calls are collected.
class LuaSandbox {
public:
    // Throws Mistake if the memory does not suffice.
    explicit LuaSandbox(std::vector<std::string> const& constructors,
                        std::size_t mostMemory = std::size_t{64} << 20);

    // The tables of all `device` calls, in their order. Throws Mistake with the line.
    std::vector<ScriptValue> Run(std::string const& text);
    // The value of an expression.
    ScriptValue Evaluate(std::string const& expression);

private:
    void Execute(std::string const& text, int results);
    // Pops the value on top of the stack and returns it.
    ScriptValue TakeValue();

    tools::LuaState state;
};

}  // namespace simulator
