#pragma once

#include <cstddef>
#include <string>

#include "Project.h"

struct lua_State;

namespace workbench {

// The functions of a project's script: Task{...}, BACnet.new{...}, Set(name, value), After(seconds, function)
// and Param.NAME. Checks the arguments and passes them to the receiver. A ProjectError becomes a Lua error
// that begins with file and line.
class ScriptBinding {
public:
    class Receiver {
    public:
        virtual ~Receiver() = default;
        virtual void AddTask(TaskConfig task) = 0;
        // Keeps the block until BlockMade; the result is passed to the driver.
        virtual BlockConfig const& AddBlock(BlockConfig block) = 0;
        // Called after the driver has made its object. False when it has not.
        virtual bool BlockMade() = 0;
        // "Block.Variable" and the value's text.
        virtual void SetVariable(std::string const& name, std::string const& text, Place const& place) = 0;
        // Calls a function in so many seconds; reference is its reference in the Lua registry.
        virtual void CallAfter(double seconds, int reference) = 0;
        // The value of Param.NAME, null when there is none.
        virtual std::string const* Param(char const* name) = 0;
        // The line of a variable's name within the block, or the line of the block.
        virtual int LineOfVariable(Place const& block, std::string const& name, int occurrence) const = 0;
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

    Receiver& receiver;
    std::string mistake;
    std::size_t room = 0;
};

}  // namespace workbench
