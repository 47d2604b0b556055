#pragma once

namespace test {

// What operator new has given to this program, its other threads and the host's libraries included, and not
// got back: the octets that were asked for. Linking Heap.cpp replaces operator new and delete of the program.
long long HeapOctets();
// The same as a number of pieces.
long long HeapPieces();

// The piece of that number from now on, counted from 1, is refused, and none behind it. 0: none is.
void FailPiece(long long number);
// That there is none to refuse any more.
bool HasFailedPiece();

}  // namespace test
