#include "VerifyRun.h"

#include <algorithm>
#include <deque>

#include "BlockVerifier.h"
#include "Identification.h"
#include "Printable.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

// "AHU (1 of 4), round 2 of 20: after the driver, 12 of 26 objects".
std::string ProgressText(LoadedProject const& project, std::size_t index, unsigned long long round,
                         VerifySettings const& settings, std::string const& step, std::size_t done,
                         std::size_t all) {
    std::string text = tools::Printable(project.Blocks()[index].name) + " (" + std::to_string(index + 1) +
                       " of " + std::to_string(project.Blocks().size()) + ")";
    if (settings.rounds > 1) {
        text += ", round " + std::to_string(round) + " of " + std::to_string(settings.rounds);
    }
    return text + ": " + step + ", " + std::to_string(done) + " of " + std::to_string(all) + " objects";
}

}  // namespace

VerifyReport Verify(LoadedProject& project, PollGuard& guard, LogBuffer const& log, standard::Link& link,
                    VerifySettings const& settings) {
    VerifyReport report;
    report.roundsRequested = settings.rounds;
    report.begun = dorvel::Environment().Now();
    report.localDiff = dorvel::Environment().LocalTimeDiff();
    standard::Client client(link, settings.client);
    DriverPoll poll(project.Runtime().Variables(), guard, log);
    unsigned long long round = 1;
    std::deque<BlockVerifier> verifiers;
    for (std::size_t i = 0; i < project.Blocks().size(); ++i) {
        auto const progress = [&, i](std::string const& step, std::size_t done, std::size_t all) {
            if (settings.progress) {
                settings.progress(ProgressText(project, i, round, settings, step, done, all));
            }
            return !link.IsStopped();
        };
        verifiers.emplace_back(project.Blocks()[i], client, poll, report.localDiff, progress);
    }
    for (; round <= settings.rounds && !report.isInterrupted; ++round) {
        for (BlockVerifier& verifier : verifiers) {
            bool const isDone = (round > 1 || verifier.Describe()) && verifier.Round();
            report.isInterrupted = report.isInterrupted || !isDone;
            if (!isDone) {
                break;
            }
        }
        bool const isWhole = std::all_of(verifiers.begin(), verifiers.end(),
                                         [](BlockVerifier const& verifier) { return verifier.IsCompared(); });
        report.rounds += isWhole && !report.isInterrupted ? 1 : 0;
    }
    for (BlockVerifier& verifier : verifiers) {
        report.blocks.push_back(verifier.Result());
    }
    NoteSharedDevices(report.blocks);
    report.ended = dorvel::Environment().Now();
    return report;
}

}  // namespace workbench
