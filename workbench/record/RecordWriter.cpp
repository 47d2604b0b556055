#include "RecordWriter.h"

#include <algorithm>

#include "JsonFields.h"
#include "RecordTime.h"
#include "RecordedValue.h"
#include "ShownValue.h"
#include "TypeName.h"

namespace workbench {

namespace {

constexpr long long Minute = 60000;

long long PeriodOf(BlockConfig const& block, std::vector<TaskConfig> const& tasks) {
    for (TaskConfig const& task : tasks) {
        if (block.task.empty() || task.name == block.task) {
            return task.period;
        }
    }
    return 0;
}

std::string StatesJson(std::vector<std::string> const& texts) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartArray();
    for (std::string const& text : texts) {
        WriteText(writer, text);
    }
    writer.EndArray();
    return buffer.GetString();
}

void BindOptional(Statement& statement, int parameter, std::string const& text) {
    if (text.empty()) {
        statement.BindNull(parameter);
    } else {
        statement.Bind(parameter, text);
    }
}

}  // namespace

RecordWriter::RecordWriter(Database& runDatabase, Run const& run, long long now)
    : database(runDatabase),
      addPolled(database, "INSERT INTO polled (block, since, until) VALUES (?, ?, ?)"),
      extendPolled(database, "UPDATE polled SET until = ?2 WHERE id = ?1"),
      addNumber(database, "INSERT INTO recent (variable, time, value, status) VALUES (?, ?, ?, ?)"),
      addText(database, "INSERT OR REPLACE INTO text (variable, time, value, status) VALUES (?, ?, ?, ?)"),
      addEvent(database, "INSERT INTO event (time, event, block, variable, text) VALUES (?, ?, ?, ?, ?)"),
      markSeen(database, "UPDATE run SET seen = max(seen, ?2), ended = ?3 WHERE id = ?1") {
    Statement(database, "INSERT INTO run (started, seen, version, project) VALUES (?, ?, ?, ?)")
        .Bind(1, now)
        .Bind(2, now)
        .Bind(3, run.version)
        .Bind(4, run.project)
        .Run();
    runId = database.LastId();
    for (BlockConfig const& block : run.blocks) {
        Declare(block, run.tasks, now);
    }
}

void RecordWriter::Declare(BlockConfig const& config, std::vector<TaskConfig> const& tasks, long long now) {
    Block& block = blocks[&config];
    Statement addBlock(database, "INSERT OR IGNORE INTO block (name) VALUES (?)");
    addBlock.Bind(1, config.name).Run();
    Statement findBlock(database, "SELECT id FROM block WHERE name = ?");
    findBlock.Bind(1, config.name).Next();
    block.id = findBlock.Number(0);
    block.longestPause = Minute + 3 * PeriodOf(config, tasks);
    Statement addVariable(database, "INSERT OR IGNORE INTO variable (block, name) VALUES (?, ?)");
    Statement findVariable(database, "SELECT id FROM variable WHERE block = ? AND name = ?");
    for (VariableConfig const& variable : config.variables) {
        addVariable.Bind(1, block.id).Bind(2, variable.name).Run();
        findVariable.Bind(1, block.id).Bind(2, variable.name).Next();
        block.variables.emplace_back();
        block.variables.back().id = findVariable.Number(0);
        findVariable.Reset();
        DeclarePeriod(block.variables.back().id, variable, now);
    }
}

// A variable that is described as before goes on; a change of its description begins a new period.
void RecordWriter::DeclarePeriod(long long variable, VariableConfig const& config, long long now) {
    Statement add(database,
                  "INSERT OR REPLACE INTO period (variable, since, object, property, type, unit, states, "
                  "description) SELECT ?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8 WHERE NOT EXISTS (SELECT 1 FROM "
                  "(SELECT * FROM period WHERE variable = ?1 ORDER BY since DESC LIMIT 1) WHERE object = ?3 "
                  "AND property = ?4 AND type = ?5 AND unit IS ?6 AND states IS ?7 AND description IS ?8)");
    add.Bind(1, variable).Bind(2, now).Bind(3, ObjectText(config)).Bind(4, config.property->name);
    add.Bind(5, TypeName(config.type));
    BindOptional(add, 6, HasUnit(config) ? config.unit : std::string());
    BindOptional(add, 7, config.stateTexts.empty() ? std::string() : StatesJson(config.stateTexts));
    BindOptional(add, 8, config.description);
    add.Run();
}

void RecordWriter::Follow(Block& block, long long time) {
    bool const isSetBack = block.polled.id != 0 && time < block.polled.until;
    bool const isGap = block.polled.id != 0 && time - block.polled.until > block.longestPause;
    if (isSetBack && newest - time > 1000) {
        std::string const seconds = std::to_string((newest - time) / 1000);
        addEvent.Bind(1, time).Bind(2, "clock").BindNull(3).BindNull(4);
        addEvent.Bind(5, "the clock of this machine was set back by " + seconds + " s").Run();
        newest = time;
    }
    newest = std::max(newest, time);
    if (block.polled.id == 0 || isSetBack || isGap) {
        for (Variable& variable : block.variables) {
            variable.isKnown = false;
        }
        addPolled.Bind(1, block.id).Bind(2, time).Bind(3, time).Run();
        block.polled.id = database.LastId();
    } else {
        extendPolled.Bind(1, block.polled.id).Bind(2, time).Run();
    }
    block.polled.until = time;
}

void RecordWriter::Write(BlockSnapshot const& snapshot) {
    auto const found = blocks.find(snapshot.config);
    if (found == blocks.end()) {
        return;
    }
    Block& block = found->second;
    long long const time = RecordTime(snapshot.time);
    Follow(block, time);
    for (std::size_t i = 0; i < snapshot.variables.size() && i < block.variables.size(); ++i) {
        Write(block.variables[i], snapshot, snapshot.variables[i], time);
    }
}

void RecordWriter::Write(Variable& variable, BlockSnapshot const& block, VariableSnapshot const& now,
                         long long time) {
    OpcUa_StatusCode const status = StatusToRecord(block, now);
    OpcUa_Variant const& shown = variable.value;
    if (variable.isKnown && variable.status == status && shown == now.state.Value) {
        return;
    }
    variable.isKnown = true;
    variable.status = status;
    variable.value = now.state.Value;
    RecordedValue const value = ValueToRecord(block, now);
    Statement& add = value.isText ? addText : addNumber;
    add.Bind(1, variable.id).Bind(2, time).Bind(4, static_cast<long long>(value.status));
    if (value.isText) {
        add.Bind(3, value.text);
    } else {
        add.Bind(3, value.number);
    }
    add.Run();
    ++values;
}

void RecordWriter::Write(Event const& event) {
    addEvent.Bind(1, RecordTime(event.time)).Bind(2, EventName(event.kind));
    BindOptional(addEvent, 3, event.block ? event.block->name : "");
    BindOptional(addEvent, 4, event.variable ? event.variable->name : "");
    addEvent.Bind(5, event.text).Run();
}

void RecordWriter::WriteSeen(long long now) {
    markSeen.Bind(1, runId).Bind(2, now).BindNull(3).Run();
}

void RecordWriter::WriteEnd(long long now) {
    markSeen.Bind(1, runId).Bind(2, now).Bind(3, now).Run();
}

void RecordWriter::Commit() {
    committedNewest = newest;
    committedValues = values;
    for (auto& [config, block] : blocks) {
        block.committed = block.polled;
    }
}

void RecordWriter::Undo() {
    newest = committedNewest;
    values = committedValues;
    for (auto& [config, block] : blocks) {
        block.polled = block.committed;
        for (Variable& variable : block.variables) {
            variable.isKnown = false;
        }
    }
}

}  // namespace workbench
