#include "VerifyReport.h"

#include "Snapshot.h"

namespace workbench {

namespace {

void Append(std::string& text, char const* title, std::string const& part) {
    if (!part.empty()) {
        text += (text.empty() ? "" : ", ") + std::string(title) + part;
    }
}

// What a verdict counts among those of several rounds.
int RankOf(Verdict verdict) {
    return verdict == Verdict::NotVerified    ? 0
           : !RowOf(verdict).isFinding        ? 1
           : verdict == Verdict::DeviceSilent ? 2
                                              : 3;
}

std::string Counted(std::size_t count, char const* one, char const* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

bool IsFinding(PointResult const& point) {
    return RowOf(point.judgement.verdict).isFinding;
}

std::size_t FindingsOf(BlockResult const& block) {
    std::size_t count = 0;
    for (BlockNote const& note : block.notes) {
        count += note.isFinding ? 1 : 0;
    }
    for (PointResult const& point : block.points) {
        count += IsFinding(point) ? 1 : 0;
    }
    return count;
}

VerifyFigures FiguresOf(VerifyReport const& report) {
    VerifyFigures figures;
    figures.blocks = report.blocks.size();
    for (BlockResult const& block : report.blocks) {
        figures.points += block.points.size();
        figures.findings += FindingsOf(block);
        for (PointResult const& point : block.points) {
            ++figures.verdicts[point.judgement.verdict];
            for (Remark const remark : point.remarks) {
                ++figures.remarks[remark];
            }
        }
    }
    return figures;
}

void AddRound(PointResult& all, PointResult const& round) {
    auto counts = all.rounds;
    if (round.judgement.verdict != Verdict::NotVerified) {
        ++counts[round.judgement.verdict];
    }
    if (RankOf(round.judgement.verdict) >= RankOf(all.judgement.verdict)) {
        all = round;
    }
    all.rounds = std::move(counts);
}

std::string ExplanationText(PointResult const& point) {
    if (point.rounds.size() < 2 || !IsFinding(point)) {
        return point.judgement.explanation;
    }
    unsigned long long compared = 0;
    std::string others;
    for (auto const& [verdict, count] : point.rounds) {
        compared += count;
        if (verdict != point.judgement.verdict) {
            others += std::string(", ") + RowOf(verdict).name + " in " + std::to_string(count);
        }
    }
    std::string const& reason = point.judgement.explanation;
    return reason + (reason.empty() ? "" : "; ") + RowOf(point.judgement.verdict).name + " in " +
           std::to_string(point.rounds.at(point.judgement.verdict)) + " of " + std::to_string(compared) +
           " rounds" + others;
}

std::string PointText(VariableConfig const& variable) {
    constexpr int PresentValue = 85;
    std::string const object = ObjectText(variable);
    return variable.property->bacnetNumber == PresentValue ? object : object + " " + variable.property->name;
}

std::string IdentityText(DeviceIdentity const& device) {
    if (!device.isKnown) {
        return "the device has not identified itself";
    }
    std::string text = "device " + std::to_string(device.instance);
    text += device.name.empty() ? "" : " \"" + device.name + "\"";
    Append(text, "", device.vendor);
    Append(text, "", device.model);
    Append(text, "firmware ", device.firmware);
    Append(text, "software ", device.software);
    Append(text, "revision ", device.protocolRevision);
    return text;
}

std::string SummaryText(VerifyReport const& report) {
    VerifyFigures const figures = FiguresOf(report);
    std::string text =
        Counted(figures.points, "point", "points") + " in " + Counted(figures.blocks, "block", "blocks");
    if (report.roundsRequested > 1) {
        std::string const done =
            report.rounds == report.roundsRequested ? "" : std::to_string(report.rounds) + " of ";
        text += ", " + done + Counted(report.roundsRequested, "round", "rounds");
    }
    char const* separator = ": ";
    for (auto const& [verdict, count] : figures.verdicts) {
        text += separator + std::to_string(count) + " " + RowOf(verdict).name;
        separator = ", ";
    }
    separator = "; remarks: ";
    for (auto const& [remark, count] : figures.remarks) {
        text += separator + std::to_string(count) + " " + RowOf(remark).name;
        separator = ", ";
    }
    return text + "; " +
           (figures.findings == 0 ? "no findings" : Counted(figures.findings, "finding", "findings"));
}

}  // namespace workbench
