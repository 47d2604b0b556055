#include "MessageRing.h"

#include <algorithm>
#include <utility>

namespace workbench {

namespace {

constexpr std::size_t MostTaken = std::size_t{512} << 10;

}  // namespace

void MessageRing::Push(std::string text) {
    auto message = std::make_shared<std::string const>(std::move(text));
    {
        std::lock_guard<std::mutex> const lock(mutex);
        octets += message->size();
        messages.push_back(std::move(message));
        ++end;
        while (messages.size() > 1 && (messages.size() > longest || octets > largest)) {
            DropOldest();
        }
    }
    changed.notify_all();
}

void MessageRing::DropOldest() {
    octets -= messages.front()->size();
    messages.pop_front();
}

void MessageRing::Clear() {
    std::lock_guard<std::mutex> const lock(mutex);
    messages.clear();
    octets = 0;
    // No position from before is the next one.
    ++end;
}

MessageRing::Taken MessageRing::Take(unsigned long long position) const {
    std::lock_guard<std::mutex> const lock(mutex);
    unsigned long long const begin = end - messages.size();
    Taken taken;
    taken.lost = position < begin ? begin - position : 0;
    taken.next = std::max(position, begin);
    std::size_t size = 0;
    while (taken.next < end && size < MostTaken) {
        SharedText const& message = messages[static_cast<std::size_t>(taken.next - begin)];
        taken.messages.push_back(message);
        size += message->size();
        ++taken.next;
    }
    return taken;
}

void MessageRing::Wait(unsigned long long position, std::chrono::milliseconds timeout) const {
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait_for(lock, timeout, [&] { return isClosed || position < end; });
}

unsigned long long MessageRing::Begin() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return end - messages.size();
}

unsigned long long MessageRing::End() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return end;
}

void MessageRing::Close() {
    {
        std::lock_guard<std::mutex> const lock(mutex);
        isClosed = true;
    }
    changed.notify_all();
}

}  // namespace workbench
