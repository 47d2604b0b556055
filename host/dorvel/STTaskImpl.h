#pragma once

#include <memory>
#include <utility>

#include "dorvel/STTask.h"
#include "dorvelshare/LuaDataProvider.h"

class STTask {
public:
    STTask(TaskSettings settings, std::shared_ptr<VariableStore> store)
        : Settings(std::move(settings)), Provider(std::move(store), this) {}

    TaskSettings const Settings;
    LuaDataProvider Provider;
};
