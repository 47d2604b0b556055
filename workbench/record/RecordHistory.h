#pragma once

#include <atomic>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "History.h"
#include "Project.h"
#include "RecordLock.h"

namespace workbench {

class RecordReader;

// The trends of a run from its recording, and of the newest time from memory, which also serves alone while
// the recording cannot be read. Each thread that asks reads over a connection of its own. Of a long time all
// changes are read, but only so many are held as a few times `most`. Thread-safe.
class RecordHistory : public History {
public:
    // All references must outlive the history.
    RecordHistory(std::string recordPath, std::deque<BlockConfig> const& blocks, History const& newestTrends);
    ~RecordHistory() override;

    std::vector<Sample> Samples(VariableConfig const& variable, long long from, long long to,
                                std::size_t most) const override;
    long long Oldest(VariableConfig const& variable) const override;
    void EndReads() const override { isEnding = true; }

    // Closes its connections; from then on only memory is left.
    void Close();

private:
    struct Connection;

    std::unique_ptr<Connection> Take() const;
    void GiveBack(std::unique_ptr<Connection> connection) const;
    template <typename Result, typename Work>
    Result WithReader(VariableConfig const& variable, Work const& work) const;
    std::vector<Sample> Recorded(VariableConfig const& variable, long long from, long long to,
                                 std::size_t most) const;

    std::string const path;
    History const& memory;
    std::map<VariableConfig const*, std::string const*> blocks;  // the name of the block of each variable
    mutable std::mutex mutex;
    mutable std::vector<std::unique_ptr<Connection>> idle;
    bool isClosed = false;
    mutable std::atomic<bool> isEnding{false};
};

}  // namespace workbench
