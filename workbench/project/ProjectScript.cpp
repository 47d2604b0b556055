#include "ProjectScript.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <utility>

#include "ExitCode.h"
#include "Printable.h"
#include "ProjectChecks.h"
#include "ProjectError.h"
#include "Suggestion.h"
#include "Watchdog.h"

namespace workbench {

namespace {

constexpr std::chrono::milliseconds Grace{2000};

// With the slash at its end; "" for the current one.
std::string FolderOf(std::string const& path) {
    return path.substr(0, path.rfind('/') + 1);
}

std::string LineOf(Finding const& finding) {
    return Prefix(finding.where) + finding.Text();
}

bool EndsWith(std::string const& text, std::string const& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

}  // namespace

ProjectScript::ProjectScript(std::string projectPath, std::map<std::string, std::string> const& paramValues,
                             tools::LuaLimits const& scriptLimits, OnMistake mistakePolicy)
    : path(std::move(projectPath)),
      limits(scriptLimits),
      onMistake(mistakePolicy),
      source(""),
      files({path}),
      binding(*this),
      script(std::make_unique<ScriptState>(limits, FolderOf(path))) {
    for (auto const& value : paramValues) {
        params[value.first].text = value.second;
    }
}

ProjectScript::~ProjectScript() {
    try {
        Watchdog const watchdog(limits.time + Grace, [this] { EndProcess("a finalizer does not end"); });
        script.reset();
    } catch (std::exception const&) {
        // There is no memory or no thread for a watchdog. The destructor of script closes the state.
    }
}

void ProjectScript::Read(SourceText projectSource, Maker* blockMaker) {
    source = std::move(projectSource);
    maker = blockMaker;
    RunScript();
    DropUnmadeBlocks();
    if (blocks.empty() && onMistake == OnMistake::Collect && mistakes.empty()) {
        mistakes = raised;  // caught, but nothing came after it
    }
    if (blocks.empty() && mistakes.empty()) {
        Report({FindingCode::NoBlock,
                {path, 0},
                {},
                {},
                {},
                {},
                "the project has no block; make one with BACnet.new{...}",
                {}});
    }
    if (tasks.empty()) {
        tasks.emplace_back();
        tasks.back().name = "main";
    }
    CheckTasks();
    CheckSets();
    isRead = true;
}

void ProjectScript::RunScript() {
    Watchdog const watchdog(limits.time + Grace, [this] { EndProcess("the project does not end"); });
    binding.GiveRoom(limits.memory);
    script->StartClock();
    std::string const mistake = script->Run(source.Text(), "@" + path);
    script->StopClock();
    if (!mistake.empty()) {
        ReportScriptError(mistake);
    }
}

std::string ProjectScript::Call(int reference) {
    Watchdog const watchdog(limits.time + Grace, [this] { EndProcess("the project does not end"); });
    binding.GiveRoom(limits.memory);
    script->StartClock();
    std::string mistake = script->Call(reference);
    script->StopClock();
    return mistake;
}

// A mistake that the bindings have raised keeps its code. A coroutine puts its own place in front.
void ProjectScript::ReportScriptError(std::string const& message) {
    bool const isRaised = !raised.empty() && EndsWith(message, LineOf(raised.front()));
    if (isRaised && onMistake == OnMistake::Collect) {
        mistakes.insert(mistakes.end(), raised.begin(), raised.end());
        return;
    }
    AddLoadedFiles(State());
    Report(ScriptError(message));
}

// Lua puts "file:line:" in front of most messages.
Finding ProjectScript::ScriptError(std::string const& message) const {
    Finding error{FindingCode::ScriptError, {path, 0}, {}, {}, {}, {}, tools::Printable(message), {}};
    for (std::string const& file : files) {
        std::string const start = ShortName(file) + ":";
        std::size_t const digits = start.size();
        std::size_t const end = message.find_first_not_of("0123456789", digits);
        bool const isPlaced = message.compare(0, digits, start) == 0 && end != std::string::npos &&
                              end > digits && message.compare(end, 2, ": ") == 0;
        if (isPlaced) {
            error.where = {file, std::atoi(message.c_str() + digits)};
            error.message = tools::Printable(message.substr(end + 2));
            break;
        }
    }
    return error;
}

void ProjectScript::EndProcess(char const* reason) const {
    std::fprintf(stderr, "%s: %s\n", path.c_str(), reason);
    std::fflush(stderr);
    _exit(tools::WorkbenchExit::Usage);
}

void ProjectScript::Report(Finding found) {
    if (onMistake == OnMistake::Throw) {
        throw ProjectError(LineOf(found));
    }
    mistakes.push_back(std::move(found));
}

void ProjectScript::Report(Findings found, ScriptCall const& call) {
    if (found.empty()) {
        return;
    }
    if (onMistake == OnMistake::Collect && !call.isCaught) {
        std::move(found.begin(), found.end(), std::back_inserter(mistakes));
        return;
    }
    raised = std::move(found);
    throw ProjectError(LineOf(raised.front()));
}

void ProjectScript::AddTask(tools::ScriptValue const& value, ScriptCall const& call) {
    Findings found;
    TaskConfig task = CheckTask(value, call.place, found);
    bool const isTaken =
        found.empty() && std::any_of(tasks.begin(), tasks.end(),
                                     [&](TaskConfig const& other) { return other.name == task.name; });
    if (isTaken) {
        found.push_back({FindingCode::NameTaken,
                         call.place,
                         {},
                         "task " + tools::Quoted(task.name),
                         {},
                         "Name",
                         "the name is already taken; each task needs its own",
                         {}});
    }
    Report(std::move(found), call);
    if (!isTaken) {
        tasks.push_back(std::move(task));
    }
}

BlockSource ProjectScript::Locate(tools::ScriptValue const& block, ScriptCall const& call) {
    if (!sources.Has(path)) {
        sources.Add(path, source.Text());
    }
    AddLoadedFiles(call.L);
    return sources.Locate(call.place, block);
}

void ProjectScript::AddLoadedFiles(lua_State* L) {
    for (std::string& file : ScriptState::LoadedFiles(L, files.size() - 1)) {
        try {
            sources.Add(file, SourceText::FromFile(file).Text());
        } catch (ProjectError const&) {
            // It is gone, or a pipe: its tables have no places.
        }
        files.push_back(std::move(file));
    }
}

// Places are looked for if somebody wants to see them.
BlockConfig ProjectScript::ReadBlock(tools::ScriptValue const& value, ScriptCall const& call,
                                     Findings& found) {
    if (onMistake == OnMistake::Throw) {
        BlockSource const unknown{{call.place, nullptr}, {}};
        BlockConfig block = CheckBlock(value, unknown, found);
        if (found.empty()) {
            return block;
        }
        found.clear();
    }
    return CheckBlock(value, Locate(value, call), found);
}

BlockConfig const& ProjectScript::AddBlock(tools::ScriptValue const& value, ScriptCall const& call) {
    DropUnmadeBlocks();
    Findings found;
    BlockConfig block = ReadBlock(value, call, found);
    if (!block.name.empty() && blockNames.count(block.name) > 0) {
        found.push_back({FindingCode::NameTaken,
                         block.where.Of("Name"),
                         block.name,
                         {},
                         {},
                         "Name",
                         "the name is already taken; each block needs its own",
                         {}});
    }
    Report(std::move(found), call);
    if (maker) {
        maker->Declare(block);
    }
    blockNames.insert(block.name);
    blocks.push_back(std::move(block));
    return blocks.back();
}

// A script may catch a Lua error of the driver and continue.
void ProjectScript::DropUnmadeBlocks() {
    while (maker && !blocks.empty() && !blocks.back().protocol) {
        blockNames.erase(blocks.back().name);
        blocks.pop_back();
    }
}

bool ProjectScript::BlockMade() {
    if (!maker) {
        return true;
    }
    ScadaProtocol* const made = maker->Made();
    bool const isNew = made && std::none_of(blocks.begin(), blocks.end(),
                                            [&](BlockConfig const& block) { return block.protocol == made; });
    if (isNew) {
        blocks.back().protocol = made;
    }
    return isNew;
}

std::string const* ProjectScript::Param(char const* name) {
    auto const param = params.find(name);
    if (param == params.end()) {
        return nullptr;
    }
    param->second.isRead = true;
    return &param->second.text;
}

std::vector<std::string> ProjectScript::UnusedParams() const {
    std::vector<std::string> names;
    for (auto const& param : params) {
        if (!param.second.isRead) {
            names.push_back(param.first);
        }
    }
    return names;
}

void ProjectScript::SetVariable(std::string const& name, std::string const& text, Place const& place) {
    if (isRead) {
        sets.push_back(MakeSetRequest(blocks, name, text));
    } else {
        namedSets.push_back({name, text, place});
    }
}

// Blocks of which nobody knows the variables, since their lists have a mistake.
std::set<std::string> ProjectScript::UnlistedBlocks() const {
    std::set<std::string> names;
    for (BlockConfig const& block : blocks) {
        if (IsRefused(block, "Vars")) {
            names.insert(block.name);
        }
    }
    for (BlockConfig const& block : blocks) {
        if (!IsRefused(block, "Vars")) {
            names.erase(block.name);
        }
    }
    return names;
}

void ProjectScript::CheckSets() {
    std::set<std::string> faulty;  // variables that have been reported already
    for (Finding const& mistake : mistakes) {
        faulty.insert(mistake.block + "." + mistake.variable);
    }
    std::set<std::string> const unlisted = UnlistedBlocks();
    VariableIndex const index(blocks);
    for (NamedSet const& set : namedSets) {
        if (faulty.count(set.name) > 0 || unlisted.count(set.name.substr(0, set.name.find('.'))) > 0) {
            continue;
        }
        try {
            sets.push_back(index.MakeSetRequest(set.name, set.text));
        } catch (ProjectError const& mistake) {
            Report({FindingCode::BadSet, set.where, {}, "Set", {}, {}, mistake.what(), {}});
        }
    }
}

std::vector<SetRequest> ProjectScript::TakeSets() {
    return std::exchange(sets, {});
}

void ProjectScript::CallAfter(double seconds, int reference) {
    if (maker) {
        maker->CallAfter(seconds, reference);
    }
}

void ProjectScript::CheckTasks() {
    std::vector<std::string> names;
    for (TaskConfig const& task : tasks) {
        if (!task.name.empty()) {
            names.push_back(task.name);
        }
    }
    for (BlockConfig const& block : blocks) {
        if (!block.task.empty() && std::find(names.begin(), names.end(), block.task) == names.end()) {
            Report({FindingCode::UnknownName,
                    block.where.Of("Task"),
                    block.name,
                    {},
                    {},
                    "Task",
                    tools::Quoted(block.task) + " is not a task of the project" +
                        tools::DidYouMean(block.task, names),
                    {}});
        }
    }
}

}  // namespace workbench
