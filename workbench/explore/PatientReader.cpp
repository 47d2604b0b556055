#include "PatientReader.h"

#include <algorithm>
#include <utility>

#include "PropertyId.h"

namespace workbench {

namespace {

using standard::Failure;
using standard::ObjectId;
using standard::PropertyReference;
using standard::ReadResult;

// Properties of a list. A shorter answer costs a request more, a longer one that does not fit as well.
constexpr std::size_t FirstLength = 16;
constexpr std::size_t LongestLength = 64;
constexpr unsigned GoodListsUntilLonger = 8;
// A device that answers repeated requests is waited for so many times longer.
constexpr int PatienceWithRepetitions = 6;
// Elements of an array that is read one by one.
constexpr std::uint64_t MostElements = 4096;

bool IsWithoutAnswer(ReadResult const& result) {
    return result.failure && (result.failure->kind == Failure::Kind::Silent ||
                              result.failure->kind == Failure::Kind::Malformed ||
                              result.failure->kind == Failure::Kind::Incomplete);
}

bool IsSilentResult(ReadResult const& result) {
    return result.failure &&
           (result.failure->kind == Failure::Kind::Silent || result.failure->kind == Failure::Kind::Stopped);
}

}  // namespace

PatientReader::PatientReader(standard::Link& network, standard::Peer devicePeer,
                             BrowseSettings const& browseSettings)
    : link(network),
      peer(std::move(devicePeer)),
      settings(browseSettings),
      client(network, PacedClient(browseSettings)),
      begin(network.Now()),
      listLength(FirstLength) {
    client.OnExchange([this](standard::Exchange const& exchange) { Note(exchange); });
}

void PatientReader::Read(std::vector<PropertyReference> const& references, Taker const& take) {
    for (std::size_t from = 0; from < references.size() && !IsOver();) {
        std::size_t const to = std::min(references.size(), from + listLength);
        std::optional<ReadResult> silent;
        from += ReadList({references.begin() + static_cast<std::ptrdiff_t>(from),
                          references.begin() + static_cast<std::ptrdiff_t>(to)},
                         [&](ReadResult result) {
                             silent = IsSilentResult(result) ? std::optional(result) : std::nullopt;
                             take(std::move(result));
                         });
        // An object that is not answered for would cost the same time with each property.
        for (; silent && !IsOver() && from < references.size() &&
               references[from].object == silent->reference.object;
             ++from) {
            take({references[from], {}, silent->failure});
        }
    }
}

ReadResult PatientReader::ReadOne(PropertyReference const& reference) {
    if (IsOver()) {
        return {reference, {}, Failure{Failure::Kind::Stopped, 0, 0, {}}};
    }
    ReadResult result = client.Read(peer, reference);
    Judge({result});
    return result;
}

standard::ObjectListResult PatientReader::ReadObjectList(ObjectId const& device,
                                                         ListProgress const& progress) {
    if (IsOver()) {
        return {};
    }
    standard::ObjectListReader list(client, peer, device);
    list.OnProgress(progress);
    standard::ObjectListResult result = list.Read();
    if (result.failure) {
        Judge({{{device, 0, std::nullopt}, {}, result.failure}});
    }
    return result;
}

// Returns how many of the list are read.
std::size_t PatientReader::ReadList(std::vector<PropertyReference> const& list, Taker const& take) {
    std::size_t const before = client.RequestCount();
    std::vector<ReadResult> results = client.ReadMultiple(peer, list);
    Adapt(list.size(), client.RequestCount() - before);
    Judge(results);
    // The client requests nothing more of a list once two requests had no answer. What follows is asked for
    // again.
    auto const silent = std::find_if(results.rbegin(), results.rend(),
                                     [](ReadResult const& result) { return !IsSilentResult(result); });
    auto const silentCount = static_cast<std::size_t>(silent - results.rbegin());
    results.resize(results.size() - silentCount + (silentCount > 0 && !IsOver() ? 1 : 0));
    for (ReadResult& result : results) {
        bool const isTooLong = result.failure && result.failure->kind == Failure::Kind::Abort;
        take(isTooLong && !IsOver() ? Elements(std::move(result)) : std::move(result));
    }
    return results.size();
}

ReadResult PatientReader::Elements(ReadResult whole) {
    PropertyReference reference = whole.reference;
    reference.index = 0;
    ReadResult const count = ReadOne(reference);
    bool const isArray = !whole.reference.index && !count.failure && count.values.size() == 1 &&
                         count.values[0].kind == standard::DatumKind::Unsigned;
    if (!isArray) {
        return whole;
    }
    if (count.values[0].number > MostElements) {
        whole.failure->detail = "the array has " + std::to_string(count.values[0].number) + " elements";
        return whole;
    }
    std::vector<PropertyReference> elements;
    for (std::uint32_t i = 1; i <= count.values[0].number; ++i) {
        reference.index = i;
        elements.push_back(reference);
    }
    ReadResult joined{whole.reference, {}, std::nullopt};
    std::size_t taken = 0;
    Read(elements, [&](ReadResult const& element) {
        ++taken;
        joined.failure = joined.failure ? joined.failure : element.failure;
        joined.values.insert(joined.values.end(), element.values.begin(), element.values.end());
    });
    return joined.failure || taken < elements.size() ? whole : joined;
}

void PatientReader::Note(standard::Exchange const& exchange) {
    hasAnswered = hasAnswered || exchange.answeredBy;
    (exchange.answeredBy ? delayed : wasted) +=
        exchange.answeredBy ? exchange.duration - exchange.sinceSent : exchange.duration;
}

void PatientReader::Judge(std::vector<ReadResult> const& results) {
    if (link.IsStopped()) {
        end = "the reading was ended";
        return;
    }
    bool const isLost = !results.empty() && std::all_of(results.begin(), results.end(), IsWithoutAnswer);
    auto const total = std::chrono::duration_cast<std::chrono::microseconds>(link.Now() - begin);
    bool const isSlow = delayed > settings.patience * PatienceWithRepetitions && delayed * 2 > total;
    if (isSlow || (wasted > settings.patience && wasted * 2 > total)) {
        end = "most of its answers do not come in time";
    } else if (isLost && IsSilent()) {
        end = link.IsStopped() ? "the reading was ended"
              : hasAnswered    ? "it does not answer any more"
                               : "it does not answer";
    }
}

// It may answer for other objects than those.
bool PatientReader::IsSilent() {
    constexpr std::uint16_t deviceType = 8;
    standard::ClientSettings once = settings.client;
    once.retries = 0;
    ReadResult const result =
        standard::Client(link, once)
            .Read(peer, {{deviceType, ObjectId::LastInstance},
                         static_cast<std::uint32_t>(standard::PropertyId::Object_Identifier),
                         std::nullopt});
    return result.failure && (IsWithoutAnswer(result) || result.failure->kind == Failure::Kind::Stopped);
}

void PatientReader::Adapt(std::size_t listSize, std::size_t requests) {
    if (requests > 1) {
        listLength = std::max<std::size_t>(1, std::min(listLength, listSize) / 2);
        goodLists = 0;
    } else if (listSize == listLength && ++goodLists >= GoodListsUntilLonger) {
        listLength = std::min(LongestLength, listLength * 2);
        goodLists = 0;
    }
}

}  // namespace workbench
