#include "MultipleRead.h"

#include <iterator>
#include <utility>

#include "ReadRequests.h"
#include "Refusal.h"

namespace standard {

namespace {

constexpr unsigned MostSilentInARow = 2;

using References = std::vector<PropertyReference>;

bool IsWithoutAnswer(Failure const& failure) {
    return failure.kind == Failure::Kind::Silent || failure.kind == Failure::Kind::Incomplete;
}

// Of the properties that are left after this failure.
Failure NotRequested(Failure const& last) {
    std::string detail = "not requested, since the device did not answer before";
    detail += last.detail.empty() ? "" : ": " + last.detail;
    return {Failure::Kind::Silent, 0, 0, std::move(detail)};
}

bool IsUnrecognizedService(Failure const& failure) {
    return failure.kind == Failure::Kind::Reject &&
           failure.code == static_cast<std::uint32_t>(RejectReason::UnrecognizedService);
}

}  // namespace

MultipleRead::MultipleRead(ReadList listRequest, ReadOne singleRequest, std::size_t longestRequest,
                           bool usesLists)
    : readList(std::move(listRequest)),
      readOne(std::move(singleRequest)),
      longest(longestRequest),
      isWithoutLists(!usesLists) {}

std::vector<ReadResult> MultipleRead::Run(References const& references) {
    Split(references);
    while (!waiting.empty() && !IsOver()) {
        Range const range = waiting.back();
        waiting.pop_back();
        ReadRange(references, range);
    }
    while (results.size() < references.size()) {
        results.push_back({references[results.size()], {}, end});
    }
    return std::move(results);
}

// The longest ranges whose requests fit. A single property that does not fit is a range too.
void MultipleRead::Split(References const& references) {
    std::size_t from = 0;
    while (from < references.size()) {
        References list{references[from]};
        while (from + list.size() < references.size()) {
            list.push_back(references[from + list.size()]);
            if (requests::SizeOfReadPropertyMultiple(list) > longest) {
                list.pop_back();
                break;
            }
        }
        waiting.insert(waiting.begin(), Range{from, from + list.size()});
        from += list.size();
    }
}

void MultipleRead::ReadRange(References const& references, Range const& range) {
    if (isWithoutLists || range.to - range.from == 1) {
        ReadSingles(references, range);
        return;
    }
    auto const first = references.begin() + static_cast<std::ptrdiff_t>(range.from);
    auto const last = references.begin() + static_cast<std::ptrdiff_t>(range.to);
    ListAnswer answer = readList(References(first, last));
    if (answer.failure) {
        AfterFailure(references, range, *answer.failure);
        return;
    }
    hasListAnswer = true;
    silentInARow = 0;
    std::move(answer.results.begin(), answer.results.end(), std::back_inserter(results));
}

void MultipleRead::AfterFailure(References const& references, Range const& range, Failure const& failure) {
    switch (failure.kind) {
        case Failure::Kind::Stopped:
            end = failure;
            return;
        case Failure::Kind::Abort: {
            std::size_t const middle = range.from + (range.to - range.from) / 2;
            waiting.push_back({middle, range.to});
            waiting.push_back({range.from, middle});
            return;
        }
        case Failure::Kind::Silent:
        case Failure::Kind::Incomplete:
            ++silentInARow;
            ReadSingles(references, range);
            isWithoutLists = isWithoutLists || (!hasListAnswer && !IsOver());
            return;
        default:
            isWithoutLists = isWithoutLists || IsUnrecognizedService(failure);
            ReadSingles(references, range);
    }
}

void MultipleRead::ReadSingles(References const& references, Range const& range) {
    for (std::size_t i = range.from; i < range.to && !IsOver(); ++i) {
        Add(readOne(references[i]));
    }
}

void MultipleRead::Add(ReadResult result) {
    bool const isSilent = result.failure && IsWithoutAnswer(*result.failure);
    bool const isStopped = result.failure && result.failure->kind == Failure::Kind::Stopped;
    silentInARow = isSilent ? silentInARow + 1 : 0;
    if (silentInARow >= MostSilentInARow) {
        end = NotRequested(*result.failure);
    } else if (isStopped) {
        end = result.failure;
    }
    results.push_back(std::move(result));
}

}  // namespace standard
