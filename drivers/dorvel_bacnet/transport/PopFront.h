#pragma once

#include <deque>

#include "Exceptions.h"

// Removes the first octet of the queue and returns it. An empty queue throws ParseException.
inline char PopFront(std::deque<char>& queue) {
    if (queue.empty()) {
        throw ParseException("message ends too early");
    }
    char const octet = queue.front();
    queue.pop_front();
    return octet;
}
