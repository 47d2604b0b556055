#pragma once

// The byte stream from which every parser of the application layer reads.
class IStreamBase {
public:
    virtual ~IStreamBase() = default;

    // Sends `count` octets. Returns how many were taken, or a negative number on failure.
    virtual int Send(char const* octets, unsigned int count) = 0;

    // Moves at most `count` octets to `buffer` and returns how many came. Fewer than `count` is no error:
    // a parser that must fail on truncation compares the result.
    virtual unsigned int Receive(char* buffer, unsigned int count) = 0;

    // Takes one octet. Throws WrongLengthException when none is left.
    virtual char ReadByte() = 0;

    // The number of octets left.
    virtual int Available() = 0;
};
