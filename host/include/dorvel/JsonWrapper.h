#pragma once

#include <rapidjson/document.h>

namespace dorvel {

// Refers to a RapidJSON value and to the allocator of its texts, and owns neither. A wrapper that is made
// without a value has its own from the first call of Value() on.
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
