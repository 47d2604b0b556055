#include "ReleaseCommand.h"

#include <poll.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <ostream>

#include "ExitCode.h"
#include "NetworkCommand.h"
#include "ObjectArgument.h"
#include "ReleaseTargets.h"
#include "StoppableLink.h"
#include "UdpLink.h"

namespace workbench {

namespace {

constexpr char Help[] =
    R"(Writes Null to the present value of an object at a priority, so that the next lower one that is
commanded counts again, or the relinquish default. Shows the priority array before and after, and
what the device answered. It is the only command that writes by itself. It asks before it writes,
unless --yes is given; without a terminal, --yes is needed.

--all-at does so for every object whose present value a project can write (Write = true).

Examples:
  dorvel-workbench release 192.168.1.20 analog-output 1 --priority 8
  dorvel-workbench release 192.168.1.1,5:10:20 binary-output,3 --priority 8 --yes
  dorvel-workbench release --all-at 8 plant.lua

Exit codes:
  0  released, or there was nothing to release
  1  an object is not released: the device does not allow it, does not answer, or the answer was no
  2  a mistake on the command line or in the project, or neither a terminal nor --yes
  4  something else failed, such as opening a socket
  130  a second Ctrl-C ended the program at once)";

struct ReleaseOptions : NetworkOptions {
    std::vector<std::string> words;
    unsigned priority = 0;
    unsigned allAt = 0;
    bool isConfirmed = false;
    Params params;
};

unsigned PriorityOf(ReleaseOptions const& options) {
    return options.allAt != 0 ? options.allAt : options.priority;
}

ReleaseTarget TargetOf(ReleaseOptions const& options) {
    std::string object;
    for (std::size_t i = 1; i < options.words.size(); ++i) {
        object += (i == 1 ? "" : " ") + options.words[i];
    }
    if (object.empty()) {
        throw CLI::ValidationError("OBJECT", "is missing; give an object such as \"analog-output 1\"");
    }
    try {
        return {AddressArgument(options.words.front()), ParseObject(object)};
    } catch (ObjectMistake const& mistake) {
        throw CLI::ValidationError("OBJECT", mistake.what());
    }
}

// A line of the terminal; empty at its end or when a signal ends the command.
std::string Answer(int handle, NetworkCommand const& network) {
    std::string line;
    while (!network.IsStopped()) {
        pollfd waiting{handle, POLLIN, 0};
        char c = 0;
        if (poll(&waiting, 1, 100) <= 0) {
            continue;
        }
        if (read(handle, &c, 1) != 1 || c == '\n') {
            break;
        }
        line += c;
    }
    return line;
}

bool IsAgreed(std::size_t count, ReleaseOptions const& options, Streams const& streams,
              NetworkCommand const& network) {
    if (options.isConfirmed) {
        return true;
    }
    streams.err << "Release priority " << PriorityOf(options) << " of "
                << (count == 1 ? std::string("this object") : "these " + std::to_string(count) + " objects")
                << "? [y/N] " << std::flush;
    std::string const answer = Answer(streams.in, network);
    streams.err << (network.IsStopped() ? "\n" : "");
    return answer == "y" || answer == "Y" || answer == "yes";
}

class Releasing {
public:
    Releasing(ReleaseOptions const& releaseOptions, Streams const& commandStreams,
              std::vector<ReleaseTarget> const& targets)
        : options(releaseOptions),
          streams(commandStreams),
          network(options, streams),
          socket(standard::Endpoint{}),
          link(socket, network.StopFunction()),
          release(link, network.Settings(), PriorityOf(options)) {
        for (ReleaseTarget const& target : targets) {
            network.Show("reading " + std::to_string(results.size() + 1) + " of " +
                         std::to_string(targets.size()));
            results.push_back(release.Look(target));
        }
    }

    int Run() {
        bool const isJson = options.format == OutputFormat::Json;
        auto const count =
            static_cast<std::size_t>(std::count_if(results.begin(), results.end(), IsToRelease));
        if (!isJson) {
            ShowBefore();
        }
        network.Clear();
        if (count > 0 && !IsAgreed(count, options, streams, network)) {
            streams.err << "Nothing was written.\n";
            return tools::WorkbenchExit::Fault;
        }
        for (ReleaseResult& result : results) {
            if (IsToRelease(result)) {
                release.Release(result);
                isJson ? void()
                       : network.Print(Heading(result) +
                                       AfterText(result, PriorityOf(options), network.Style()));
            }
            isJson ? network.Print(ReleaseJson(result, PriorityOf(options))) : void();
        }
        return std::all_of(results.begin(), results.end(), IsGood) ? tools::WorkbenchExit::Ok
                                                                   : tools::WorkbenchExit::Fault;
    }

private:
    static bool IsToRelease(ReleaseResult const& result) {
        return result.outcome == ReleaseOutcome::Commanded;
    }
    static bool IsGood(ReleaseResult const& result) {
        return result.outcome == ReleaseOutcome::Released || result.outcome == ReleaseOutcome::NotCommanded;
    }

    void ShowBefore() {
        for (ReleaseResult const& result : results) {
            network.Print(BeforeText(result, network.Style()) +
                          (IsToRelease(result) ? std::string()
                                               : AfterText(result, PriorityOf(options), network.Style())));
        }
    }

    // Which object it is, where there are several.
    std::string Heading(ReleaseResult const& result) const {
        return results.size() > 1 ? result.target.name + "\n" : std::string();
    }

    ReleaseOptions const& options;
    Streams const& streams;
    NetworkCommand network;
    standard::UdpLink socket;
    StoppableLink link;
    PriorityRelease release;
    std::vector<ReleaseResult> results;
};

int Release(ReleaseOptions const& options, std::vector<ReleaseTarget> const& targets,
            Streams const& streams) {
    bool const canAsk = streams.in >= 0 && isatty(streams.in) && streams.errIsTerminal;
    if (!options.isConfirmed && !canAsk) {
        streams.err << "release asks before it writes, and there is no terminal to ask on; give --yes\n";
        return tools::WorkbenchExit::Usage;
    }
    return Releasing(options, streams, targets).Run();
}

void Define(CLI::App& command, ReleaseOptions& options) {
    command
        .add_option(
            "ADDRESS", options.words,
            "ADDRESS[:PORT][,NET:MAC] and an object such as \"analog-output 1\"; with --all-at PROJECT.lua")
        ->required();
    auto* const priority =
        command.add_option("--priority", options.priority, "The priority to release: 1 to 16")
            ->type_name("N")
            ->check(CLI::Range(1u, 16u).description(""));
    command
        .add_option("--all-at", options.allAt,
                    "Releases that priority of every object that the project can write: 1 to 16")
        ->type_name("N")
        ->check(CLI::Range(1u, 16u).description(""))
        ->excludes(priority);
    command.add_flag("--yes", options.isConfirmed, "Does not ask");
    AddDefineOption(command, options.params);
    AddRequestOptions(command, options);
    AddOutputOption(command, options.format);
    command.footer(Help);
}

}  // namespace

void AddReleaseCommand(CLI::App& program, CommandBody& chosen) {
    auto const options = std::make_shared<ReleaseOptions>();
    CLI::App* const command =
        program.add_subcommand("release", "Takes back what was commanded at a priority (writes Null)");
    Define(*command, *options);
    command->callback([options, &chosen] {
        if (PriorityOf(*options) == 0) {
            throw CLI::RequiredError("--priority or --all-at");
        }
        if (options->allAt != 0 && options->words.size() != 1) {
            throw CLI::ValidationError("--all-at", "takes one project");
        }
        std::vector<ReleaseTarget> targets;
        if (options->allAt == 0) {
            targets.push_back(TargetOf(*options));
        }
        chosen = [options, targets](Streams const& streams) {
            return Release(
                *options,
                options->allAt != 0 ? WritablePointsOf(options->words.front(), options->params) : targets,
                streams);
        };
    });
}

}  // namespace workbench
