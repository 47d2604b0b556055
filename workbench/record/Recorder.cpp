#include "Recorder.h"

#include <sqlite3.h>
#include <unistd.h>

#include "Printable.h"
#include "RecordSchema.h"
#include "RecordTime.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

constexpr std::size_t ValuesOfStep = 100000;
constexpr long long TryEvery = 10000;  // milliseconds
constexpr long long ShowDrops = 10000;
constexpr int StepsOfEnd = 5;

long long Now() {
    return RecordTime(dorvel::Environment().Now());
}

long long SteadyNow() {
    return dorvel::Environment().SteadyNow() / 10000;
}

std::string LogOf(std::string const& path) {
    return path + "-wal";
}

// With others the file itself is the matter, and it is opened again.
bool IsPassing(DatabaseError const& mistake) {
    return mistake.Code() == SQLITE_FULL || mistake.Code() == SQLITE_BUSY || mistake.Code() == SQLITE_LOCKED;
}

}  // namespace

Recorder::File::File(std::string const& path, RecordLimits const& limits, RecordWriter::Run const& run,
                     long long now)
    : database(OpenForRecording(path)), upkeep(database, limits) {
    Transaction transaction(database);
    writer.emplace(database, run, now);
    transaction.Commit();
}

Recorder::Recorder(std::string const& recordPath, RecordLimits const& recordLimits,
                   RecordWriter::Run const& recordRun, EventList const& runEvents, OutletStatus& outletStatus)
    : path(recordPath),
      limits(recordLimits),
      run(recordRun),
      events(runEvents),
      status(outletStatus),
      log(LogOf(path)) {
    try {
        Begin();
    } catch (DatabaseError const& mistake) {
        throw RecordMistake(TroubleOf(path, mistake));
    }
    status.Set(OutletHealth::Good, "records into " + tools::Printable(path));
}

void Recorder::Begin() {
    if (!lock) {
        lock.emplace(path);
    }
    file.emplace(path, limits, run, Now());
    log = FileIdentity(LogOf(path));
}

// SQLite would take what it has left beside the file as a part of the one that is there now.
void Recorder::Leave() {
    file.reset();
    if (FileIdentity(LogOf(path)) == log) {
        unlink(LogOf(path).c_str());
        unlink((path + "-shm").c_str());
    }
    lock.reset();
}

// False as long as the file is lost.
bool Recorder::Open() {
    bool const isInPlace = lock && lock->IsInPlace();
    if (file && isInPlace) {
        return true;
    }
    if (lock && !isInPlace) {
        status.Set(OutletHealth::Waiting, tools::Printable(path) + ": the file was removed or replaced");
        Leave();
    } else if (SteadyNow() < nextTry) {
        return false;
    }
    nextTry = SteadyNow() + TryEvery;
    try {
        Begin();
    } catch (DatabaseError const& mistake) {
        status.Set(OutletHealth::Failed, TroubleOf(path, mistake));
    } catch (RecordMistake const& mistake) {
        status.Set(OutletHealth::Failed, mistake.what());
    }
    countedValues = 0;
    return file.has_value();
}

void Recorder::Report(DatabaseError const& mistake) {
    bool const isPassing = IsPassing(mistake);
    status.Set(isPassing ? OutletHealth::Waiting : OutletHealth::Failed, TroubleOf(path, mistake));
    if (!isPassing) {
        file.reset();
        nextTry = SteadyNow() + TryEvery;
    }
}

void Recorder::CountDropped() {
    unsigned long long const dropped = queue.TakeDropped();
    if (dropped > 0) {
        status.Count("dropped", dropped);
        dropsShown = SteadyNow() + ShowDrops;
    }
}

void Recorder::Write(std::vector<SharedSnapshot> const& cycles, std::vector<Event> const& found, bool isEnd) {
    RecordWriter& writer = *file->writer;
    Transaction transaction(file->database);
    for (SharedSnapshot const& cycle : cycles) {
        writer.Write(*cycle);
    }
    for (Event const& event : found) {
        writer.Write(event);
    }
    isEnd ? writer.WriteEnd(Now()) : writer.WriteSeen(Now());
    transaction.Commit();
    writer.Commit();
}

// False if it was not possible.
bool Recorder::WriteSome(bool isEnd) {
    std::vector<Event> const found = events.Since(recordedEvent);
    std::vector<SharedSnapshot> const cycles = queue.Take(ValuesOfStep);
    try {
        Write(cycles, found, isEnd);
    } catch (DatabaseError const& mistake) {
        file->writer->Undo();
        queue.PutBack(cycles);
        Report(mistake);
        return false;
    }
    status.Count("values", file->writer->Values() - countedValues);
    countedValues = file->writer->Values();
    if (!found.empty()) {
        if (found.front().id > recordedEvent + 1) {
            status.Count("dropped events", found.front().id - recordedEvent - 1);
        }
        status.Count("events", found.size());
        recordedEvent = found.back().id;
    }
    return true;
}

void Recorder::KeepInOrder() {
    try {
        file->upkeep.Step(Now(), SteadyNow());
    } catch (DatabaseError const& mistake) {
        Report(mistake);
    }
}

void Recorder::Step() {
    if (Open() && WriteSome(false)) {
        bool const hasDrops = SteadyNow() < dropsShown;
        status.Set(hasDrops ? OutletHealth::Waiting : OutletHealth::Good,
                   hasDrops ? tools::Printable(path) + ": the disk is too slow; some cycles are not recorded"
                            : "records into " + tools::Printable(path));
        KeepInOrder();
    }
    CountDropped();
}

void Recorder::End() {
    for (int i = 0; i < StepsOfEnd && !queue.IsEmpty(); ++i) {
        Step();
    }
    if (Open() && WriteSome(true)) {
        try {
            // What is beside the file comes into it, so that it can be copied alone.
            file->database.Run("PRAGMA wal_checkpoint(TRUNCATE)");
        } catch (DatabaseError const& mistake) {
            Report(mistake);
        }
    }
    CountDropped();
    file.reset();
    lock.reset();
}

}  // namespace workbench
