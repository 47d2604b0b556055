#include "PlantMetrics.h"

#include <algorithm>
#include <map>
#include <optional>

#include "BlockTask.h"
#include "NumberText.h"
#include "PublishedQuality.h"
#include "ShownValue.h"
#include "TimeText.h"
#include "ValueText.h"
#include "WriteState.h"

namespace workbench {

namespace {

constexpr double TicksOfSecond = 1e7;

double Seconds(long long ticks) {
    return static_cast<double>(ticks) / TicksOfSecond;
}

std::string UnixSeconds(long long fileTime) {
    return MetricNumber(Seconds(fileTime - UnixEpoch));
}

bool IsMeasured(VariableConfig const& variable) {
    return IsNumeric(ValueType(variable)) || ValueType(variable) == OpcUaType_Boolean;
}

// None for a value that is not a number.
std::optional<std::string> NumberOf(OpcUa_Variant const& value) {
    switch (value.Datatype) {
        case OpcUaType_Boolean:
            return value.Value.Boolean ? "1" : "0";
        case OpcUaType_Float:
            return MetricNumber(tools::NumberText(value.Value.Float));
        case OpcUaType_Double:
            return MetricNumber(value.Value.Double);
        default:
            return IsNumeric(static_cast<_OpcUa_BuiltInType>(value.Datatype))
                       ? std::optional(ValueText(value, 0))
                       : std::nullopt;
    }
}

// The labels, with a number after the name if they are taken.
template <typename Make>
std::string Untaken(std::string& name, std::set<std::string>& taken, Make make) {
    std::string const first = name;
    std::string made = make(name);
    for (int number = 2; !taken.insert(made).second; ++number) {
        name = first + " (" + std::to_string(number) + ")";
        made = make(name);
    }
    return made;
}

struct BlockMetric {
    Metric metric;
    // None where the block has nothing yet.
    std::optional<std::string> (*number)(BlockSnapshot const& block, BlockCounts const& counts);
};

std::optional<std::string> Flag(bool isSet) {
    return isSet ? "1" : "0";
}

std::optional<std::string> CycleSeconds(BlockSnapshot const& block, long long ticks) {
    return block.times.count > 0 ? std::optional(MetricNumber(Seconds(ticks))) : std::nullopt;
}

constexpr BlockMetric BlockMetrics[] = {
    {Metric::BlockUp,
     [](auto const& block, auto const&) {
         return Flag(block.cycle > 0 && !block.isStandby && !IsFault(block));
     }},
    {Metric::BlockFault, [](auto const& block, auto const&) { return Flag(IsFault(block)); }},
    {Metric::BlockStandby, [](auto const& block, auto const&) { return Flag(block.isStandby); }},
    {Metric::BlockLastCycleTime,
     [](auto const& block, auto const&) {
         return block.cycle > 0 ? std::optional(UnixSeconds(block.time)) : std::nullopt;
     }},
    {Metric::BlockCycles,
     [](auto const& block, auto const&) { return std::optional(std::to_string(block.cycle)); }},
    {Metric::BlockFaultCycles,
     [](auto const&, auto const& counts) { return std::optional(std::to_string(counts.faults)); }},
    {Metric::BlockCycleLast,
     [](auto const& block, auto const&) { return CycleSeconds(block, block.times.last); }},
    {Metric::BlockCycleMedian,
     [](auto const& block, auto const&) { return CycleSeconds(block, block.times.median); }},
    {Metric::BlockCycleMaximum,
     [](auto const& block, auto const&) { return CycleSeconds(block, block.times.maximum); }},
};

constexpr WriteStage Stages[] = {WriteStage::Pending, WriteStage::Written, WriteStage::Unconfirmed,
                                 WriteStage::Differs, WriteStage::Refused};

void WriteRoundTrips(RoundTrips const& trips, MetricsText& text) {
    text.Begin(Metric::RoundTripCount);
    text.Add("", trips.Count());
    if (trips.Count() == 0) {
        return;
    }
    text.Begin(Metric::RoundTripLast);
    text.Add("", Seconds(trips.Last()));
    text.Begin(Metric::RoundTripMedian);
    text.Add("", Seconds(trips.Median()));
    text.Begin(Metric::RoundTripMaximum);
    text.Add("", Seconds(trips.Maximum()));
}

void WriteTraffic(TrafficFigures const& traffic, MetricsText& text) {
    text.Begin(Metric::DatagramsSent);
    text.Add("", traffic.requests);
    text.Begin(Metric::DatagramsReceived);
    text.Add("", traffic.answers);
    WriteRoundTrips(traffic.trips, text);
}

void WriteOutlets(std::vector<OutletState> const& outlets, MetricsText& text) {
    text.Begin(Metric::OutletUp);
    for (OutletState const& outlet : outlets) {
        text.Add(MetricLabels({{"outlet", outlet.name}}), outlet.health == OutletHealth::Good ? "1" : "0");
    }
    text.Begin(Metric::OutletStates);
    for (OutletState const& outlet : outlets) {
        for (OutletHealth const health :
             {OutletHealth::Starting, OutletHealth::Good, OutletHealth::Waiting, OutletHealth::Failed}) {
            text.Add(MetricLabels({{"outlet", outlet.name}, {"state", HealthName(health)}}),
                     outlet.health == health ? "1" : "0");
        }
    }
    text.Begin(Metric::OutletSince);
    for (OutletState const& outlet : outlets) {
        text.Add(MetricLabels({{"outlet", outlet.name}}), UnixSeconds(outlet.since));
    }
    text.Begin(Metric::OutletFigures);
    for (OutletState const& outlet : outlets) {
        for (auto const& [figure, count] : outlet.counts) {
            text.Add(MetricLabels({{"outlet", outlet.name}, {"figure", figure}}), count);
        }
    }
}

}  // namespace

PlantMetrics::PlantMetrics(Run const& metricsRun) : run(metricsRun) {
    std::set<std::string> taken;
    for (TaskConfig const& task : run.tasks) {
        TaskLabels& made = tasks[&task];
        made.name = task.name;
        made.own = Untaken(made.name, taken, [](std::string const& name) {
            return MetricLabels({{"task", name}});
        });
    }
    for (BlockConfig const& block : run.blocks) {
        AddBlock(block, taken);
    }
}

void PlantMetrics::AddBlock(BlockConfig const& block, std::set<std::string>& taken) {
    BlockLabels& made = labels.emplace_back();
    made.name = block.name;
    made.own = Untaken(made.name, taken, [](std::string const& name) {
        return MetricLabels({{"block", name}});
    });
    TaskConfig const* const task = TaskOf(block, run.tasks);
    made.info = MetricLabels({{"block", made.name},
                              {"address", block.address},
                              {"task", task ? tasks.at(task).name : block.task}});
    std::set<std::string> takenHere;
    for (VariableConfig const& variable : block.variables) {
        made.hasWrites = made.hasWrites || variable.write;
        std::string name = variable.name;
        VariableLabels& own = made.variables.emplace_back();
        own.own = Untaken(name, takenHere, [&](std::string const& tried) {
            return MetricLabels({{"block", made.name}, {"variable", tried}});
        });
        if (IsMeasured(variable)) {
            own.value = MetricLabels({{"block", made.name},
                                      {"variable", name},
                                      {"object", ObjectText(variable)},
                                      {"property", variable.property->name},
                                      {"unit", HasUnit(variable) ? variable.unit : std::string()}});
        }
    }
}

std::string PlantMetrics::Text(RunState const& state) const {
    MetricsText text;
    text.Begin(Metric::BuildInfo);
    text.Add(MetricLabels({{"version", run.version}}), "1");
    text.Begin(Metric::RunInfo);
    text.Add(MetricLabels({{"project", run.project}}), "1");
    text.Begin(Metric::RunStart);
    text.Add("", UnixSeconds(run.started));
    WriteVariables(state, text);
    WriteBlocks(state, text);
    WriteCauses(state, text);
    WriteWrites(state, text);
    WriteTasks(state, text);
    WriteTraffic(state.traffic, text);
    WriteOutlets(state.outlets, text);
    return text.Take();
}

void PlantMetrics::WriteVariables(RunState const& state, MetricsText& text) const {
    auto const each = [&](Metric metric, auto write) {
        text.Begin(metric);
        for (std::size_t block = 0; block < labels.size(); ++block) {
            for (std::size_t i = 0; i < labels[block].variables.size(); ++i) {
                write(*state.blocks[block], state.blocks[block]->variables[i], labels[block].variables[i]);
            }
        }
    };
    each(Metric::VariableValue, [&](auto const& block, auto const& variable, auto const& own) {
        bool const isShown = !own.value.empty() && PublishedQuality(block, variable) != QualityKind::Bad;
        if (auto const number = isShown ? NumberOf(variable.state.Value) : std::nullopt) {
            text.Add(own.value, *number);
        }
    });
    each(Metric::VariableQuality, [&](auto const& block, auto const& variable, auto const& own) {
        QualityKind const quality = PublishedQuality(block, variable);
        text.Add(own.own, quality == QualityKind::Good ? "2" : quality == QualityKind::Uncertain ? "1" : "0");
    });
    each(Metric::VariableSuspect, [&](auto const&, auto const& variable, auto const& own) {
        text.Add(own.own, variable.suspect.empty() ? "0" : "1");
    });
}

void PlantMetrics::WriteBlocks(RunState const& state, MetricsText& text) const {
    text.Begin(Metric::BlockInfo);
    for (BlockLabels const& block : labels) {
        text.Add(block.info, "1");
    }
    for (BlockMetric const& metric : BlockMetrics) {
        text.Begin(metric.metric);
        for (std::size_t i = 0; i < labels.size(); ++i) {
            if (auto const number = metric.number(*state.blocks[i], state.counts[i])) {
                text.Add(labels[i].own, *number);
            }
        }
    }
}

// Causes of one kind are one series, whatever objects they have.
void PlantMetrics::WriteCauses(RunState const& state, MetricsText& text) const {
    text.Begin(Metric::BlockCauses);
    for (std::size_t i = 0; i < labels.size(); ++i) {
        std::map<std::string, unsigned long long> counts;
        for (Cause const& cause : state.blocks[i]->causes) {
            counts[CauseName(cause.kind)] += cause.count;
        }
        for (auto const& [name, count] : counts) {
            text.Add(MetricLabels({{"block", labels[i].name}, {"cause", name}}), count);
        }
    }
}

void PlantMetrics::WriteWrites(RunState const& state, MetricsText& text) const {
    auto const each = [&](Metric metric, bool hasPending, auto count) {
        text.Begin(metric);
        for (std::size_t i = 0; i < labels.size(); ++i) {
            for (WriteStage const stage : Stages) {
                if (labels[i].hasWrites && (hasPending || stage != WriteStage::Pending)) {
                    text.Add(MetricLabels({{"block", labels[i].name}, {"state", StageName(stage)}}),
                             static_cast<unsigned long long>(count(i, stage)));
                }
            }
        }
    };
    each(Metric::BlockWrites, true, [&](std::size_t i, WriteStage stage) {
        auto const& variables = state.blocks[i]->variables;
        return std::count_if(variables.begin(), variables.end(),
                             [&](auto const& variable) { return variable.write.stage == stage; });
    });
    each(Metric::BlockWriteResults, false, [&](std::size_t i, WriteStage stage) {
        return state.counts[i].writes[static_cast<std::size_t>(stage)];
    });
}

// The blocks of a task have the same number of overruns, the newest is the highest.
void PlantMetrics::WriteTasks(RunState const& state, MetricsText& text) const {
    std::map<TaskConfig const*, unsigned long long> overruns;
    for (SharedSnapshot const& block : state.blocks) {
        if (TaskConfig const* const task = TaskOf(*block->config, run.tasks)) {
            overruns[task] = std::max(overruns[task], block->times.overruns);
        }
    }
    text.Begin(Metric::TaskPeriod);
    for (auto const& [task, count] : overruns) {
        text.Add(tasks.at(task).own, task->period / 1000.0);
    }
    text.Begin(Metric::TaskOverruns);
    for (auto const& [task, count] : overruns) {
        text.Add(tasks.at(task).own, count);
    }
}

}  // namespace workbench
