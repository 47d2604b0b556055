#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Link.h"
#include "ObjectId.h"
#include "Project.h"

namespace workbench {

enum class InspectionState { Reading, Done, Failed };

// "reading", "done", "failed".
char const* InspectionName(InspectionState state);

// What a device says of one of its objects.
struct Inspection {
    struct Property {
        std::string name;   // "present-value", "property 512"
        std::string value;  // in words; a list, such as a priority array, has a line for each element
    };

    // Reading: the properties are those of the reading before, if there are any.
    InspectionState state = InspectionState::Reading;
    std::string reason;  // why the reading has failed, or is not whole; otherwise empty
    long long time = 0;  // when the properties were read, a file time; 0 without any
    std::vector<Property> properties;
};

// Reads all properties of a variable's object from its device, by the standard and not through the driver,
// for people who look at the variable. One thread of its own reads one object after another, one request at a
// time, so that no cycle waits for it. Memory is bounded, whatever the devices send. Thread-safe.
class ObjectInspector {
public:
    // What was read is returned again for so long, and objects may wait to be read or are remembered.
    static constexpr std::chrono::seconds FreshFor{5};
    static constexpr std::size_t MostWaiting = 8;
    static constexpr std::size_t MostKept = 64;
    // Of one object. A longer value is cut, further properties are left out.
    static constexpr std::size_t MostProperties = 500;
    static constexpr std::size_t LongestValue = 8192;

    // Makes the link for one reading; called on the thread of the inspector. May throw std::system_error.
    using LinkMaker = std::function<std::unique_ptr<standard::Link>()>;

    // With a UDP socket on any free port.
    ObjectInspector();
    explicit ObjectInspector(LinkMaker linkMaker);
    ObjectInspector(ObjectInspector const&) = delete;
    ObjectInspector& operator=(ObjectInspector const&) = delete;
    // Ends a reading within 100 ms.
    ~ObjectInspector();

    // Returns at once: with what is known, and Reading if it is not fresh, which starts a reading. Call it
    // again until the state is another one. The configuration must outlive the inspector. Variables of one
    // object share its reading.
    std::shared_ptr<Inspection const> Inspect(BlockConfig const& block, VariableConfig const& variable);

private:
    using Key = std::pair<BlockConfig const*, standard::ObjectId>;

    struct Entry {
        std::shared_ptr<Inspection const> latest;
        bool isWaiting = false;
        long long end = 0;  // of the latest reading, by the monotonic clock
    };

    void Work();
    Inspection Read(Key const& key);
    void DropOldest();

    LinkMaker makeLink;
    std::atomic<bool> isStopped{false};
    std::mutex mutex;
    std::condition_variable changed;
    std::map<Key, Entry> entries;
    std::deque<Key> waiting;
    std::thread reader;
};

}  // namespace workbench
