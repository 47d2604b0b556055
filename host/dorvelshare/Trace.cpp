#include "dorvelshare/Trace.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>
#include <utility>

namespace {

constexpr int TraceWarning = 0x10;
constexpr int TraceError = 0x20;

std::atomic<bool> userTrace{false};

struct Log {
    std::mutex mutex;
    dorvel::LogSink sink;
};

// Never destroyed: other libraries may log while the process ends.
Log& TheLog() {
    static auto* const log = new Log;
    return *log;
}

void Emit(std::string_view text) {
    Log& log = TheLog();
    std::lock_guard<std::mutex> const lock(log.mutex);
    if (log.sink) {
        log.sink(text);
    } else {
        std::fwrite(text.data(), 1, text.size(), stderr);
    }
}

// Formats a text of any length; the format itself when formatting fails.
std::string Format(char const* format, std::va_list arguments) {
    std::va_list again;
    va_copy(again, arguments);
    int const length = std::vsnprintf(nullptr, 0, format, arguments);
    std::string text = format;
    if (length >= 0) {
        text.resize(static_cast<std::size_t>(length) + 1);  // one more for the zero
        std::vsnprintf(text.data(), text.size(), format, again);
        text.pop_back();
    }
    va_end(again);
    return text;
}

}  // namespace

void logMsg(char const* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::string const text = Format(format, arguments);
    va_end(arguments);
    Emit(text);
}

void logMsgLn(char const* text) {
    Emit(std::string(text) + '\n');
}

bool IsEnableUserTrace() {
    return userTrace;
}

// Logs warnings and errors always, other levels while the user's trace is on.
void OpcUa_Trace_Imp(int level, char const* file, int line, char const* format, ...) {
    if ((level & (TraceWarning | TraceError)) == 0 && !userTrace) {
        return;
    }
    std::va_list arguments;
    va_start(arguments, format);
    std::string const text = Format(format, arguments);
    va_end(arguments);
    Emit(std::string(file) + ':' + std::to_string(line) + ": " + text + '\n');
}

namespace dorvel {

void SetLogSink(LogSink sink) {
    Log& log = TheLog();
    std::lock_guard<std::mutex> const lock(log.mutex);
    log.sink = std::move(sink);
}

void EnableUserTrace(bool enable) {
    userTrace = enable;
}

}  // namespace dorvel
