#pragma once

#include <string>

#include "Database.h"

namespace workbench {

// What a recording may keep.
struct RecordLimits {
    long long keep = 400LL * 86400000;          // milliseconds
    long long most = 2LL * 1024 * 1024 * 1024;  // octets of the file
};

// Keeps a recording in order beside the writing, in steps that take some tenths of a second at most: collects
// the values of each variable, removes what is too old or too much, and gives free space back. For one thread
// at a time; throws DatabaseError.
class RecordUpkeep {
public:
    // The database must outlive the upkeep.
    RecordUpkeep(Database& recording, RecordLimits const& recordLimits);

    // One step. `steady` is a monotonic time in milliseconds. Because a clock may be wrong for a while, such
    // as before it is set from the network, nothing is removed for its age in the first 10 minutes after a
    // start or a jump of the clock.
    void Step(long long now, long long steady);

private:
    // Removes the values of a variable from a table.
    struct Cutting {
        Cutting(Database& database, std::string const& table);

        Statement last;
        Statement remove;
    };

    void Collect(long long steady);
    void CollectSlice();
    void RemoveCollected();
    void ChooseCut(long long now, long long steady);
    void ChooseCutBySize(long long now);
    void Begin(long long before);
    void CutSome();
    long long CutVariable(Cutting& table, long long variable, long long block);
    long long CutOthers();
    void GiveBack();
    long long UsedOctets();

    Database& database;
    RecordLimits const limits;
    Cutting numbers;
    Cutting texts;
    Statement nextVariable;
    Statement holds;

    // A round of collecting takes the rows up to this one; 0 between rounds.
    long long roundEnd = 0;
    long long slices = 0;
    long long slice = 0;
    long long nextRound = 0;  // a steady time

    long long cut = 0;          // everything before it is being removed; 0: nothing
    long long cutVariable = 0;  // the latest one that is done
    long long done = 0;         // the latest cut that is complete
    long long nextCheck = 0;
    long long checkedNow = 0;
    long long checkedSteady = 0;
    long long trustedFrom = 0;
};

}  // namespace workbench
