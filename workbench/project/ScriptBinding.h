#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "Finding.h"
#include "Project.h"
#include "ScriptValue.h"

struct lua_State;

namespace workbench {

// A call of a script's function.
struct ScriptCall {
    lua_State* L;
    Place place;
    bool isCaught;  // an error that is raised goes to a function of the script, such as pcall, not to its end
};

// The functions of a project's script: Task{...}, BACnet.new{...}, Set(name, value), After(seconds, function)
// and Param.NAME. Passes what they get to the receiver. An exception of the receiver becomes a Lua error.
class ScriptBinding {
public:
    class Receiver {
    public:
        virtual ~Receiver() = default;
        // Throws a mistake, or keeps it, and then the script goes on.
        virtual void Report(Findings mistakes, ScriptCall const& call) = 0;
        virtual void AddTask(tools::ScriptValue const& task, ScriptCall const& call) = 0;
        // Keeps the block until BlockMade; the result is passed to the driver.
        virtual BlockConfig const& AddBlock(tools::ScriptValue const& block, ScriptCall const& call) = 0;
        // Called after the driver has made its object. False when it has not.
        virtual bool BlockMade() = 0;
        // "Block.Variable" and the value's text.
        virtual void SetVariable(std::string const& name, std::string const& text, Place const& place) = 0;
        // Calls a function in so many seconds; reference is its reference in the Lua registry.
        virtual void CallAfter(double seconds, int reference) = 0;
        // The value of Param.NAME, null when there is none.
        virtual std::string const* Param(char const* name) = 0;
    };

    // The receiver must outlive the Lua state.
    explicit ScriptBinding(Receiver& blockReceiver) : receiver(blockReceiver) {}

    // Installs the functions in the state and replaces the add-in's table BACnet. False when the add-in has
    // no BACnet.new.
    bool Install(lua_State* L);

    // Sets how many octets the script may pass from now on.
    void GiveRoom(std::size_t octets) { room = octets; }

private:
    // Lua functions. Each does what needs C++ objects in an Accept function, and only after it what may raise
    // a Lua error.
    static ScriptBinding& Self(lua_State* L);
    static int InstallNames(lua_State* L);
    static int ReadParam(lua_State* L);
    static int MakeTask(lua_State* L);
    static int MakeBlock(lua_State* L);
    static int Set(lua_State* L);
    static int After(lua_State* L);
    int RaiseMistake(lua_State* L) const;

    // None throws; a failure leaves its text in mistake.
    template <class Body>
    bool Accept(Body const& body);
    bool AcceptTask(lua_State* L);
    bool AcceptSet(lua_State* L);
    bool AcceptAfter(double seconds, int reference);
    BlockConfig const* AcceptBlock(lua_State* L);
    bool AcceptMade();
    bool IsCaught(lua_State* L) const;
    ScriptCall CallOf(lua_State* L) const;
    std::optional<tools::ScriptValue> ReadTable(ScriptCall const& call, int depth);

    Receiver& receiver;
    std::string mistake;
    std::size_t room = 0;
    int (*catchers[2])(lua_State*) = {};  // pcall and xpcall
};

}  // namespace workbench
