#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "BrowseSettings.h"
#include "Client.h"
#include "Link.h"
#include "ObjectList.h"

namespace workbench {

// Reads many properties of one device, in lists whose length follows what the device can answer at once, and
// gives the device up when waiting for it takes too long.
class PatientReader {
public:
    // The link and the settings must outlive the reader.
    PatientReader(standard::Link& network, standard::Peer devicePeer, BrowseSettings const& browseSettings);

    using Taker = std::function<void(standard::ReadResult)>;
    // `take` gets the result of each reference, in their order. Those after the end are not requested and not
    // taken. An array that does not fit an answer is read by its elements.
    void Read(std::vector<standard::PropertyReference> const& references, Taker const& take);
    standard::ReadResult ReadOne(standard::PropertyReference const& reference);
    using ListProgress = standard::ObjectListReader::Progress;
    standard::ObjectListResult ReadObjectList(standard::ObjectId const& device, ListProgress const& progress);

    standard::Peer const& Device() const { return peer; }
    // Nothing more is read: the link was stopped, or the device was given up.
    bool IsOver() const { return !end.empty(); }
    // Why, as the end of a sentence about the device: "it does not answer".
    std::string const& End() const { return end; }

private:
    std::size_t ReadList(std::vector<standard::PropertyReference> const& list, Taker const& take);
    standard::ReadResult Elements(standard::ReadResult whole);
    void Note(standard::Exchange const& exchange);
    void Judge(std::vector<standard::ReadResult> const& results);
    void Adapt(std::size_t listSize, std::size_t requests);
    bool IsSilent();

    standard::Link& link;
    standard::Peer const peer;
    BrowseSettings const& settings;
    standard::Client client;
    standard::Link::Time const begin;
    bool hasAnswered = false;
    std::chrono::microseconds wasted{0};   // in requests without an answer
    std::chrono::microseconds delayed{0};  // until the sending that was answered
    std::size_t listLength;
    unsigned goodLists = 0;  // in succession
    std::string end;
};

}  // namespace workbench
