#include "ProgressLine.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <ostream>

#include "Printable.h"

namespace workbench {

std::size_t TerminalWidth(int handle) {
    winsize size{};
    return ioctl(handle, TIOCGWINSZ, &size) == 0 && size.ws_col > 1 ? size.ws_col - 1u : 79u;
}

void ProgressLine::Show(std::string const& text) {
    if (isShown && text != shown) {
        shown = text;
        std::size_t const width = std::min(tools::DisplayWidth(text), TerminalWidth(STDERR_FILENO));
        stream << "\r\x1B[K" << tools::FitTo(text, width) << std::flush;
    }
}

void ProgressLine::Clear() {
    if (isShown) {
        shown.clear();
        stream << "\r\x1B[K" << std::flush;
    }
}

}  // namespace workbench
