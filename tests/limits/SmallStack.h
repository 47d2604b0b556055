#pragma once

#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>
#include <exception>
#include <functional>

namespace test {

// Less than an octet for each nested level, so that one call a level would overflow it. Sanitizers need
// larger frames.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define TEST_STACK_IS_WATCHED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define TEST_STACK_IS_WATCHED 1
#endif
#endif
#ifdef TEST_STACK_IS_WATCHED
constexpr std::size_t SmallStack = 256 * 1024;
#else
constexpr std::size_t SmallStack = 64 * 1024;
#endif

// Runs the body on a new thread with a small stack and rethrows its exception.
inline void OnSmallStack(std::function<void()> const& body) {
    struct Call {
        std::function<void()> const& body;
        std::exception_ptr failure;
    } call{body, nullptr};
    auto const run = [](void* argument) -> void* {
        auto& self = *static_cast<Call*>(argument);
        try {
            self.body();
        } catch (...) {
            self.failure = std::current_exception();
        }
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_t thread;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, SmallStack), 0);
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &call), 0);
    pthread_attr_destroy(&attributes);
    pthread_join(thread, nullptr);
    if (call.failure) {
        std::rethrow_exception(call.failure);
    }
}

}  // namespace test
