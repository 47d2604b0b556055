#include "LoadedProject.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <lua.hpp>
#include <utility>

#include "ExitCode.h"
#include "FieldReader.h"
#include "Printable.h"
#include "ProjectError.h"
#include "Suggestion.h"
#include "Watchdog.h"
#include "dorvelshare/HostEnvironment.h"
#include "dorvelshare/Trace.h"

namespace workbench {

namespace {

constexpr std::chrono::milliseconds Grace{2000};

// The file name as Lua shows it: the last 59 octets at most.
std::string ShortName(std::string const& path) {
    return path.size() < LUA_IDSIZE ? path : "..." + path.substr(path.size() - (LUA_IDSIZE - 4));
}

}  // namespace

LoadedProject::LoadedProject(std::string projectPath, std::map<std::string, std::string> const& paramValues,
                             tools::LuaLimits const& scriptLimits)
    : path(std::move(projectPath)),
      shortPath(ShortName(path)),
      limits(scriptLimits),
      source(""),
      binding(*this),
      script(std::make_unique<ScriptState>(limits)),
      runtime(std::make_unique<dorvel::Runtime>(script->Get())) {
    for (auto const& value : paramValues) {
        params[value.first].text = value.second;
    }
    try {
        runtime->OpenLibraries();
    } catch (std::exception const& failure) {
        throw AddInError(std::string("the add-in cannot prepare a script: ") + failure.what());
    }
    if (!binding.Install(script->Get())) {
        throw AddInError("the add-in does not provide BACnet.new");
    }
}

LoadedProject::~LoadedProject() {
    runtime.reset();
    try {
        Watchdog const watchdog(limits.time + Grace, [this] { EndProcess("a finalizer does not end"); });
        script.reset();
    } catch (std::exception const&) {
        // There is no memory or no thread for a watchdog. The destructor of script closes the state.
    }
}

void LoadedProject::Load(SourceText projectSource) {
    source = std::move(projectSource);
    RunScript();
    DropUnmadeBlocks();
    if (blocks.empty()) {
        throw ProjectError(path + ": the project has no block; make one with BACnet.new{...}");
    }
    if (tasks.empty()) {
        tasks.push_back({"main"});
    }
    CheckTasks();
    CheckSets();
    isLoaded = true;
    for (TaskConfig const& task : tasks) {
        runtime->AddTask(task.name, std::chrono::milliseconds(task.period));
    }
    for (BlockConfig const& block : blocks) {
        StartBlock(block);
    }
}

void LoadedProject::RunScript() {
    Watchdog const watchdog(limits.time + Grace, [this] { EndProcess("the project does not end"); });
    binding.GiveRoom(limits.memory);
    script->StartClock();
    std::string const mistake = script->Run(source.Text(), "@" + path);
    script->StopClock();
    if (!mistake.empty()) {
        bool const placed = mistake.compare(0, shortPath.size() + 1, shortPath + ":") == 0;
        throw ProjectError((placed ? "" : path + ": ") + tools::Printable(mistake));
    }
}

void LoadedProject::EndProcess(char const* reason) const {
    std::fprintf(stderr, "%s: %s\n", path.c_str(), reason);
    std::fflush(stderr);
    _exit(tools::WorkbenchExit::Usage);
}

void LoadedProject::AddTask(TaskConfig task) {
    for (TaskConfig const& other : tasks) {
        if (other.name == task.name) {
            throw ProjectError("task " + tools::Quoted(task.name) +
                               ": the name is already taken; each task needs its own");
        }
    }
    tasks.push_back(std::move(task));
}

BlockConfig const& LoadedProject::AddBlock(BlockConfig block) {
    DropUnmadeBlocks();
    for (BlockConfig const& other : blocks) {
        if (other.name == block.name) {
            throw ProjectError("block " + tools::Quoted(block.name) +
                               ": the name is already taken; each block needs its own");
        }
    }
    DeclareVariables(block);
    blocks.push_back(std::move(block));
    return blocks.back();
}

// A script may catch a Lua error of the driver and continue.
void LoadedProject::DropUnmadeBlocks() {
    while (!blocks.empty() && !blocks.back().protocol) {
        blocks.pop_back();
    }
}

void LoadedProject::DeclareVariables(BlockConfig& block) {
    VariableStore& store = runtime->Variables();
    bool writes = false;
    for (VariableConfig& variable : block.variables) {
        std::string const name = FullName(block, variable);
        variable.readId = store.Declare(name, variable.type);
        if (variable.write) {
            variable.writeId = store.Declare(name + " (to write)", variable.type);
            writes = true;
        }
    }
    if (writes && block.writeCondition == ProtocolWriteCondition::OnTrigger) {
        block.writeItemId = store.Declare(block.name + " (write trigger)", OpcUaType_Boolean);
        block.fields.emplace_back("WriteItemId", block.writeItemId);
    }
}

bool LoadedProject::BlockMade() {
    std::vector<ScadaProtocol*> const made = runtime->Blocks();
    bool const isNew = !made.empty() &&
                       std::none_of(blocks.begin(), blocks.end(),
                                    [&](BlockConfig const& block) { return block.protocol == made.back(); });
    if (isNew) {
        blocks.back().protocol = made.back();
    }
    return isNew;
}

std::string const* LoadedProject::Param(char const* name) {
    for (auto& param : params) {
        if (param.first == name) {
            param.second.isRead = true;
            return &param.second.text;
        }
    }
    return nullptr;
}

std::vector<std::string> LoadedProject::UnusedParams() const {
    std::vector<std::string> names;
    for (auto const& param : params) {
        if (!param.second.isRead) {
            names.push_back(param.first);
        }
    }
    return names;
}

void LoadedProject::SetVariable(std::string const& name, std::string const& text, Place const& place) {
    if (isLoaded) {
        sets.push_back(MakeSetRequest(blocks, name, text));
    } else {
        namedSets.push_back({name, text, place});
    }
}

void LoadedProject::CheckSets() {
    for (NamedSet const& set : namedSets) {
        sets.push_back(InContext(Prefix(set.where) + "Set: ",
                                 [&] { return MakeSetRequest(blocks, set.name, set.text); }));
    }
}

std::vector<SetRequest> LoadedProject::TakeSets() {
    return std::exchange(sets, {});
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
        Watchdog const watchdog(limits.time + Grace, [this] { EndProcess("the project does not end"); });
        binding.GiveRoom(limits.memory);
        script->StartClock();
        std::string const mistake = script->Call(call.reference);
        script->StopClock();
        if (!mistake.empty()) {
            logMsgLn(mistake.c_str());
        }
    }
}

int LoadedProject::LineOfVariable(Place const& block, std::string const& name, int occurrence) const {
    return block.file == shortPath ? source.LineOfVariable(block.line, name, occurrence) : block.line;
}

void LoadedProject::CheckTasks() {
    std::vector<std::string> names;
    for (TaskConfig const& task : tasks) {
        names.push_back(task.name);
    }
    for (BlockConfig const& block : blocks) {
        if (!block.task.empty() && std::find(names.begin(), names.end(), block.task) == names.end()) {
            throw ProjectError(Prefix(block.where) + "block " + tools::Quoted(block.name) +
                               ": field \"Task\": " + tools::Quoted(block.task) +
                               " is not a task of the project" + tools::DidYouMean(block.task, names));
        }
    }
}

void LoadedProject::StartBlock(BlockConfig const& block) {
    std::string const task = block.task.empty() ? tasks.front().name : block.task;
    try {
        runtime->Assign(*block.protocol, *runtime->FindTask(task));
        runtime->InitBlock(*block.protocol);
    } catch (std::exception const& reason) {
        throw ProjectError(Prefix(block.where) + "block " + tools::Quoted(block.name) + ": " +
                           tools::Printable(reason.what()));
    }
}

}  // namespace workbench
