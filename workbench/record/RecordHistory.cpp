#include "RecordHistory.h"

#include <algorithm>
#include <exception>
#include <limits>

#include "RecordReader.h"
#include "RecordTime.h"
#include "ShownValue.h"

namespace workbench {

namespace {

constexpr std::size_t MostIdle = 4;
constexpr std::size_t LeastHeld = 20000;
constexpr long long Millisecond = 10000;  // of file times

bool IsPlotted(VariableConfig const& variable) {
    return IsNumeric(ValueType(variable)) || ValueType(variable) == OpcUaType_Boolean;
}

}  // namespace

struct RecordHistory::Connection {
    explicit Connection(std::string const& path) : identity(path), reader(path) {}

    FileIdentity identity;
    RecordReader reader;
};

RecordHistory::RecordHistory(std::string recordPath, std::deque<BlockConfig> const& runBlocks,
                             History const& newestTrends)
    : path(std::move(recordPath)), memory(newestTrends) {
    for (BlockConfig const& block : runBlocks) {
        for (VariableConfig const& variable : block.variables) {
            blocks[&variable] = &block.name;
        }
    }
}

RecordHistory::~RecordHistory() = default;

// A recording that was replaced by another file is left.
std::unique_ptr<RecordHistory::Connection> RecordHistory::Take() const {
    {
        std::lock_guard<std::mutex> const lock(mutex);
        if (isClosed) {
            return nullptr;
        }
        while (!idle.empty()) {
            std::unique_ptr<Connection> connection = std::move(idle.back());
            idle.pop_back();
            if (connection->identity == FileIdentity(path)) {
                return connection;
            }
        }
    }
    return std::make_unique<Connection>(path);
}

void RecordHistory::GiveBack(std::unique_ptr<Connection> connection) const {
    std::lock_guard<std::mutex> const lock(mutex);
    if (!isClosed && idle.size() < MostIdle) {
        idle.push_back(std::move(connection));
    }
}

// What the status of the recording reports too is not an error here: there is only less to show.
template <typename Result, typename Work>
Result RecordHistory::WithReader(VariableConfig const& variable, Work const& work) const {
    auto const block = blocks.find(&variable);
    Result result{};
    if (block == blocks.end() || !IsPlotted(variable)) {
        return result;
    }
    try {
        if (std::unique_ptr<Connection> connection = Take()) {
            RecordedVariable const found = connection->reader.Find(*block->second, variable.name);
            if (found.id != 0) {
                result = work(connection->reader, found);
            }
            GiveBack(std::move(connection));
        }
    } catch (std::exception const&) {
        return Result{};
    }
    return result;
}

// All that is held is thinned out whenever it becomes too much: extremes stay, as Thinned keeps them.
std::vector<Sample> RecordHistory::Recorded(VariableConfig const& variable, long long from, long long to,
                                            std::size_t most) const {
    std::size_t const held = std::max(LeastHeld, 4 * most);
    auto const read = [&](RecordReader& reader, RecordedVariable const& found) {
        std::vector<Sample> samples;
        reader.Read(found, RecordTime(from), RecordTime(to), [&](RecordRow const& row) {
            samples.push_back({std::clamp(FileTimeOf(row.time), from, to), row.number, row.quality});
            if (samples.size() >= held) {
                samples = Thinned(samples, held / 2);
            }
            return !isEnding;
        });
        return samples;
    };
    return WithReader<std::vector<Sample>>(variable, read);
}

std::vector<Sample> RecordHistory::Samples(VariableConfig const& variable, long long from, long long to,
                                           std::size_t most) const {
    std::vector<Sample> newest = memory.Samples(variable, from, to, most);
    long long const inMemory = memory.Oldest(variable);
    if (inMemory != 0 && inMemory <= from) {
        return newest;
    }
    long long const end = inMemory != 0 ? std::min(inMemory, to) : to;
    std::vector<Sample> samples = Recorded(variable, from, end, most);
    if (!samples.empty() && !newest.empty()) {
        if (samples.back().time >= newest.front().time) {
            samples.pop_back();
        } else if (newest.front().time - samples.back().time > Millisecond) {
            double const none = std::numeric_limits<double>::quiet_NaN();
            samples.push_back({samples.back().time + 1, none, QualityKind::Bad});
        }
    }
    samples.insert(samples.end(), newest.begin(), newest.end());
    return Thinned(samples, most);
}

long long RecordHistory::Oldest(VariableConfig const& variable) const {
    auto const read = [](RecordReader& reader, RecordedVariable const& found) {
        return reader.Oldest(found);
    };
    long long const recorded = WithReader<long long>(variable, read);
    long long const inMemory = memory.Oldest(variable);
    return recorded == 0   ? inMemory
           : inMemory == 0 ? FileTimeOf(recorded)
                           : std::min(FileTimeOf(recorded), inMemory);
}

void RecordHistory::Close() {
    std::vector<std::unique_ptr<Connection>> closed;
    std::lock_guard<std::mutex> const lock(mutex);
    isClosed = true;
    idle.swap(closed);
}

}  // namespace workbench
