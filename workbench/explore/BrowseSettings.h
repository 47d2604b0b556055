#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "ClientSettings.h"

namespace workbench {

// Which properties of an object are read.
enum class Detail {
    Shown,  // those of the table of browse: name, description, present value, units, states, flags
    Every   // every property: those of its Property_List, otherwise the known ones of its type
};

// How far the reading of a device is.
struct BrowseProgress {
    std::size_t objectsRead = 0;
    std::size_t objectCount = 0;
    bool isObjectList = false;  // the list of the objects is read, element by element
};

// "120 of 500 objects", "object list, 120 of 500"
std::string ProgressText(BrowseProgress const& progress);

// How a device is asked: one request at a time.
struct BrowseSettings {
    // 2000 ms, one repetition, and at most 20 s for a request and its answer.
    static standard::ClientSettings GentleClient();

    standard::ClientSettings client = GentleClient();
    // The most requests a second, repetitions counted; 100 by default, and 10 for a device behind a router.
    std::optional<unsigned> rate;
    Detail detail = Detail::Every;
    // Without them, the Device object is read alone.
    bool hasObjects = true;
    // Waiting for answers that do not come ends after this time, if it is more than half of all the time.
    std::chrono::milliseconds patience{10000};
    // Is called after each request.
    std::function<void(BrowseProgress const&)> progress;
};

constexpr unsigned LocalRate = 100;
constexpr unsigned RemoteRate = 10;

// The settings of the client, with the pace of the rate.
standard::ClientSettings PacedClient(BrowseSettings const& settings);

}  // namespace workbench
