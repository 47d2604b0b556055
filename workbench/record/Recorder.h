#pragma once

#include <optional>
#include <string>

#include "EventList.h"
#include "OutletStatus.h"
#include "RecordLock.h"
#include "RecordQueue.h"
#include "RecordUpkeep.h"
#include "RecordWriter.h"

namespace workbench {

// Records a run into a file, step by step. When the file cannot be written, what waits stays in the queue,
// and each step tries again; a file that is removed is begun again. For one thread at a time, apart from the
// queue and the status, which are thread-safe.
class Recorder {
public:
    // Opens the file. RecordMistake if that is not possible. All references must outlive the recorder.
    Recorder(std::string const& recordPath, RecordLimits const& recordLimits,
             RecordWriter::Run const& recordRun, EventList const& runEvents, OutletStatus& outletStatus);
    Recorder(Recorder const&) = delete;
    Recorder& operator=(Recorder const&) = delete;

    RecordQueue& Queue() { return queue; }

    // Records what waits, in one transaction, and keeps the file in order.
    void Step();
    // Records the rest and the end of the run, as long as the file takes it and for a few seconds at most.
    void End();

private:
    struct File {
        File(std::string const& path, RecordLimits const& limits, RecordWriter::Run const& run,
             long long now);

        Database database;
        std::optional<RecordWriter> writer;
        RecordUpkeep upkeep;
    };

    bool Open();
    void Begin();
    void Leave();
    bool WriteSome(bool isEnd);
    void Write(std::vector<SharedSnapshot> const& cycles, std::vector<Event> const& found, bool isEnd);
    void KeepInOrder();
    void Report(DatabaseError const& mistake);
    void CountDropped();

    std::string const path;
    RecordLimits const limits;
    RecordWriter::Run const run;
    EventList const& events;
    OutletStatus& status;
    RecordQueue queue;
    // Kept while the file is in place, also when its database is closed: see RecordLock.
    std::optional<RecordLock> lock;
    FileIdentity log;  // that of SQLite, beside the file
    std::optional<File> file;
    unsigned long long recordedEvent = 0;
    unsigned long long countedValues = 0;
    long long nextTry = 0;     // a steady time: when a file that is lost is opened again
    long long dropsShown = 0;  // a steady time: until when the status says that cycles are dropped
};

}  // namespace workbench
