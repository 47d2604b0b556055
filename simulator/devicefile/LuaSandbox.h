#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "LuaState.h"
#include "Script.h"

namespace simulator {

// Runs device files. They get Lua's base language, math, and a few functions of string and table; no
// files, no modules, no operating system, nothing that runs long without Lua instructions. Instructions,
// time and memory are limited. Every name in `constructors` is a function that gives its table back with its
// name and line on it; the tables of `device` calls are collected.
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
    // Takes the value on top of the stack off it.
    ScriptValue TakeValue();

    tools::LuaState state;
};

}  // namespace simulator
