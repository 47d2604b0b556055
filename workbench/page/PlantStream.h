#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "ChangeFilter.h"
#include "EventList.h"
#include "HttpService.h"
#include "MessageRing.h"
#include "OutletList.h"
#include "PlantBoard.h"

namespace workbench {

class StreamReader;

// The server-sent events of a run: after each cycle of a block what has changed, each event, and the outlets
// when they have changed, at most once a second, as messages that are encoded once for all readers. Encodes
// on its own thread, and only while there are readers. When cycles are faster than that, several become one
// message. Thread-safe.
class PlantStream {
public:
    // Each reader holds a thread of the server.
    static constexpr std::size_t MostReaders = 64;

    // All must outlive the stream. Without outlets there are no messages of them.
    PlantStream(PlantBoard const& plantBoard, EventList const& plantEvents,
                OutletList const* runOutlets = nullptr);
    PlantStream(PlantStream const&) = delete;
    PlantStream& operator=(PlantStream const&) = delete;
    ~PlantStream();

    // Encodes cycles on a thread, until the end of the stream. A test calls Encode instead.
    void Start();
    // One step: what the board and the events have had since the last one.
    void Encode();
    // Sends the reason as the last event of each reader and ends them all.
    void End(std::string const& reason);

    // A reader, or null if there are too many. lastEvent is the id of the last event that the client has had
    // on an earlier stream, or empty: if all messages since then are still there, the reader continues after
    // it.
    std::unique_ptr<StreamReader> Open(std::string const& lastEvent);

    // The JSON of a block, encoded once for all who need it.
    SharedText WholeBlock(SharedSnapshot const& block);

private:
    friend class StreamReader;

    struct Beginning {
        unsigned long long position = 0;
        std::vector<SharedSnapshot> blocks;  // as they are at that position; none for a reader that continues
    };

    // Where a reader begins that has no state.
    Beginning Begin();
    bool FindPosition(std::string const& lastEvent, unsigned long long& position) const;
    void Leave() { --readers; }
    void Run();
    void BringUpToDate();
    void PushEvents();
    void PushOutlets();
    bool HasOutlets() const { return outlets && !outlets->IsEmpty(); }
    std::string OutletsText() const;
    void Push(char const* event, std::string const& json);
    std::string EndReason() const;

    PlantBoard const& board;
    EventList const& events;
    OutletList const* outlets;
    std::string run;  // a part of each event's id, so that those of another run do not count
    MessageRing ring;
    std::atomic<std::size_t> readers{0};

    mutable std::mutex mutex;  // of what follows
    ChangeFilter filter;
    std::map<BlockConfig const*, SharedSnapshot> shown;
    unsigned long long newestEvent = 0;
    std::string shownOutlets;
    long long outletsAt = 0;
    bool isCurrent = false;  // the messages follow one another since the last reader came
    long long lastRead = 0;
    std::string endReason;
    bool isEnded = false;

    std::mutex textMutex;
    std::map<BlockConfig const*, std::pair<SharedSnapshot, SharedText>> texts;

    std::thread thread;
};

// What one client gets.
class StreamReader : public HttpStream {
public:
    static constexpr std::chrono::seconds Lifetime{60};

    StreamReader(PlantStream& plantStream, std::string const& lastEvent);
    StreamReader(StreamReader const&) = delete;
    StreamReader& operator=(StreamReader const&) = delete;
    ~StreamReader() override;

    // The texts are in the format of server-sent events. After 15 s of silence there is a comment.
    std::vector<SharedText> Next(std::chrono::milliseconds timeout) override;
    bool IsOver() const override { return isOver; }

private:
    std::vector<SharedText> WholeState();
    std::vector<SharedText> NextMessages(std::chrono::milliseconds timeout);
    void EndIfOver(std::vector<SharedText>& texts);

    PlantStream& stream;
    unsigned long long position = 0;
    bool isBegun = false;
    bool isOver = false;
    long long opened;
    long long lastSent;
};

// A server-sent event. json is one line.
std::string EventText(std::string const& id, char const* event, std::string const& json);

}  // namespace workbench
