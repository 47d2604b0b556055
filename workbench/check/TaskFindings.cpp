#include <algorithm>
#include <map>

#include "BlockView.h"
#include "FindingFamilies.h"
#include "Printable.h"

namespace workbench {

namespace {

// The least that an exchange takes, in milliseconds: on the local network, and through a router to a slow
// one.
constexpr long long LocalExchange = 1;
constexpr long long RoutedExchange = 10;

struct Load {
    std::vector<BlockConfig const*> blocks;
    std::map<Device, long long> silences;  // milliseconds in a cycle, if the device is silent
    std::size_t objects = 0;
    std::size_t writes = 0;  // in every cycle
    long long time = 0;      // milliseconds, if all devices answer
    bool isSilenceKnown = true;

    void Add(BlockConfig const& block) {
        blocks.push_back(&block);
        Device const device = DeviceOf(block);
        if (IsKnown(device)) {
            silences[device] += SilenceOf(block);
            isSilenceKnown = isSilenceKnown && !IsRefused(block, "CountRepeat");
        }
        std::size_t const polled = ObjectsOf(block).size();
        bool const isRouted = NumberOf(block, "NetworkNumber", 0) != 0;
        objects += polled;
        time += static_cast<long long>(polled) * (isRouted ? RoutedExchange : LocalExchange);
        if (block.writeCondition == ProtocolWriteCondition::Always) {
            AddWrites(block);
        }
    }

    // A write waits until nothing has arrived for the time of an answer.
    void AddWrites(BlockConfig const& block) {
        for (VariableConfig const& variable : block.variables) {
            if (variable.write && WriteOf(variable).refusal.empty()) {
                ++writes;
                time += AnswerTime();
            }
        }
    }
};

// The first block that is on another device than the first one.
BlockConfig const& OtherDevice(Load const& load) {
    Device first;
    auto const other = std::find_if(load.blocks.begin(), load.blocks.end(), [&](BlockConfig const* block) {
        Device const device = DeviceOf(*block);
        first = IsKnown(first) ? first : device;
        return IsKnown(device) && device != first;
    });
    return **other;
}

void FindShared(std::string const& task, Load const& load, Findings& findings) {
    if (load.silences.size() < 2) {
        return;
    }
    std::vector<std::string> names;
    for (BlockConfig const* const block : load.blocks) {
        if (IsKnown(DeviceOf(*block))) {
            names.push_back(block->name);
        }
    }
    auto const longest = std::max_element(load.silences.begin(), load.silences.end(),
                                          [](auto const& a, auto const& b) { return a.second < b.second; });
    std::string const delay = load.isSilenceKnown ? " by up to " + Seconds(longest->second) : "";
    findings.push_back(OfBlock(FindingCode::SharedTask, OtherDevice(load), "Task",
                               "task " + tools::Quoted(task) + " polls " +
                                   std::to_string(load.silences.size()) + " devices one after the other (" +
                                   Listed(names) + "): one silent device delays the others" + delay +
                                   " in every cycle"));
}

void FindOverrun(TaskConfig const& task, Load const& load, Findings& findings) {
    if (!task.isPeriodKnown || load.time <= task.period) {
        return;
    }
    std::string message =
        "a cycle takes at least about " + Seconds(load.time) + " (" + Counted(load.objects, "object");
    if (load.writes > 0) {
        message += ", " + Counted(load.writes, "write") + " of a second each in every cycle";
    }
    message += "), and the period is " + Seconds(task.period) + ": cycles begin late";
    Place const place = task.where.file.empty() ? load.blocks.front()->where.place : task.where;
    findings.push_back(
        {FindingCode::ShortPeriod, place, {}, "task " + tools::Quoted(task.name), {}, "Period", message, {}});
}

}  // namespace

void FindTaskLoads(std::vector<TaskConfig> const& tasks, Blocks const& blocks, Findings& findings) {
    std::map<std::string, Load> loads;
    for (BlockConfig const& block : blocks) {
        if (!IsRefused(block, "Task")) {
            loads[block.task.empty() ? tasks.front().name : block.task].Add(block);
        }
    }
    for (TaskConfig const& task : tasks) {
        auto const load = loads.find(task.name);
        if (load != loads.end() && !task.name.empty()) {
            FindShared(task.name, load->second, findings);
            FindOverrun(task, load->second, findings);
        }
    }
}

}  // namespace workbench
