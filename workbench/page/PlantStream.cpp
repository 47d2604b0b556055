#include "PlantStream.h"

#include <charconv>
#include <system_error>
#include <utility>

#include "BackgroundThread.h"
#include "EventJson.h"
#include "JsonFields.h"
#include "JsonFormat.h"
#include "OutletFormat.h"
#include "Secret.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

constexpr long long Second = 10000000;
// Messages are still encoded for so long after the last reader has left: it may come back.
constexpr long long Afterwards = 20 * Second;
constexpr std::chrono::milliseconds WaitForCycle{200};
constexpr long long LongestSilence = 15 * Second;

long long SteadyNow() {
    return dorvel::Environment().SteadyNow();
}

std::string OneLine(std::string const& json) {
    return json.substr(0, json.find('\n'));
}

}  // namespace

std::string EventText(std::string const& id, char const* event, std::string const& json) {
    return (id.empty() ? "" : "id: " + id + "\n") + "event: " + event + "\ndata: " + OneLine(json) + "\n\n";
}

PlantStream::PlantStream(PlantBoard const& plantBoard, EventList const& plantEvents,
                         OutletList const* runOutlets)
    : board(plantBoard), events(plantEvents), outlets(runOutlets), run(RandomSecret().substr(0, 8)) {}

PlantStream::~PlantStream() {
    End("the run has ended");
    if (thread.joinable()) {
        thread.join();
    }
}

void PlantStream::Start() {
    thread = StartBackgroundThread([this] { Run(); });
}

void PlantStream::Run() {
    unsigned long long seen = 0;
    while (!board.IsClosed()) {
        {
            std::lock_guard<std::mutex> const lock(mutex);
            if (isEnded) {
                return;
            }
        }
        seen = board.Wait(seen, WaitForCycle);
        Encode();
    }
}

void PlantStream::Encode() {
    std::lock_guard<std::mutex> const lock(mutex);
    lastRead = readers > 0 ? SteadyNow() : lastRead;
    if (isCurrent && SteadyNow() - lastRead > Afterwards) {
        isCurrent = false;
        filter.Forget();
        shown.clear();
        ring.Clear();
    }
    if (!isCurrent || isEnded) {
        return;
    }
    for (SharedSnapshot const& block : board.All()) {
        SharedSnapshot& last = shown[block->config];
        if (last != block) {
            Push("changes", FormatJson(*block, filter.Take(*block).variables));
            last = block;
        }
    }
    PushEvents();
    PushOutlets();
}

void PlantStream::PushEvents() {
    for (Event const& event : events.Since(newestEvent)) {
        Push("event", EventJson(event));
        newestEvent = event.id;
    }
}

// Figures of outlets change all the time.
void PlantStream::PushOutlets() {
    if (!HasOutlets() || SteadyNow() - outletsAt < Second) {
        return;
    }
    outletsAt = SteadyNow();
    std::string text = OutletsText();
    if (text != shownOutlets) {
        Push("outlets", text);
        shownOutlets = std::move(text);
    }
}

std::string PlantStream::OutletsText() const {
    return OutletsJson(outlets->States(), dorvel::Environment().LocalTimeDiff());
}

void PlantStream::Push(char const* event, std::string const& json) {
    ring.Push(EventText(run + "-" + std::to_string(ring.End()), event, json));
}

void PlantStream::BringUpToDate() {
    for (SharedSnapshot const& block : board.All()) {
        filter.Take(*block);
        shown[block->config] = block;
    }
    newestEvent = events.Newest();
    isCurrent = true;
}

PlantStream::Beginning PlantStream::Begin() {
    std::lock_guard<std::mutex> const lock(mutex);
    lastRead = SteadyNow();
    if (!isCurrent) {
        BringUpToDate();
    }
    Beginning beginning{ring.End(), {}};
    for (SharedSnapshot const& block : board.All()) {
        beginning.blocks.push_back(shown[block->config]);
    }
    return beginning;
}

bool PlantStream::FindPosition(std::string const& lastEvent, unsigned long long& position) const {
    std::lock_guard<std::mutex> const lock(mutex);
    if (!isCurrent || lastEvent.compare(0, run.size() + 1, run + "-") != 0) {
        return false;
    }
    char const* const first = lastEvent.data() + run.size() + 1;
    char const* const last = lastEvent.data() + lastEvent.size();
    unsigned long long number = 0;
    auto const [end, error] = std::from_chars(first, last, number);
    if (error != std::errc() || end != last || number >= ring.End() || number + 1 < ring.Begin()) {
        return false;
    }
    position = number + 1;
    return true;
}

std::unique_ptr<StreamReader> PlantStream::Open(std::string const& lastEvent) {
    if (++readers > MostReaders) {
        --readers;
        return nullptr;
    }
    return std::make_unique<StreamReader>(*this, lastEvent);
}

SharedText PlantStream::WholeBlock(SharedSnapshot const& block) {
    std::lock_guard<std::mutex> const lock(textMutex);
    auto& [snapshot, text] = texts[block->config];
    if (snapshot != block) {
        text = std::make_shared<std::string const>(OneLine(FormatJson(*block)));
        snapshot = block;
    }
    return text;
}

void PlantStream::End(std::string const& reason) {
    {
        std::lock_guard<std::mutex> const lock(mutex);
        if (isEnded) {
            return;
        }
        isEnded = true;
        endReason = reason;
    }
    ring.Close();
}

std::string PlantStream::EndReason() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return isEnded ? endReason : std::string();
}

StreamReader::StreamReader(PlantStream& plantStream, std::string const& lastEvent)
    : stream(plantStream), opened(SteadyNow()), lastSent(opened) {
    isBegun = stream.FindPosition(lastEvent, position);
}

StreamReader::~StreamReader() {
    stream.Leave();
}

std::vector<SharedText> StreamReader::Next(std::chrono::milliseconds timeout) {
    std::vector<SharedText> texts;
    if (!isBegun) {
        isBegun = true;
        texts = WholeState();
    } else {
        texts = NextMessages(timeout);
    }
    if (texts.empty() && SteadyNow() - lastSent >= LongestSilence) {
        texts.push_back(std::make_shared<std::string const>(": nothing has happened\n\n"));
    }
    if (!texts.empty()) {
        lastSent = SteadyNow();
    }
    EndIfOver(texts);
    return texts;
}

std::vector<SharedText> StreamReader::WholeState() {
    PlantStream::Beginning const beginning = stream.Begin();
    position = beginning.position;
    std::string const id = position == 0 ? std::string() : stream.run + "-" + std::to_string(position - 1);
    std::vector<SharedText> texts;
    for (SharedSnapshot const& block : beginning.blocks) {
        // The text of the block is shared; what is around it is not worth it.
        texts.push_back(std::make_shared<std::string const>("event: block\ndata: "));
        texts.push_back(stream.WholeBlock(block));
        texts.push_back(std::make_shared<std::string const>("\n\n"));
    }
    if (stream.HasOutlets()) {
        texts.push_back(std::make_shared<std::string const>(EventText({}, "outlets", stream.OutletsText())));
    }
    if (!id.empty()) {
        texts.push_back(std::make_shared<std::string const>("id: " + id + "\n\n"));
    }
    return texts;
}

std::vector<SharedText> StreamReader::NextMessages(std::chrono::milliseconds timeout) {
    stream.ring.Wait(position, timeout);
    MessageRing::Taken const taken = stream.ring.Take(position);
    position = taken.next;
    if (taken.lost == 0) {
        return taken.messages;
    }
    std::vector<SharedText> texts = WholeState();
    texts.insert(texts.begin(), std::make_shared<std::string const>(EventText(
                                    {}, "lost", "{\"updates\":" + std::to_string(taken.lost) + "}")));
    return texts;
}

void StreamReader::EndIfOver(std::vector<SharedText>& texts) {
    std::string const reason = stream.EndReason();
    if (!reason.empty()) {
        rapidjson::StringBuffer buffer;
        JsonWriter writer(buffer);
        writer.StartObject();
        WriteField(writer, "reason", reason);
        writer.EndObject();
        texts.push_back(std::make_shared<std::string const>(EventText({}, "end", JsonLine(buffer))));
        isOver = true;
    } else if (SteadyNow() - opened >=
               std::chrono::duration_cast<std::chrono::seconds>(Lifetime).count() * Second) {
        texts.push_back(std::make_shared<std::string const>(EventText({}, "renew", "{}")));
        isOver = true;
    }
}

}  // namespace workbench
