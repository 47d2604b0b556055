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
// may exist at a time; the order of calls is Make (or Declare, Compile and Run of each block), Init, any
// number of RunOnce, Release, Collect.
class HostedBlocks {
public:
    // Throws as SubjectNamed does. Subjects that are written, and silent ones, are not supported
    // here.
    HostedBlocks(std::string const& subject, int objects, int blocks);
    ~HostedBlocks();
    HostedBlocks(HostedBlocks const&) = delete;
    HostedBlocks& operator=(HostedBlocks const&) = delete;

    // Declare, Compile and Run of every block; then Lua collects what the scripts leave.
    void Make();
    // Declares the variables of a block in the runtime and forms its script.
    void Declare();
    // Has Lua compile the script.
    void Compile();
    // Runs the script, which creates the block and its variables.
    void Run();
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
    void Check(int status) const;
    std::string ScriptOfABlock();

    Subject const subject;
    int const objects;
    int const blocks;
    PreparedNetwork network;
    std::string script;  // between Declare and Compile
    std::unique_ptr<lua_State, void (*)(lua_State*)> state;
    std::unique_ptr<dorvel::Runtime> runtime;
};

}  // namespace bench
