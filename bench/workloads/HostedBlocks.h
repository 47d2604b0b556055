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

// The milliseconds that dlopen and InitAddin took. The add-in stays loaded until the process ends.
struct LoadTimes {
    double load = 0;
    double init = 0;
};
LoadTimes LoadAddin();

// Blocks of the add-in as on a controller: in its runtime, created by a Lua script, with variables in the
// runtime's store, over a network that answers at once. The add-in must be loaded already. Only one instance
// may exist at a time; the order of calls is Make, Init, any number of RunOnce, Release, Collect.
class HostedBlocks {
public:
    // Throws as SubjectNamed does. Subjects that are written are not supported here.
    HostedBlocks(std::string const& subject, int objects, int blocks);
    ~HostedBlocks();
    HostedBlocks(HostedBlocks const&) = delete;
    HostedBlocks& operator=(HostedBlocks const&) = delete;

    // Runs the script, which creates the blocks and their variables.
    void Make();
    // Calls Inited of every block.
    void Init();
    // Runs one cycle of every block. Throws std::runtime_error unless every object was polled.
    void RunOnce();
    // Ends the runtime and its references to the blocks.
    void Release();
    // Has Lua collect the unreferenced blocks, which calls their __gc.
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
