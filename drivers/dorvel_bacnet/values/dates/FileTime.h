#pragma once

// How two file times (counts of 100 ns since 1 January 1601) are ordered: the remainder of their difference
// on division by 100, so 0 for all that dates and times give. The host relies on dates and times never
// counting as changed.
inline int CompareFileTimes(unsigned long long left, unsigned long long right) {
    return static_cast<int>(static_cast<long long>(left - right) % 100);
}
