#pragma once

#include <deque>

// Removes the first octet of the queue and returns it. An empty queue throws ParseException.
char PopFront(std::deque<char>& queue);
