#include "dorvel/STTask.h"

#include "STTaskImpl.h"

STTask* FindSTTask(LuaDataProvider const* provider) {
    return provider ? provider->Owner() : nullptr;
}

TaskSettings const* GetTaskSettings(STTask const* task) {
    static TaskSettings const none;
    return task ? &task->settings : &none;
}
