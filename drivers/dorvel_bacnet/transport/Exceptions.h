#pragma once

#include <stdexcept>
#include <string>

// The failures of the stack. The texts are the system's vocabulary and are kept to the letter.

// No answer in time.
class TimeOutException : public std::runtime_error {
public:
    explicit TimeOutException(std::string const& text) : std::runtime_error(text) {}
    explicit TimeOutException(char const* text) : std::runtime_error(text) {}
    TimeOutException() : std::runtime_error("timout") {}
};

// Octets or a text that do not have the awaited form; the base of all that a parser reports.
class ParseException : public std::runtime_error {
public:
    explicit ParseException(std::string const& text) : std::runtime_error(text) {}
    explicit ParseException(char const* text) : std::runtime_error(text) {}
    ParseException() : std::runtime_error("parse error") {}
};

// The data ends before the message does.
class WrongLengthException : public ParseException {
public:
    explicit WrongLengthException(std::string const& text) : ParseException(text) {}
    explicit WrongLengthException(char const* text) : ParseException(text) {}
    WrongLengthException() : ParseException("message size error") {}
};

// An octet or a tag is not the awaited one.
class FormatErrorException : public ParseException {
public:
    explicit FormatErrorException(std::string const& text) : ParseException(text) {}
    explicit FormatErrorException(char const* text) : ParseException(text) {}
    FormatErrorException() : ParseException("packet format not expected") {}
};

// A message larger than the receiver takes.
class MessageOversizeException : public std::runtime_error {
public:
    explicit MessageOversizeException(std::string const& text) : std::runtime_error(text) {}
    explicit MessageOversizeException(char const* text) : std::runtime_error(text) {}
    MessageOversizeException() : std::runtime_error("message size to big") {}
};

// A value outside its range. It has no base and no text, so only a handler for this very type, or for
// everything, sees it.
class ArgumentOutOfRangeException {};

// A plain record, in spite of its name the base of no exception. Its text stays empty: the argument is
// dropped.
struct ExceptionBase {
    ExceptionBase() = default;
    explicit ExceptionBase(std::string const& /*text*/) {}

    std::string text;
};
