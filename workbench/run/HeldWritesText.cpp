#include "HeldWritesText.h"

#include "Printable.h"

namespace workbench {

namespace {

constexpr char Heading[] = "written at a priority, and still in the devices after the end of this run:\n";
constexpr char Advice[] =
    "  The driver and this program never write Null, so they cannot release a priority. Use a tool that\n"
    "  can, such as a BACnet explorer, for the service after \"release:\".\n";

std::string Line(HeldWrite const& write) {
    std::string const priority = std::to_string(write.priority);
    return "  " + tools::Printable(write.variable) + ": " + write.reference + " = " +
           tools::Printable(write.value) + " at priority " + priority +
           (write.isDefaultPriority ? " (the default; if the object has a priority array)" : "") +
           "\n    release: WriteProperty " + write.reference + ", value Null, priority " + priority + "\n";
}

}  // namespace

std::string HeldWritesText(Observation const& observation, std::deque<BlockConfig> const& blocks) {
    std::string lines;
    for (BlockConfig const& block : blocks) {
        if (BlockObserver const* const observer = observation.Of(block)) {
            for (HeldWrite const& write : observer->HeldWrites()) {
                lines += Line(write);
            }
        }
    }
    return lines.empty() ? lines : Heading + lines + Advice;
}

}  // namespace workbench
