#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Client.h"

namespace standard {

struct ObjectListSettings {
    std::size_t mostObjects = 100000;
    // Elements of one request at first; fewer as soon as an answer does not fit.
    std::size_t chunk = 32;
    // How often a list that changes is read.
    unsigned attempts = 3;
};

struct ObjectListResult {
    std::vector<ObjectId> objects;  // each once, in the order of the list
    std::size_t length = 0;         // as the device states it
    bool isComplete = false;
    // Why it is not complete, in words; empty if it is.
    std::string reason;
    // The failure that ended the reading.
    std::optional<Failure> failure;
    bool isWhole = false;           // in one answer; otherwise element by element
    std::size_t repeated = 0;       // elements that name an object a further time
    std::size_t withoutObject = 0;  // elements that are not object identifiers
    unsigned changes = 0;           // readings in which the list changed
};

// Reads the Object_List of a device: whole, in segments where the device sends them, and element by element
// where that has no answer. The length and the Database_Revision, where there is one, are compared before and
// after the elements, and a list that changed is read again. What was read is kept, whatever fails.
class ObjectListReader {
public:
    // The client must outlive the reader.
    ObjectListReader(Client& deviceClient, Peer const& devicePeer, ObjectId const& deviceObject,
                     ObjectListSettings const& listSettings = {});

    // Is called with the number of elements that are read and the length of the list, when they are read one
    // by one.
    using Progress = std::function<void(std::size_t done, std::size_t length)>;
    void OnProgress(Progress progressObserver) { progress = std::move(progressObserver); }

    ObjectListResult Read();

private:
    struct Stamp {
        std::size_t length;
        std::vector<Datum> revision;  // empty if the device has none
    };

    bool TakeWhole(std::vector<Datum> const& values);
    bool ReadElements();
    bool ReadChunks();
    bool TakeElement(ReadResult const& element);
    void TakeValues(std::vector<Datum> const& values);
    std::optional<Stamp> ReadStamp();
    bool HasChanged(Stamp const& before);
    void End(Failure const& failure, std::string const& what);
    void Incomplete(std::string const& reason);
    PropertyReference Reference(std::optional<std::uint32_t> index) const;

    Client& client;
    Peer const peer;
    ObjectId const device;
    ObjectListSettings const settings;
    Progress progress;
    ObjectListResult result;
    std::set<ObjectId> seen;
    std::size_t chunk = 1;
    std::size_t unreadable = 0;
    bool endsEarly = false;
};

}  // namespace standard
