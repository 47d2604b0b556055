#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "AddIn.h"
#include "Project.h"
#include "ProjectScript.h"
#include "SetRequest.h"
#include "SourceText.h"
#include "dorvel/Runtime.h"

namespace workbench {

// A project that can run: its script, the runtime around it, and its blocks with their tasks. Load the add-in
// first. A script that does not end ends the process (ProjectScript.h).
class LoadedProject : private ProjectScript::Maker {
public:
    // path is the project's name in messages; params are the entries of Param. Throws AddInError.
    LoadedProject(std::string projectPath, std::map<std::string, std::string> const& paramValues,
                  tools::LuaLimits const& scriptLimits = {});
    LoadedProject(LoadedProject const&) = delete;
    LoadedProject& operator=(LoadedProject const&) = delete;

    // Nothing will be written: variables get no write channels. Before Load.
    void RemoveWrites() { isReadOnly = true; }

    // Runs the text, makes tasks and blocks and passes the variables to the driver. Every mistake is a
    // ProjectError that begins with the path; the object cannot be used after one. Called once.
    void Load(SourceText projectSource);

    dorvel::Runtime& Runtime() { return *runtime; }
    std::vector<TaskConfig> const& Tasks() const { return script.Tasks(); }
    // In the order of the project. References stay valid.
    std::deque<BlockConfig> const& Blocks() const { return script.Blocks(); }
    // Returns what the script has set since the last call, including functions that CallDue called.
    std::vector<SetRequest> TakeSets() { return script.TakeSets(); }
    // Calls the functions of After whose time has come, on the calling thread. A mistake in one becomes a
    // line of the log.
    void CallDue();
    // Names of params that the project has not read.
    std::vector<std::string> UnusedParams() const { return script.UnusedParams(); }

private:
    struct Timer {
        long long time;  // a file time
        int reference;
    };

    void Declare(BlockConfig& block) override;
    ScadaProtocol* Made() override;
    void CallAfter(double seconds, int reference) override;

    void StartBlock(BlockConfig const& block);

    bool isReadOnly = false;
    std::vector<Timer> timers;
    ProjectScript script;
    std::unique_ptr<dorvel::Runtime> runtime;  // destroyed before the script
};

}  // namespace workbench
