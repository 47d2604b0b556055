#pragma once

#include <cstddef>
#include <string>

#include "Project.h"

struct lua_State;

namespace workbench {

// What a project's script can call: Task{...}, BACnet.new{...}, Set(name, value), After(seconds, function)
// and Param.NAME. The arguments are checked here and given to the receiver; what it refuses with a
// ProjectError becomes a Lua error that begins with the place.
class ScriptBinding {
public:
    class Receiver {
    public:
        virtual ~Receiver() = default;
        virtual void AddTask(TaskConfig task) = 0;
        // Keeps the block until BlockMade; the result is what the driver is given.
        virtual BlockConfig const& AddBlock(BlockConfig block) = 0;
        // The driver has made its object. False when there is none.
        virtual bool BlockMade() = 0;
        // "Block.Variable" and the value's text.
        virtual void SetVariable(std::string const& name, std::string const& text, Place const& place) = 0;
        // To be called so many seconds from now; reference is the function's in the Lua registry.
        virtual void CallAfter(double seconds, int reference) = 0;
        // The value of Param.NAME, null when there is none.
        virtual std::string const* Param(char const* name) = 0;
        // The line of a variable's name behind blockLine, or blockLine.
        virtual int LineOfVariable(Place const& block, std::string const& name, int occurrence) const = 0;
    };

    // The receiver has to outlive the Lua state.
    explicit ScriptBinding(Receiver& blockReceiver) : receiver(blockReceiver) {}

    // Puts the names into the state, over the add-in's own table BACnet. False when the add-in has no
    // BACnet.new.
    bool Install(lua_State* L);

    // How many octets the script may hand over from now on.
    void GiveRoom(std::size_t octets) { room = octets; }

private:
    // Each first does what needs C++ objects, in a function of its own, and only then what may jump out of
    // it.
    static ScriptBinding& Self(lua_State* L);
    static int InstallNames(lua_State* L);
    static int ReadParam(lua_State* L);
    static int MakeTask(lua_State* L);
    static int MakeBlock(lua_State* L);
    static int Set(lua_State* L);
    static int After(lua_State* L);
    int RaiseMistake(lua_State* L) const;

    // All leave the text in mistake when they fail, and none throws.
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
