#include "Workbench.h"

#include <fcntl.h>
#include <unistd.h>

#include <clocale>
#include <exception>
#include <iostream>
#include <ostream>

#include "AddIn.h"
#include "CommandLine.h"
#include "ExitCode.h"
#include "ProjectError.h"

namespace workbench {

namespace {

// A file or socket that is opened later must not take the number of a closed standard stream. What is written
// to the stream fails as if it were still closed.
void OccupyClosedStreams() {
    for (int handle = 0; handle <= STDERR_FILENO; ++handle) {
        if (fcntl(handle, F_GETFD) == -1) {
            open("/dev/null", handle == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

int Fail(std::ostream& err, std::exception const& reason, tools::WorkbenchExit::Code code) {
    err << reason.what() << "\n";
    return code;
}

}  // namespace

int Main(int argc, char const* const* argv, std::ostream& out, std::ostream& err) {
    // wcwidth knows the widths of characters only in a UTF-8 locale.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    // Checked before any file is opened: it could take the number of a closed standard input.
    int const in = &out == &std::cout && fcntl(0, F_GETFD) != -1 ? 0 : -1;
    if (&out == &std::cout) {
        OccupyClosedStreams();
    }
    int exitCode = tools::WorkbenchExit::Ok;
    CommandBody const command = ReadCommandLine(argc, argv, out, err, exitCode);
    if (!command) {
        return exitCode;
    }
    bool const outIsTerminal = &out == &std::cout && isatty(1);
    bool const errIsTerminal = &err == &std::cerr && isatty(2);
    try {
        return command({out, err, outIsTerminal, errIsTerminal, in});
    } catch (ProjectError const& mistake) {
        return Fail(err, mistake, tools::WorkbenchExit::Usage);
    } catch (AddInError const& reason) {
        return Fail(err, reason, tools::WorkbenchExit::AddIn);
    } catch (std::exception const& reason) {
        return Fail(err, reason, tools::WorkbenchExit::Failure);
    }
}

}  // namespace workbench
