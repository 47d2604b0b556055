#pragma once

#include <string>

namespace workbench {

// What the user chooses of what is published. The names are as the user writes them; a publisher escapes
// what a topic must not have.
struct PublishSettings {
    std::string node;  // of this workbench, unlike that of any other one at the broker
    // Of the topics of JSON; empty for "dorvel/NODE". PrefixMistake (TopicLevel.h) has what is wrong with it.
    std::string prefix;
    std::string group;       // of Sparkplug
    double deadBand = 0;     // as in ChangeFilter.h
    long long interval = 0;  // the least time between two messages of a variable, in 100-nanosecond units
    bool takesCommands = false;
};

}  // namespace workbench
