#include "HeldWritesText.h"

#include <algorithm>

#include "Printable.h"

namespace workbench {

namespace {

constexpr char Heading[] = "written at a priority, and still in the devices after the end of this run:\n";
constexpr char Advice[] =
    "  The driver and this program never write Null, so they cannot release a priority. Use a tool that\n"
    "  can, such as a BACnet explorer, for the service after \"release:\".\n";

WriteLedger::Writes AllWrites(Observation const& observation, std::deque<BlockConfig> const& blocks) {
    WriteLedger all;
    for (BlockConfig const& block : blocks) {
        if (BlockObserver const* const observer = observation.Of(block)) {
            all.Add(observer->Held());
        }
    }
    return all.All();
}

std::string Doubt(std::vector<SentWrite> const& writes) {
    SentWrite const& first = writes.front();
    bool const isSame = std::all_of(writes.begin(), writes.end(),
                                    [&](SentWrite const& write) { return write.value == first.value; });
    if (first.isAcknowledged && isSame) {
        return {};
    }
    return ", possibly: the device has not answered the write" +
           (first.isAcknowledged ? "; before it " + tools::Printable(first.value) : std::string());
}

std::string What(WriteTarget const& target, std::vector<SentWrite> const& writes) {
    SentWrite const& write = writes.back();
    return tools::Printable(write.variable) + ": " + write.reference + " = " + tools::Printable(write.value) +
           " at priority " + std::to_string(target.priority) +
           (write.isDefaultPriority ? " (the default; if the object has a priority array)" : "") +
           Doubt(writes);
}

std::string Release(WriteTarget const& target, SentWrite const& write) {
    return "release: WriteProperty " + write.reference + ", value Null, priority " +
           std::to_string(target.priority);
}

}  // namespace

std::string HeldWritesText(Observation const& observation, std::deque<BlockConfig> const& blocks) {
    std::string lines;
    for (auto const& [target, writes] : AllWrites(observation, blocks)) {
        if (!writes.empty()) {
            lines += "  " + What(target, writes) + "\n    " + Release(target, writes.back()) + "\n";
        }
    }
    return lines.empty() ? lines : Heading + lines + Advice;
}

std::vector<std::string> HeldWriteLines(Observation const& observation,
                                        std::deque<BlockConfig> const& blocks) {
    std::vector<std::string> lines;
    for (auto const& [target, writes] : AllWrites(observation, blocks)) {
        if (!writes.empty()) {
            lines.push_back("still in the device: " + What(target, writes) + "; " +
                            Release(target, writes.back()));
        }
    }
    return lines;
}

}  // namespace workbench
