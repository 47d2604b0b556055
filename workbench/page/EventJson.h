#pragma once

#include <string>

#include "Event.h"
#include "JsonFields.h"

namespace workbench {

// {"id":7,"time":...,"kind":"fault","block":"AHU","variable":null,"text":...}: an event for programs. The
// time is a text in ISO 8601.
void WriteEvent(JsonWriter& writer, Event const& event);

// The same as a line.
std::string EventJson(Event const& event);

}  // namespace workbench
