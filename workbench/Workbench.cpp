#include "Workbench.h"

#include <fcntl.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <exception>
#include <iostream>
#include <ostream>

#include "AddIn.h"
#include "CheckCommand.h"
#include "CommandLine.h"
#include "ExitCode.h"
#include "NameTable.h"
#include "ProjectError.h"
#include "RunCommand.h"
#include "VerifyCommand.h"

namespace workbench {

namespace {

void PrintNames(NameTable const& table, char const* title, std::ostream& out) {
    out << title << "\n  code  BACnet  name\n";
    for (NameRow const& row : table) {
        char line[80];
        std::snprintf(line, sizeof line, "  %4d  %6d  %s\n", row.code, row.bacnetNumber, row.name);
        out << line;
    }
}

int ListNames(std::ostream& out) {
    PrintNames(ObjectTypes(), "ObjectType", out);
    out << "\n";
    PrintNames(Properties(), "ObjectProperties", out);
    return tools::WorkbenchExit::Ok;
}

int RunCommand(Options const& options, RunStreams const& streams) {
    if (options.what == Command::Names) {
        return ListNames(streams.out);
    }
    if (options.what == Command::Check) {
        return CheckProjects(options, streams.out, streams.outIsTerminal);
    }
    LoadAddIn(options.addIn.empty() ? DefaultAddIn() : options.addIn);
    return options.what == Command::Verify ? VerifyProject(options, streams) : RunProject(options, streams);
}

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
    std::optional<Options> const options = ParseCommandLine(argc, argv, out, err, exitCode);
    if (!options) {
        return exitCode;
    }
    bool const outIsTerminal = &out == &std::cout && isatty(1);
    bool const errIsTerminal = &err == &std::cerr && isatty(2);
    try {
        return RunCommand(*options, {out, err, outIsTerminal, errIsTerminal, in});
    } catch (ProjectError const& mistake) {
        return Fail(err, mistake, tools::WorkbenchExit::Usage);
    } catch (AddInError const& reason) {
        return Fail(err, reason, tools::WorkbenchExit::AddIn);
    } catch (std::exception const& reason) {
        return Fail(err, reason, tools::WorkbenchExit::Failure);
    }
}

}  // namespace workbench
