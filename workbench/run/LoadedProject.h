#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "AddIn.h"
#include "Project.h"
#include "ScriptBinding.h"
#include "ScriptState.h"
#include "SetRequest.h"
#include "SourceText.h"
#include "dorvel/Runtime.h"

namespace workbench {

// A project that can run: its Lua state, the runtime around it, and its blocks with their tasks. Load the
// add-in first. When a call into Lua's C library or a finalizer does not return, the process ends with exit
// code 2 and one line on standard error, two seconds after the time limit.
class LoadedProject : private ScriptBinding::Receiver {
public:
    // path is the project's name in messages; params are the entries of Param. Throws AddInError.
    LoadedProject(std::string projectPath, std::map<std::string, std::string> const& paramValues,
                  tools::LuaLimits const& scriptLimits = {});
    ~LoadedProject() override;
    LoadedProject(LoadedProject const&) = delete;
    LoadedProject& operator=(LoadedProject const&) = delete;

    // Runs the text, makes tasks and blocks and passes the variables to the driver. Every mistake is a
    // ProjectError that begins with the path; the object cannot be used after one. Called once.
    void Load(SourceText projectSource);

    dorvel::Runtime& Runtime() { return *runtime; }
    std::vector<TaskConfig> const& Tasks() const { return tasks; }
    // In the order of the project. References stay valid.
    std::deque<BlockConfig> const& Blocks() const { return blocks; }
    // Returns what the script has set since the last call, including functions that CallDue called.
    std::vector<SetRequest> TakeSets();
    // Calls the functions of After whose time has come, on the calling thread. A mistake in one becomes a
    // line of the log.
    void CallDue();
    // Names of params that the project has not read.
    std::vector<std::string> UnusedParams() const;

private:
    struct ParamValue {
        std::string text;
        bool isRead = false;
    };

    struct NamedSet {
        std::string name;
        std::string text;
        Place where;
    };

    struct Timer {
        long long time;  // a file time
        int reference;
    };

    void AddTask(TaskConfig task) override;
    BlockConfig const& AddBlock(BlockConfig block) override;
    bool BlockMade() override;
    std::string const* Param(char const* name) override;
    int LineOfVariable(Place const& block, std::string const& name, int occurrence) const override;

    void SetVariable(std::string const& name, std::string const& text, Place const& place) override;
    void CallAfter(double seconds, int reference) override;

    void RunScript();
    void CheckSets();
    void DropUnmadeBlocks();
    void CheckTasks();
    void DeclareVariables(BlockConfig& block);
    void StartBlock(BlockConfig const& block);
    void EndProcess(char const* reason) const;

    std::string path;
    std::string shortPath;  // as in Lua's messages
    tools::LuaLimits limits;
    std::map<std::string, ParamValue> params;
    SourceText source;
    std::vector<TaskConfig> tasks;
    std::deque<BlockConfig> blocks;
    bool isLoaded = false;
    std::vector<NamedSet> namedSets;  // checked after the script: a later line may make the variable
    std::vector<SetRequest> sets;
    std::vector<Timer> timers;
    ScriptBinding binding;
    std::unique_ptr<ScriptState> script;
    std::unique_ptr<dorvel::Runtime> runtime;  // destroyed before the script
};

}  // namespace workbench
