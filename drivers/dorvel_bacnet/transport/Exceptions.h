#pragma once

#include <stdexcept>
#include <string>

// The exceptions of the stack. Installed systems recognise the default texts, so the texts do not change.

// No answer in time.
class TimeOutException : public std::runtime_error {
public:
    explicit TimeOutException(std::string const& text) : std::runtime_error(text) {}
    explicit TimeOutException(char const* text) : std::runtime_error(text) {}
    TimeOutException() : std::runtime_error("timout") {}
};

// Octets or a text of the wrong form. The base of all exceptions of a parser.
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

// An octet or a tag that is not the expected one.
class FormatErrorException : public ParseException {
public:
    explicit FormatErrorException(std::string const& text) : ParseException(text) {}
    explicit FormatErrorException(char const* text) : ParseException(text) {}
    FormatErrorException() : ParseException("packet format not expected") {}
};

// A message that is larger than the receiver accepts.
class MessageOversizeException : public std::runtime_error {
public:
    explicit MessageOversizeException(std::string const& text) : std::runtime_error(text) {}
    explicit MessageOversizeException(char const* text) : std::runtime_error(text) {}
    MessageOversizeException() : std::runtime_error("message size to big") {}
};

// A value outside its range. The class has no base and no text, so only a handler for this type or a
// catch-all handler catches it.
class ArgumentOutOfRangeException {};

// A plain record; no exception derives from it. The constructor drops its argument, so `text` is empty until
// somebody assigns it.
struct ExceptionBase {
    ExceptionBase() = default;
    explicit ExceptionBase(std::string const& /*text*/) {}

    std::string text;
};
