#include "EventList.h"

#include <algorithm>
#include <utility>

#include "Printable.h"
#include "ValuesForPeople.h"

namespace workbench {

namespace {

constexpr std::size_t LongestText = 512;

EventKind KindOf(WriteStage stage) {
    switch (stage) {
        case WriteStage::Written:
            return EventKind::Written;
        case WriteStage::Unconfirmed:
            return EventKind::Unconfirmed;
        case WriteStage::Differs:
            return EventKind::Differs;
        case WriteStage::Refused:
            return EventKind::Refused;
        default:
            return EventKind::Set;
    }
}

// The events between two cycles of a block, in order and bounded.
class Comparison {
public:
    Comparison(BlockSnapshot const* blockBefore, BlockSnapshot const& blockNow)
        : before(blockBefore), now(blockNow) {
        CompareStates();
        for (std::size_t i = 0; i < now.variables.size(); ++i) {
            CompareSuspects(SuspectBefore(i), now.variables[i]);
            CompareWrites(i);
        }
        for (auto const& [kind, count] : counts) {
            if (count > EventList::MostOfCycle) {
                std::string const rest = std::to_string(count - EventList::MostOfCycle);
                Append(kind, nullptr, "and " + rest + " more variables in this cycle");
            }
        }
    }

    std::vector<Event> Take() { return std::move(events); }

private:
    void CompareStates() {
        bool const wasStandby = before && before->isStandby;
        bool const wasFault = before && IsFault(*before);
        if (now.isStandby && !wasStandby) {
            Append(EventKind::Standby, nullptr, "the host is the standby and does not poll this block");
        } else if (!now.isStandby && wasStandby) {
            Append(EventKind::StandbyEnd, nullptr, "this block is polled again");
        }
        if (IsFault(now) && !wasFault) {
            std::string const why = WhyText(now.causes);
            Append(EventKind::Fault, nullptr, FaultText(now) + (why.empty() ? "" : ": " + why));
        } else if (!IsFault(now) && wasFault) {
            Append(EventKind::Recovery, nullptr, now.isStandby ? "not polled any more" : "OK");
        }
    }

    std::string const& SuspectBefore(std::size_t index) const {
        static std::string const none;
        return before && index < before->variables.size() ? before->variables[index].suspect : none;
    }

    void CompareSuspects(std::string const& suspectBefore, VariableSnapshot const& variable) {
        if (variable.suspect == suspectBefore) {
            return;
        }
        bool const isEnd = variable.suspect.empty();
        AddFor(isEnd ? EventKind::SuspectEnd : EventKind::Suspect, variable,
               isEnd ? "no longer " + suspectBefore : variable.suspect);
    }

    void CompareWrites(std::size_t index) {
        static WriteState const none;
        WriteState const& write = now.variables[index].write;
        WriteState const& past =
            before && index < before->variables.size() ? before->variables[index].write : none;
        bool const isSame = write.stage == past.stage && write.reason == past.reason &&
                            (write.stage == WriteStage::None || write.value == past.value);
        if (isSame || write.stage == WriteStage::None) {
            return;
        }
        VariableSnapshot const& variable = now.variables[index];
        AddFor(KindOf(write.stage), variable,
               WriteText(ValueForPeople(*now.config, *variable.config, write.value, now.localDiff), write,
                         true));
    }

    void AddFor(EventKind kind, VariableSnapshot const& variable, std::string const& text) {
        if (++counts[kind] <= EventList::MostOfCycle) {
            Append(kind, variable.config, text);
        }
    }

    void Append(EventKind kind, VariableConfig const* variable, std::string const& text) {
        events.push_back(
            {0, now.time, now.localDiff, kind, now.config, variable, tools::Printable(text, LongestText)});
    }

    BlockSnapshot const* before;
    BlockSnapshot const& now;
    std::map<EventKind, std::size_t> counts;
    std::vector<Event> events;
};

template <typename Condition>
std::vector<Event> NewestOf(std::deque<Event> const& events, std::size_t most, Condition const& isMeant) {
    std::vector<Event> found;
    for (auto event = events.rbegin(); event != events.rend() && found.size() < most; ++event) {
        if (isMeant(*event)) {
            found.push_back(*event);
        }
    }
    std::reverse(found.begin(), found.end());
    return found;
}

}  // namespace

void EventList::Follow(SharedSnapshot const& snapshot) {
    SharedSnapshot past = snapshot;
    {
        std::lock_guard<std::mutex> const lock(mutex);
        before[snapshot->config].swap(past);
    }
    std::vector<Event> found = Comparison(past.get(), *snapshot).Take();
    std::lock_guard<std::mutex> const lock(mutex);
    for (Event& event : found) {
        event.id = ++newest;
        events.push_back(std::move(event));
        if (events.size() > Most) {
            events.pop_front();
        }
    }
}

std::vector<Event> EventList::Since(unsigned long long id, std::size_t most) const {
    std::lock_guard<std::mutex> const lock(mutex);
    unsigned long long const after = newest > id ? newest - id : 0;
    auto const count = static_cast<std::size_t>(
        std::min<unsigned long long>({after, most, static_cast<unsigned long long>(events.size())}));
    return {events.end() - static_cast<std::ptrdiff_t>(count), events.end()};
}

std::vector<Event> EventList::Of(VariableConfig const& variable, std::size_t most) const {
    std::lock_guard<std::mutex> const lock(mutex);
    return NewestOf(events, most, [&](Event const& event) { return event.variable == &variable; });
}

std::vector<Event> EventList::Of(BlockConfig const& block, std::size_t most) const {
    std::lock_guard<std::mutex> const lock(mutex);
    return NewestOf(events, most, [&](Event const& event) { return event.block == &block; });
}

unsigned long long EventList::Newest() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return newest;
}

}  // namespace workbench
