#include "LoadedProject.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

#include "FieldReader.h"
#include "Printable.h"
#include "dorvelshare/HostEnvironment.h"
#include "dorvelshare/Trace.h"

namespace workbench {

LoadedProject::LoadedProject(std::string projectPath, std::map<std::string, std::string> const& paramValues,
                             tools::LuaLimits const& scriptLimits)
    : script(std::move(projectPath), paramValues, scriptLimits, ProjectScript::OnMistake::Throw),
      runtime(std::make_unique<dorvel::Runtime>(script.State())) {
    try {
        runtime->OpenLibraries();
    } catch (std::exception const& failure) {
        throw AddInError(std::string("the add-in cannot prepare a script: ") + failure.what());
    }
    if (!script.InstallNames()) {
        throw AddInError("the add-in does not provide BACnet.new");
    }
}

void LoadedProject::Load(SourceText projectSource) {
    script.Read(std::move(projectSource), this);
    for (TaskConfig const& task : Tasks()) {
        runtime->AddTask(task.name, std::chrono::milliseconds(task.period));
    }
    for (BlockConfig const& block : Blocks()) {
        StartBlock(block);
    }
}

void LoadedProject::Declare(BlockConfig& block) {
    VariableStore& store = runtime->Variables();
    bool writes = false;
    for (VariableConfig& variable : block.variables) {
        std::string const name = FullName(block, variable);
        variable.readId = store.Declare(name, variable.type);
        if (variable.write && !isReadOnly) {
            variable.writeId = store.Declare(name + " (to write)", variable.type);
            writes = true;
        }
    }
    if (writes && block.writeCondition == ProtocolWriteCondition::OnTrigger) {
        block.writeItemId = store.Declare(block.name + " (write trigger)", OpcUaType_Boolean);
        block.fields.emplace_back("WriteItemId", block.writeItemId);
    }
}

ScadaProtocol* LoadedProject::Made() {
    std::vector<ScadaProtocol*> const made = runtime->Blocks();
    return made.empty() ? nullptr : made.back();
}

void LoadedProject::CallAfter(double seconds, int reference) {
    timers.push_back({dorvel::Environment().Now() + static_cast<long long>(seconds * 1e7), reference});
}

void LoadedProject::CallDue() {
    long long const now = dorvel::Environment().Now();
    auto const due = std::stable_partition(timers.begin(), timers.end(),
                                           [=](Timer const& timer) { return timer.time > now; });
    std::vector<Timer> calls(due, timers.end());
    timers.erase(due, timers.end());
    std::stable_sort(calls.begin(), calls.end(),
                     [](Timer const& left, Timer const& right) { return left.time < right.time; });
    for (Timer const& call : calls) {
        std::string const mistake = script.Call(call.reference);
        if (!mistake.empty()) {
            logMsgLn(mistake.c_str());
        }
    }
}

void LoadedProject::StartBlock(BlockConfig const& block) {
    std::string const task = block.task.empty() ? Tasks().front().name : block.task;
    try {
        runtime->Assign(*block.protocol, *runtime->FindTask(task));
        runtime->InitBlock(*block.protocol);
    } catch (std::exception const& reason) {
        throw ProjectError(Prefix(block.where.place) + "block " + tools::Quoted(block.name) + ": " +
                           tools::Printable(reason.what()));
    }
}

}  // namespace workbench
