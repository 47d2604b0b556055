#include "CommandInput.h"

#include <limits.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "FaultCommand.h"

namespace simulator {

namespace {

bool IsReady(int handle, short events) {
    pollfd one{handle, events, 0};
    return poll(&one, 1, 0) > 0;
}

}  // namespace

std::vector<std::string> CommandInput::Read() {
    std::vector<std::string> lines;
    char buffer[4096];
    if (!isOpen || !IsReady(handle, POLLIN)) {
        return lines;
    }
    ssize_t const count = ::read(handle, buffer, sizeof buffer);
    isOpen = count > 0 || (count < 0 && (errno == EINTR || errno == EAGAIN));
    for (ssize_t i = 0; i < count; ++i) {
        if (buffer[i] == '\n') {
            lines.push_back(std::move(line));
            line.clear();
        } else if (line.size() <= LongestCommand) {
            line += buffer[i];
        }
    }
    return lines;
}

// A pipe that is ready accepts PIPE_BUF octets at once.
void WriteWithoutWaiting(int handle, std::string const& text) {
    for (std::size_t start = 0; start < text.size();) {
        std::size_t const count = std::min<std::size_t>(text.size() - start, PIPE_BUF);
        if (!IsReady(handle, POLLOUT)) {
            return;
        }
        ssize_t const written = ::write(handle, text.data() + start, count);
        if (written <= 0) {
            return;
        }
        start += static_cast<std::size_t>(written);
    }
}

}  // namespace simulator
