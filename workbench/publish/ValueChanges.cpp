#include "ValueChanges.h"

#include <algorithm>

#include "Difference.h"

namespace workbench {

namespace {

bool IsOver(long long since, long long interval, long long now) {
    return now < since || now - since >= interval;
}

}  // namespace

void ValueChanges::Forget() {
    blocks.clear();
    states.clear();
    values.clear();
    resting.clear();
}

void ValueChanges::Forget(std::size_t block) {
    if (block >= blocks.size()) {
        return;
    }
    EndRestsOf(block);
    blocks[block].isKnown = false;
    for (Sent& sent : blocks[block].variables) {
        sent.isKnown = false;
    }
    Compare(block);
}

void ValueChanges::Take(std::vector<SharedSnapshot> const& newest) {
    blocks.resize(std::max(blocks.size(), newest.size()));
    for (std::size_t i = 0; i < newest.size(); ++i) {
        if (blocks[i].newest != newest[i]) {
            blocks[i].newest = newest[i];
            Compare(i);
        }
    }
}

void ValueChanges::Compare(std::size_t index) {
    BlockPart& part = blocks[index];
    CompareValues(index);
    if (HasOtherState(part) && !part.isQueued) {
        part.isQueued = true;
        states.push_back(index);
    }
}

void ValueChanges::CompareValues(std::size_t index) {
    BlockPart& part = blocks[index];
    std::vector<VariableSnapshot> const& now = part.newest->variables;
    part.variables.resize(now.size());
    part.suspects = 0;
    if (part.newest->cycle == 0) {
        return;
    }
    for (std::size_t i = 0; i < now.size(); ++i) {
        part.suspects += now[i].suspect.empty() ? 0 : 1;
        part.variables[i].hasChanged = HasChanged(part, i);
        if (part.variables[i].hasChanged) {
            Queue({index, i});
        }
    }
}

bool ValueChanges::HasChanged(BlockPart const& block, std::size_t variable) const {
    Sent const& sent = block.variables[variable];
    VariableSnapshot const& now = block.newest->variables[variable];
    return !sent.isKnown || sent.state.Status != now.state.Status ||
           sent.quality != PublishedQuality(*block.newest, now) || sent.suspect != now.suspect ||
           HasOtherValue(*now.config, sent.state.Value, now.state.Value, limits.deadBand);
}

void ValueChanges::Queue(VariablePlace place) {
    Sent& sent = At(place);
    if (!sent.isQueued && !sent.isResting) {
        sent.isQueued = true;
        values.push_back(place);
    }
}

std::optional<std::size_t> ValueChanges::NextState() {
    while (!states.empty()) {
        std::size_t const index = states.front();
        states.pop_front();
        BlockPart& part = blocks[index];
        part.isQueued = false;
        if (HasOtherState(part)) {
            MarkStateSent(part);
            return index;
        }
    }
    return {};
}

std::optional<VariablePlace> ValueChanges::NextValue(long long now) {
    EndRests(now);
    while (!values.empty()) {
        VariablePlace const place = values.front();
        values.pop_front();
        Sent& sent = At(place);
        sent.isQueued = false;
        if (sent.hasChanged && !sent.isResting) {
            MarkSent(place, now);
            return place;
        }
    }
    return {};
}

void ValueChanges::CountAsSent(std::size_t block, long long now) {
    MarkStateSent(blocks[block]);
    EndRestsOf(block);
    for (std::size_t i = 0; i < blocks[block].variables.size(); ++i) {
        MarkSent({block, i}, now);
    }
}

void ValueChanges::EndRests(long long now) {
    while (!resting.empty() && IsOver(resting.front().since, limits.interval, now)) {
        VariablePlace const place = resting.front().place;
        resting.pop_front();
        At(place).isResting = false;
        if (At(place).hasChanged) {
            Queue(place);
        }
    }
}

void ValueChanges::EndRestsOf(std::size_t block) {
    for (Sent& sent : blocks[block].variables) {
        sent.isResting = false;
    }
    resting.erase(std::remove_if(resting.begin(), resting.end(),
                                 [&](Rest const& rest) { return rest.place.block == block; }),
                  resting.end());
}

bool ValueChanges::HasOtherState(BlockPart const& block) {
    return !block.isKnown || block.suspects != block.sentSuspects || !HasSameState(block.sent, *block.newest);
}

void ValueChanges::MarkStateSent(BlockPart& block) {
    block.isKnown = true;
    block.sent = WithoutVariables(*block.newest);
    block.sentSuspects = block.suspects;
}

void ValueChanges::MarkSent(VariablePlace place, long long now) {
    Sent& sent = At(place);
    VariableSnapshot const& newest = Variable(place);
    sent.state = newest.state;
    sent.suspect = newest.suspect;
    sent.quality = PublishedQuality(Block(place.block), newest);
    sent.isKnown = true;
    sent.hasChanged = false;
    if (limits.interval > 0) {
        sent.isResting = true;
        resting.push_back({place, now});
    }
}

}  // namespace workbench
