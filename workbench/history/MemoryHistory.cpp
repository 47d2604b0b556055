#include "MemoryHistory.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "NumberText.h"
#include "ShownValue.h"

namespace workbench {

namespace {

// Octets of a file time are enough for the quality too: 62 bits last until the year 16,000.
class PackedSample {
public:
    PackedSample() = default;
    explicit PackedSample(Sample const& sample)
        : timeAndQuality(sample.time * 4 + static_cast<int>(sample.quality)), value(sample.value) {}

    long long Time() const { return timeAndQuality >> 2; }
    Sample Unpacked() const { return {Time(), value, static_cast<QualityKind>(timeAndQuality & 3)}; }

private:
    // Without initial values, so that memory is taken up as it is used.
    long long timeAndQuality;
    double value;
};

double NumberOf(OpcUa_VariantHlp const& value) {
    double number = std::numeric_limits<double>::quiet_NaN();
    bool const isPlotted = IsNumeric(value.GetType()) || value.GetType() == OpcUaType_Boolean;
    if (isPlotted) {
        value.GetDouble(number);
    }
    return number;
}

bool IsPlotted(VariableConfig const& variable) {
    return IsNumeric(ValueType(variable)) || ValueType(variable) == OpcUaType_Boolean;
}

std::size_t CountOfPlotted(std::deque<BlockConfig> const& blocks) {
    std::size_t count = 0;
    for (BlockConfig const& block : blocks) {
        count += static_cast<std::size_t>(
            std::count_if(block.variables.begin(), block.variables.end(), IsPlotted));
    }
    return count;
}

}  // namespace

// The newest changes of a variable.
struct MemoryHistory::Ring {
    std::unique_ptr<PackedSample[]> samples;
    std::size_t begin = 0;
    std::size_t count = 0;
    long long seen = 0;  // until when the newest value is known to hold

    PackedSample const& At(std::size_t index, std::size_t ringSize) const {
        return samples[(begin + index) % ringSize];
    }

    void Add(Sample const& sample, std::size_t ringSize) {
        if (!samples) {
            samples.reset(new PackedSample[ringSize]);
        }
        while (count > 0 && At(count - 1, ringSize).Time() > sample.time) {
            --count;
        }
        seen = sample.time;
        if (count > 0) {
            Sample newest = At(count - 1, ringSize).Unpacked();
            newest.time = sample.time;
            if (newest == sample) {
                return;
            }
        }
        samples[(begin + count) % ringSize] = PackedSample(sample);
        begin = count == ringSize ? (begin + 1) % ringSize : begin;
        count = std::min(count + 1, ringSize);
    }
};

struct MemoryHistory::Block {
    mutable std::mutex mutex;
    std::vector<Ring> rings;  // by the variable's index
};

MemoryHistory::MemoryHistory(std::deque<BlockConfig> const& blocks, std::size_t memoryLimit)
    : capacity(std::min(MostSamples,
                        memoryLimit / OctetsOfSample() / std::max<std::size_t>(CountOfPlotted(blocks), 1))) {
    for (BlockConfig const& config : blocks) {
        auto& block = histories[&config] = std::make_unique<Block>();
        block->rings.resize(config.variables.size());
        for (std::size_t i = 0; i < config.variables.size(); ++i) {
            indices[&config.variables[i]] = {block.get(), i};
        }
    }
}

MemoryHistory::~MemoryHistory() = default;

std::size_t MemoryHistory::OctetsOfSample() {
    return sizeof(PackedSample);
}

void MemoryHistory::Add(BlockSnapshot const& block) {
    auto const found = histories.find(block.config);
    if (found == histories.end() || capacity == 0) {
        return;
    }
    Block& history = *found->second;
    std::lock_guard<std::mutex> const lock(history.mutex);
    for (std::size_t i = 0; i < block.variables.size() && i < history.rings.size(); ++i) {
        VariableSnapshot const& variable = block.variables[i];
        bool const isKept = history.rings[i].samples || !std::isnan(NumberOf(variable.state.Value));
        if (IsPlotted(*variable.config) && isKept) {
            // A standby keeps the values that it had.
            QualityKind const quality = block.isStandby ? QualityKind::Bad : KindOf(variable.state.Status);
            history.rings[i].Add({block.time, NumberOf(variable.state.Value), quality}, capacity);
        }
    }
}

std::pair<MemoryHistory::Block const*, MemoryHistory::Ring const*> MemoryHistory::Find(
    VariableConfig const& variable) const {
    auto const found = indices.find(&variable);
    if (found == indices.end()) {
        return {nullptr, nullptr};
    }
    return {found->second.first, &found->second.first->rings[found->second.second]};
}

std::vector<Sample> MemoryHistory::Samples(VariableConfig const& variable, long long from, long long to,
                                           std::size_t most) const {
    auto const [block, ring] = Find(variable);
    std::vector<Sample> samples;
    if (!block) {
        return samples;
    }
    std::optional<Sample> inForce;
    long long seen = 0;
    {
        std::lock_guard<std::mutex> const lock(block->mutex);
        seen = ring->seen;
        for (std::size_t i = 0; i < ring->count; ++i) {
            Sample const sample = ring->At(i, capacity).Unpacked();
            if (sample.time <= from) {
                inForce = sample;
            } else if (sample.time <= to) {
                samples.push_back(sample);
            }
        }
    }
    if (inForce && seen >= from && to >= from) {
        samples.insert(samples.begin(), {from, inForce->value, inForce->quality});
    }
    long long const end = std::min(seen, to);
    if (!samples.empty() && end > samples.back().time) {
        samples.push_back({end, samples.back().value, samples.back().quality});
    }
    samples = Thinned(samples, most);
    if (ValueType(variable) == OpcUaType_Float) {
        for (Sample& sample : samples) {
            sample.value = tools::Widened(static_cast<float>(sample.value));
        }
    }
    return samples;
}

long long MemoryHistory::Oldest(VariableConfig const& variable) const {
    auto const [block, ring] = Find(variable);
    if (!block) {
        return 0;
    }
    std::lock_guard<std::mutex> const lock(block->mutex);
    return ring->count > 0 ? ring->At(0, capacity).Time() : 0;
}

}  // namespace workbench
