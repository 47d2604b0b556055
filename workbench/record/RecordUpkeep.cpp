#include "RecordUpkeep.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace workbench {

namespace {

constexpr long long Second = 1000;
constexpr long long Minute = 60 * Second;
constexpr long long Round = Minute;         // between rounds of collecting
constexpr long long RowsOfStep = 60000;     // that a step moves or removes
constexpr long long VariablesOfStep = 200;  // that a step looks at
constexpr long long CheckEvery = 10 * Second;
constexpr long long Distrust = 10 * Minute;  // after a start and a jump of the clock
constexpr long long PagesOfStep = 256;       // that a step gives back

}  // namespace

RecordUpkeep::RecordUpkeep(Database& recording, RecordLimits const& recordLimits)
    : database(recording),
      limits(recordLimits),
      numbers(database, "number"),
      texts(database, "text"),
      nextVariable(database, "SELECT id, block FROM variable WHERE id > ? ORDER BY id LIMIT 1"),
      holds(database, "SELECT 1 FROM polled WHERE block = ?1 AND since <= ?2 AND until >= ?3") {}

RecordUpkeep::Cutting::Cutting(Database& database, std::string const& table)
    : last(database, "SELECT max(time) FROM " + table + " WHERE variable = ?1 AND time <= ?2"),
      remove(database, "DELETE FROM " + table +
                           " WHERE variable = ?1 AND time < min(?2, ifnull((SELECT time FROM " + table +
                           " WHERE variable = ?1 ORDER BY time LIMIT 1 OFFSET ?3), ?2))") {}

void RecordUpkeep::Step(long long now, long long steady) {
    Collect(steady);
    ChooseCut(now, steady);
    CutSome();
    GiveBack();
}

// Rows of a round stay in `recent` until all of them are in `number` too, so that nothing is missing after
// the end of the process at any point; a row that is in both is the same.
void RecordUpkeep::Collect(long long steady) {
    if (roundEnd == 0) {
        if (steady < nextRound) {
            return;
        }
        nextRound = steady + Round;
        roundEnd = database.Number("SELECT max(id) FROM recent");
        slices = (roundEnd - database.Number("SELECT min(id) FROM recent")) / RowsOfStep + 1;
        slice = 0;
    }
    if (roundEnd != 0) {
        slice < slices ? CollectSlice() : RemoveCollected();
    }
}

// In the order of `number`, so that each of its pages is changed once.
void RecordUpkeep::CollectSlice() {
    Statement collect(database,
                      "INSERT OR REPLACE INTO number (variable, time, value, status) SELECT variable, time, "
                      "value, status FROM recent WHERE id <= ?1 AND variable % ?2 = ?3 ORDER BY variable, "
                      "time, id");
    collect.Bind(1, roundEnd).Bind(2, slices).Bind(3, slice).Run();
    ++slice;
}

void RecordUpkeep::RemoveCollected() {
    Statement remove(database, "DELETE FROM recent WHERE id <= min(?1, (SELECT min(id) FROM recent) + ?2)");
    remove.Bind(1, roundEnd).Bind(2, RowsOfStep).Run();
    if (database.Changes() < RowsOfStep) {
        roundEnd = 0;
    }
}

long long RecordUpkeep::UsedOctets() {
    return (database.Number("PRAGMA page_count") - database.Number("PRAGMA freelist_count")) *
           database.Number("PRAGMA page_size");
}

void RecordUpkeep::ChooseCut(long long now, long long steady) {
    if (steady < nextCheck) {
        return;
    }
    bool const isFirst = nextCheck == 0;
    bool const isJump = std::llabs((now - checkedNow) - (steady - checkedSteady)) > Minute;
    if (isFirst || isJump) {
        trustedFrom = steady + Distrust;
    }
    checkedNow = now;
    checkedSteady = steady;
    nextCheck = steady + CheckEvery;
    if (cut != 0) {
        return;
    }
    long long const oldest = now - limits.keep;
    if (steady >= trustedFrom && oldest - done > limits.keep / 200) {
        Begin(oldest);
    } else if (UsedOctets() > limits.most) {
        ChooseCutBySize(now);
    }
}

// The first value of a variable may be old because it has not changed since; the second one is not.
void RecordUpkeep::ChooseCutBySize(long long now) {
    long long const oldest = database.Number(
        "SELECT min(time) FROM (SELECT (SELECT time FROM number WHERE variable = id ORDER BY time LIMIT 1 "
        "OFFSET 1) AS time FROM variable UNION ALL SELECT (SELECT time FROM text WHERE variable = id ORDER "
        "BY "
        "time LIMIT 1 OFFSET 1) FROM variable UNION ALL SELECT min(time) FROM event)");
    long long const next = oldest + std::max(Minute, (now - oldest) / 20);
    if (oldest != 0 && next < now - Minute) {
        Begin(next);
    }
}

void RecordUpkeep::Begin(long long before) {
    cut = before;
    cutVariable = 0;
}

void RecordUpkeep::CutSome() {
    if (cut == 0) {
        return;
    }
    Transaction transaction(database);
    long long rows = 0;
    bool isAtEnd = false;
    for (long long i = 0; i < VariablesOfStep && rows < RowsOfStep && !isAtEnd; ++i) {
        isAtEnd = !nextVariable.Bind(1, cutVariable).Next();
        if (!isAtEnd) {
            long long const variable = nextVariable.Number(0);
            long long const block = nextVariable.Number(1);
            nextVariable.Reset();
            long long const removed =
                CutVariable(numbers, variable, block) + CutVariable(texts, variable, block);
            rows += removed;
            // Of one with many rows the rest follows in the next step.
            cutVariable = removed < RowsOfStep ? variable : cutVariable;
        }
    }
    if (isAtEnd && CutOthers() < RowsOfStep) {
        done = cut;
        cut = 0;
    }
    transaction.Commit();
}

// The value that holds at the cut stays, whenever it began.
long long RecordUpkeep::CutVariable(Cutting& table, long long variable, long long block) {
    table.last.Bind(1, variable).Bind(2, cut).Next();
    bool const isEmpty = table.last.IsNull(0);
    long long bound = table.last.Number(0);
    table.last.Reset();
    if (isEmpty) {
        return 0;
    }
    bool const isKept = holds.Bind(1, block).Bind(2, bound).Bind(3, cut).Next();
    holds.Reset();
    table.remove.Bind(1, variable).Bind(2, isKept ? bound : bound + 1).Bind(3, RowsOfStep).Run();
    return database.Changes();
}

long long RecordUpkeep::CutOthers() {
    long long most = 0;
    for (char const* const statement :
         {"DELETE FROM event WHERE id IN (SELECT id FROM event WHERE time < ?1 ORDER BY time LIMIT ?2)",
          "DELETE FROM polled WHERE id IN (SELECT id FROM polled WHERE until < ?1 LIMIT ?2)",
          "DELETE FROM run WHERE id IN (SELECT id FROM run WHERE seen < ?1 LIMIT ?2)",
          "DELETE FROM period WHERE ?2 > 0 AND EXISTS (SELECT 1 FROM period AS later WHERE later.variable = "
          "period.variable AND later.since > period.since AND later.since <= ?1)"}) {
        Statement(database, statement).Bind(1, cut).Bind(2, RowsOfStep).Run();
        most = std::max(most, database.Changes());
    }
    return most;
}

// Free pages are used again; only many of them are given back.
void RecordUpkeep::GiveBack() {
    long long const free = database.Number("PRAGMA freelist_count");
    if (free > database.Number("PRAGMA page_count") / 8 + PagesOfStep) {
        database.Run("PRAGMA incremental_vacuum(" + std::to_string(PagesOfStep) + ")");
    }
}

}  // namespace workbench
