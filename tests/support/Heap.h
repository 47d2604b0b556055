#pragma once

namespace test {

// What operator new has given to this program, its other threads and the host's libraries included, and not
// got back: the octets that were asked for. Linking Heap.cpp replaces operator new and delete of the program.
long long HeapOctets();
// The same as a number of pieces.
long long HeapPieces();

// The most octets that there were at one time since the last ForgetHeapPeak().
long long HeapPeak();
void ForgetHeapPeak();

// All that was given out since the program began, whether it was given back or not.
struct HeapTotals {
    long long pieces = 0;
    long long octets = 0;
};
HeapTotals HeapTotalsSoFar();

// The piece of that number from now on, counted from 1, is refused, and none behind it. 0: none is.
void FailPiece(long long number);
// All from the piece of that number on, until FailPiece is called.
void FailPiecesFrom(long long number);
// That the piece of the number was refused.
bool HasFailedPiece();

}  // namespace test
