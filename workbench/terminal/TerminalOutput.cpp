#include "TerminalOutput.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace workbench {

namespace {

int OpenAgain(int handle) {
    if (!isatty(handle)) {
        return -1;
    }
    std::string const name = "/proc/self/fd/" + std::to_string(handle);
    return open(name.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

}  // namespace

std::size_t WriteNow(int handle, std::string_view text) {
    std::size_t done = 0;
    while (done < text.size()) {
        ssize_t const written = write(handle, text.data() + done, text.size() - done);
        if (written <= 0) {
            break;
        }
        done += static_cast<std::size_t>(written);
    }
    return done;
}

TerminalOutput::TerminalOutput(int givenHandle) : given(givenHandle), own(OpenAgain(givenHandle)) {}

TerminalOutput::~TerminalOutput() {
    if (own >= 0) {
        close(own);
    }
}

void TerminalOutput::Write(std::string_view text) {
    rest += text;
    Continue();
}

bool TerminalOutput::Continue() {
    errno = 0;
    rest.erase(0, WriteNow(Handle(), rest));
    if (errno != 0 && errno != EAGAIN && errno != EINTR) {
        rest.clear();  // the terminal is gone
    }
    return rest.empty();
}

bool TerminalOutput::Finish(std::chrono::milliseconds longest) {
    pollfd ready{Handle(), POLLOUT, 0};
    while (!Continue()) {
        if (poll(&ready, 1, static_cast<int>(longest.count())) == 0) {
            return false;
        }
    }
    return true;
}

}  // namespace workbench
