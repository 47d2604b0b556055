#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "BrowseSettings.h"
#include "ObjectRecord.h"
#include "PatientReader.h"
#include "Relinquisher.h"
#include "TextStyle.h"

namespace workbench {

struct ReleaseTarget {
    standard::Peer peer;
    standard::ObjectId object;
    std::string name = {};  // of the variable in a project
};

enum class ReleaseOutcome {
    Commanded,       // at the priority; not released yet
    NotCommanded,    // nothing is to be released
    NotReadable,     // the device does not show its priority array: nothing was written
    Released,        // the priority array shows it
    Refused,         // the device answered with an error, a reject or an abort
    Confirmed,       // the device confirmed it, and its priority array could not be read afterwards
    NotConfirmed,    // no answer: the priority array after it shows what happened
    StillCommanded,  // the device confirmed it, and its priority array does not show it
    Skipped          // the command was ended before
};
// "released"
char const* NameOf(ReleaseOutcome outcome);

struct ReleaseResult {
    ReleaseTarget target;
    ReleaseOutcome outcome = ReleaseOutcome::NotReadable;
    std::string reason;  // what the device answered, or why nothing was written
    // Object_Name and Priority_Array.
    ObjectRecord before;
    ObjectRecord after;
};

// Releases objects at a priority: the only work of this room that changes a device. For use by one thread.
class PriorityRelease {
public:
    // The link must outlive it. The priority is 1 to 16.
    PriorityRelease(standard::Link& network, BrowseSettings browseSettings, unsigned releasedPriority);

    // Reads the priority array. Writes nothing.
    ReleaseResult Look(ReleaseTarget const& target);
    // Writes Null at the priority of an object that is Commanded, and reads the array again.
    void Release(ReleaseResult& result);

private:
    PatientReader& ReaderOf(standard::Peer const& peer);
    ObjectRecord Read(ReleaseTarget const& target);
    bool IsCommanded(ObjectRecord const& object) const;

    standard::Link& link;
    BrowseSettings const settings;
    unsigned const priority;
    standard::Relinquisher relinquisher;
    std::vector<std::unique_ptr<PatientReader>> readers;
};

// The array before, and after a release with what the device answered.
std::string BeforeText(ReleaseResult const& result, TextStyle const& style);
std::string AfterText(ReleaseResult const& result, unsigned priority, TextStyle const& style);
// {"kind":"release",...} in one line.
std::string ReleaseJson(ReleaseResult const& result, unsigned priority);

}  // namespace workbench
