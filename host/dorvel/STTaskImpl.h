#pragma once

#include <memory>
#include <utility>

#include "dorvel/STTask.h"
#include "dorvelshare/LuaDataProvider.h"

class STTask {
public:
    STTask(TaskSettings taskSettings, std::shared_ptr<VariableStore> store)
        : settings(std::move(taskSettings)), provider(std::move(store), this) {}

    TaskSettings const settings;
    LuaDataProvider provider;
};
