#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Finding.h"
#include "Project.h"
#include "ScriptBinding.h"
#include "ScriptState.h"
#include "SetRequest.h"
#include "SourceFiles.h"
#include "SourceText.h"

namespace workbench {

// Reads a project: runs its script and keeps tasks, blocks and values. When a call into Lua's C library or a
// finalizer does not return, the process ends with exit code 2 and one line on standard error, two seconds
// after the time limit.
class ProjectScript : private ScriptBinding::Receiver {
public:
    // Throw ends the reading at the first mistake, with a ProjectError. Collect keeps the mistakes and reads
    // on: the next field, variable and block. A mistake that the script itself catches is not kept.
    enum class OnMistake { Throw, Collect };

    // Makes what a block needs to run.
    class Maker {
    public:
        virtual ~Maker() = default;
        // Called before the driver reads the block.
        virtual void Declare(BlockConfig& block) = 0;
        // The driver's object that was made last.
        virtual ScadaProtocol* Made() = 0;
        virtual void CallAfter(double seconds, int reference) = 0;
    };

    // path is the project's name in messages; params are the entries of Param.
    ProjectScript(std::string projectPath, std::map<std::string, std::string> const& paramValues,
                  tools::LuaLimits const& scriptLimits, OnMistake onMistake);
    ~ProjectScript() override;
    ProjectScript(ProjectScript const&) = delete;
    ProjectScript& operator=(ProjectScript const&) = delete;

    // For the driver's libraries, which are opened before InstallNames.
    lua_State* State() const { return script->Get(); }
    // False when there is no BACnet.new.
    bool InstallNames() { return binding.Install(State()); }

    // Runs the text. Without a maker, no block gets a driver's object and no function of After is called.
    // Called once.
    void Read(SourceText projectSource, Maker* blockMaker);

    // Calls a function of After. Returns the mistake in it, or "".
    std::string Call(int reference);

    std::string const& Path() const { return path; }
    std::vector<TaskConfig> const& Tasks() const { return tasks; }
    // In the order of the project. References stay valid.
    std::deque<BlockConfig> const& Blocks() const { return blocks; }
    // The mistakes that were collected, in the order of the script.
    Findings const& Mistakes() const { return mistakes; }
    // The files that have been loaded up to the last block, the project itself first.
    std::vector<std::string> const& Files() const { return files; }
    // Returns what the script has set since the last call, including functions that Call called.
    std::vector<SetRequest> TakeSets();
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

    void Report(Findings found, ScriptCall const& call) override;
    void AddTask(tools::ScriptValue const& task, ScriptCall const& call) override;
    BlockConfig const& AddBlock(tools::ScriptValue const& block, ScriptCall const& call) override;
    bool BlockMade() override;
    std::string const* Param(char const* name) override;
    void SetVariable(std::string const& name, std::string const& text, Place const& place) override;
    void CallAfter(double seconds, int reference) override;

    void Report(Finding found);
    BlockConfig ReadBlock(tools::ScriptValue const& value, ScriptCall const& call, Findings& found);
    BlockSource Locate(tools::ScriptValue const& block, ScriptCall const& call);
    void AddLoadedFiles(lua_State* L);
    void RunScript();
    void ReportScriptError(std::string const& message);
    Finding ScriptError(std::string const& message) const;
    void DropUnmadeBlocks();
    void CheckTasks();
    std::set<std::string> UnlistedBlocks() const;
    void CheckSets();
    void EndProcess(char const* reason) const;

    std::string path;
    tools::LuaLimits limits;
    OnMistake onMistake;
    Maker* maker = nullptr;
    std::map<std::string, ParamValue> params;
    SourceText source;
    SourceFiles sources;
    std::vector<std::string> files;
    std::vector<TaskConfig> tasks;
    std::deque<BlockConfig> blocks;
    std::set<std::string> blockNames;
    Findings mistakes;
    Findings raised;  // by the last error that was raised in the script
    bool isRead = false;
    std::vector<NamedSet> namedSets;  // checked after the script: a later line may make the variable
    std::vector<SetRequest> sets;
    ScriptBinding binding;
    std::unique_ptr<ScriptState> script;
};

}  // namespace workbench
