#pragma once

#include <rapidjson/document.h>

namespace dorvel {

// A RapidJSON value on loan, with the allocator that its texts come from. A wrapper without a value makes one
// of its own when somebody asks for it with Value().
class JsonWrapper {
public:
    using Allocator = rapidjson::Document::AllocatorType;

    explicit JsonWrapper(Allocator& lentAllocator) : allocator(&lentAllocator) {}
    JsonWrapper(rapidjson::Value& lentValue, Allocator& lentAllocator)
        : value(&lentValue), allocator(&lentAllocator) {}

    JsonWrapper(JsonWrapper const&) = delete;
    JsonWrapper& operator=(JsonWrapper const&) = delete;

    bool HasValue() const { return value != nullptr; }
    rapidjson::Value& Value() {
        if (!value) {
            value = &own;
        }
        return *value;
    }
    Allocator& GetAllocator() { return *allocator; }

private:
    rapidjson::Value own;
    rapidjson::Value* value = nullptr;
    Allocator* allocator;
};

}  // namespace dorvel
