#pragma once

#include <string>

#include "HostApi.h"

class LuaDataProvider;

// Settings of a task, as drivers may read them.
struct TaskSettings {
    std::string Name;
    unsigned short Number = 0;  // index among the tasks, from 1; appears in the trace of sockets
    unsigned int PeriodMilliseconds = 1000;
};

// A task of the runtime: calls its blocks one after another, every period, on its own thread.
class STTask;

// The task that owns the data provider, null for a provider without a task.
DORVEL_HOST_API STTask* FindSTTask(LuaDataProvider const* provider);

// The settings of a task; of a null task, settings with number 0.
DORVEL_HOST_API TaskSettings const* GetTaskSettings(STTask const* task);
