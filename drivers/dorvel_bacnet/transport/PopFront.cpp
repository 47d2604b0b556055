#include "PopFront.h"

#include "Exceptions.h"

char PopFront(std::deque<char>& queue) {
    if (queue.empty()) {
        throw ParseException("message ends too early");
    }
    char const octet = queue.front();
    queue.pop_front();
    return octet;
}
