#pragma once

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "Database.h"
#include "Event.h"
#include "Project.h"
#include "Snapshot.h"

namespace workbench {

// Writes a run into a recording: its blocks and variables at the beginning, then what has changed. For one
// thread at a time. Throws DatabaseError. Call it within a transaction; when that is undone, call Undo.
class RecordWriter {
public:
    struct Run {
        std::string version;
        std::string project;
        std::deque<BlockConfig> const& blocks;
        std::vector<TaskConfig> const& tasks;
    };

    // Times are those of recordings (RecordTime.h). The database and the blocks must outlive the writer.
    RecordWriter(Database& runDatabase, Run const& run, long long now);

    // What of a cycle has changed. The first cycle of a block is whole, and one after a time in which nobody
    // knows its values: a minute and three periods without a cycle, or a clock that was set back.
    void Write(BlockSnapshot const& block);
    void Write(Event const& event);
    // Once in each transaction: the run goes on, or has ended.
    void WriteSeen(long long now);
    void WriteEnd(long long now);

    // The changes since the last Commit are in the file, or are not.
    void Commit();
    void Undo();
    // The values that Write has added since the writer was made.
    unsigned long long Values() const { return values; }

private:
    // A time in which a block was polled.
    struct Polled {
        long long id = 0;  // 0: none yet
        long long until = 0;
    };
    struct Variable {
        long long id = 0;
        bool isKnown = false;  // what was recorded last
        OpcUa_VariantHlp value{};
        OpcUa_StatusCode status = 0;
    };
    struct Block {
        long long id = 0;
        long long longestPause = 0;  // milliseconds between cycles
        Polled polled;
        Polled committed;
        std::vector<Variable> variables;
    };

    void Declare(BlockConfig const& config, std::vector<TaskConfig> const& tasks, long long now);
    void DeclarePeriod(long long variable, VariableConfig const& config, long long now);
    void Follow(Block& block, long long time);
    void Write(Variable& variable, BlockSnapshot const& block, VariableSnapshot const& now, long long time);

    Database& database;
    Statement addPolled;
    Statement extendPolled;
    Statement addNumber;
    Statement addText;
    Statement addEvent;
    Statement markSeen;
    long long runId = 0;
    long long newest = 0;  // of the times of cycles
    long long committedNewest = 0;
    unsigned long long values = 0;
    unsigned long long committedValues = 0;
    std::map<BlockConfig const*, Block> blocks;
};

}  // namespace workbench
