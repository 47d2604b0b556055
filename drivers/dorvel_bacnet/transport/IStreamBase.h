#pragma once

// The byte stream that every parser of the application layer reads. One thread uses a stream at a time.
class IStreamBase {
public:
    virtual ~IStreamBase() = default;

    // Sends `count` octets. Returns the number of octets sent, or a negative number on failure.
    virtual int Send(char const* octets, unsigned int count) = 0;

    // Moves at most `count` octets to `buffer` and returns their number. Fewer than `count` is not an error
    // here: a parser that has to fail on truncated data compares the result.
    virtual unsigned int Receive(char* buffer, unsigned int count) = 0;

    // Takes one octet. Throws WrongLengthException when none is left.
    virtual char ReadByte() = 0;

    // The number of octets left.
    virtual int Available() = 0;
};
