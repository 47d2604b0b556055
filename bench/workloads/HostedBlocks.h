#pragma once

#include <memory>
#include <string>

#include "PreparedNetwork.h"
#include "Subject.h"

struct lua_State;
namespace dorvel {
class Runtime;
}

namespace bench {

// Loads the add-in into the process, where it stays. Milliseconds that dlopen took and that InitAddin took.
struct LoadTimes {
    double load = 0;
    double init = 0;
};
LoadTimes LoadAddin();

// Blocks of the add-in as a controller has them: in its runtime, made by a Lua script, with variables in the
// runtime's store, over a network that answers at once. The add-in is loaded before. There is one at a time;
// its life is Make, Init, RunOnce as often as wanted, LetGo, Collect.
class HostedBlocks {
public:
    // Throws as SubjectNamed does; a subject that is written cannot be had here.
    HostedBlocks(std::string const& subject, int objects, int blocks);
    ~HostedBlocks();
    HostedBlocks(HostedBlocks const&) = delete;
    HostedBlocks& operator=(HostedBlocks const&) = delete;

    // The script runs, which makes the blocks and gives each its variables.
    void Make();
    // Inited of every block.
    void Init();
    // One cycle of every block. Throws std::runtime_error unless every object was polled.
    void RunOnce();
    // The runtime ends and holds the blocks no more.
    void LetGo();
    // Lua collects what nobody holds: the blocks' __gc.
    void Collect();

    int Objects() const { return objects * blocks; }  // of all blocks
    int Variables() const { return Objects() * static_cast<int>(subject.variables.size()); }

private:
    void RunScript(std::string const& text);
    std::string ScriptOfABlock();

    Subject const subject;
    int const objects;
    int const blocks;
    PreparedNetwork network;
    std::unique_ptr<lua_State, void (*)(lua_State*)> state;
    std::unique_ptr<dorvel::Runtime> runtime;
};

}  // namespace bench
