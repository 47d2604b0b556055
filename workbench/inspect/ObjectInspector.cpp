#include "ObjectInspector.h"

#include <algorithm>
#include <exception>

#include "BlockAddress.h"
#include "DeviceBrowser.h"
#include "Printable.h"
#include "PropertyLines.h"
#include "StoppableLink.h"
#include "UdpLink.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

constexpr long long UnitsOfSecond = 10'000'000;

std::unique_ptr<standard::Link> UdpOnAnyPort() {
    return std::make_unique<standard::UdpLink>(standard::Endpoint{});
}

std::shared_ptr<Inspection const> Failed(std::string reason) {
    return std::make_shared<Inspection const>(Inspection{InspectionState::Failed, std::move(reason), 0, {}});
}

// A property whose value has several lines is one of them here.
std::vector<Inspection::Property> PropertiesOf(ObjectRecord const& object) {
    std::vector<Inspection::Property> properties;
    for (PropertyLine& line : PropertyLinesOf(object)) {
        if (!line.name.empty() || properties.empty()) {
            if (properties.size() == ObjectInspector::MostProperties) {
                break;
            }
            properties.push_back({std::move(line.name), std::move(line.text)});
        } else {
            properties.back().value += "\n" + line.text;
        }
    }
    for (Inspection::Property& property : properties) {
        if (property.value.size() > ObjectInspector::LongestValue) {
            property.value.resize(ObjectInspector::LongestValue);
            property.value = tools::ValidUtf8(property.value) + "...";
        }
    }
    return properties;
}

std::string Joined(std::vector<std::string> const& notes) {
    std::string text;
    for (std::string const& note : notes) {
        text += (text.empty() ? "" : "; ") + tools::Printable(note);
    }
    return text;
}

}  // namespace

char const* InspectionName(InspectionState state) {
    return state == InspectionState::Reading ? "reading" : state == InspectionState::Done ? "done" : "failed";
}

ObjectInspector::ObjectInspector() : ObjectInspector(UdpOnAnyPort) {}

ObjectInspector::ObjectInspector(LinkMaker linkMaker)
    : makeLink(std::move(linkMaker)), reader([this] { Work(); }) {}

ObjectInspector::~ObjectInspector() {
    {
        std::lock_guard<std::mutex> const lock(mutex);
        isStopped = true;
    }
    changed.notify_all();
    reader.join();
}

std::shared_ptr<Inspection const> ObjectInspector::Inspect(BlockConfig const& block,
                                                           VariableConfig const& variable) {
    standard::ObjectId const object{static_cast<std::uint16_t>(variable.objectType->bacnetNumber),
                                    static_cast<std::uint32_t>(variable.objectNumber)};
    Key const key{&block, object};
    std::lock_guard<std::mutex> const lock(mutex);
    auto const found = entries.find(key);
    if (found != entries.end()) {
        Entry const& entry = found->second;
        long long const age = dorvel::Environment().SteadyNow() - entry.end;
        if (entry.isWaiting || age < FreshFor.count() * UnitsOfSecond) {
            return entry.latest;
        }
    }
    if (waiting.size() >= MostWaiting) {
        return Failed("other objects are being read; look at it again in some seconds");
    }
    Inspection reading = found == entries.end() ? Inspection{} : *found->second.latest;
    reading.state = InspectionState::Reading;
    Entry& entry = entries[key];
    entry.latest = std::make_shared<Inspection const>(std::move(reading));
    entry.isWaiting = true;
    waiting.push_back(key);
    DropOldest();
    changed.notify_all();
    return entry.latest;
}

// Called with the lock.
void ObjectInspector::DropOldest() {
    auto const isOlder = [](auto const& left, auto const& right) {
        return std::make_pair(left.second.isWaiting, left.second.end) <
               std::make_pair(right.second.isWaiting, right.second.end);
    };
    if (entries.size() > MostKept) {
        entries.erase(std::min_element(entries.begin(), entries.end(), isOlder));
    }
}

void ObjectInspector::Work() {
    std::unique_lock<std::mutex> lock(mutex);
    while (!isStopped) {
        if (waiting.empty()) {
            changed.wait(lock);
            continue;
        }
        Key const key = waiting.front();
        waiting.pop_front();
        lock.unlock();
        Inspection result = Read(key);
        lock.lock();
        entries[key] = {std::make_shared<Inspection const>(std::move(result)), false,
                        dorvel::Environment().SteadyNow()};
    }
}

Inspection ObjectInspector::Read(Key const& key) {
    Inspection result;
    try {
        std::unique_ptr<standard::Link> const socket = makeLink();
        StoppableLink link(*socket, [this] { return isStopped.load(); });
        DeviceBrowser::OneObject const object =
            DeviceBrowser(link, BrowseSettings()).BrowseObject(PeerOf(*key.first), key.second);
        result.properties = PropertiesOf(object.object);
        result.reason = Joined(object.notes);
    } catch (std::exception const& error) {
        result.reason = std::string("the device cannot be asked: ") + error.what();
    }
    result.state = result.properties.empty() ? InspectionState::Failed : InspectionState::Done;
    result.time = result.properties.empty() ? 0 : dorvel::Environment().Now();
    return result;
}

}  // namespace workbench
