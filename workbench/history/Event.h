#pragma once

#include <string>

#include "Project.h"

namespace workbench {

// What people want to find again when a run has gone on for hours.
enum class EventKind {
    Fault,     // of a block, with its reason
    Recovery,  // the end of a fault
    Standby,   // of a block: the host does not poll it any more
    StandbyEnd,
    Set,      // the user has set a value
    Written,  // and what became of it: the stages of WriteState.h
    Unconfirmed,
    Differs,
    Refused,
    Suspect,  // the device has answered with an error, which is shown as a value
    SuspectEnd
};

// "fault", "recovery", "standby", "standby-end", "set", "written", "unconfirmed", "differs", "refused",
// "suspect", "suspect-end".
char const* EventName(EventKind kind);

struct Event {
    unsigned long long id = 0;  // rises by 1, from 1
    long long time = 0;         // a file time: of the cycle that has shown it
    long long localDiff = 0;
    EventKind kind = EventKind::Fault;
    BlockConfig const* block = nullptr;
    VariableConfig const* variable = nullptr;  // null for an event of the whole block
    std::string text;                          // for people, on one line, at most 512 octets
};

}  // namespace workbench
