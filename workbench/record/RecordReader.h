#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Database.h"
#include "QualityText.h"

namespace workbench {

// A variable of a recording, as it is described now. Texts are empty where the project had none.
struct RecordedVariable {
    long long id = 0;
    long long blockId = 0;
    std::string block;
    std::string name;
    std::string object;
    std::string property;
    std::string type;
    std::string unit;
    std::vector<std::string> states;
    std::string description;
};

// The value of a variable from a time on, until the next row. Times are those of recordings (RecordTime.h).
struct RecordRow {
    long long time = 0;
    bool isText = false;
    double number = 0;  // NaN without a number
    std::string text;
    QualityKind quality = QualityKind::Bad;
};

struct RecordedEvent {
    long long id = 0;
    long long time = 0;
    std::string event;
    std::string block;     // empty for one of the whole run
    std::string variable;  // empty for one of a whole block
    std::string text;
};

// Reads a recording, also while a run records into it. For one thread at a time. Throws RecordMistake when it
// is opened, and DatabaseError.
class RecordReader {
public:
    explicit RecordReader(std::string const& path);

    // All calls that follow read the state of this moment, apart from what retention removes. For many
    // variables: without it each call looks through all rows that are not collected yet.
    void Hold();

    // By the names of the blocks, then in the order in which they came.
    std::vector<RecordedVariable> Variables();
    // Only its ids and names; an id of 0 if it is not recorded.
    RecordedVariable Find(std::string const& block, std::string const& name);

    // The rows of a variable from `from` to `to`, both included, oldest first, while the function returns
    // true. The value that was in force at `from` is the first one, with the time `from`. Where the recording
    // ends, and at `to`, a row repeats the value, with the time until which it is known to hold; before a
    // recording goes on, a row without a value and with bad quality follows it.
    using TakeRow = std::function<bool(RecordRow const&)>;
    void Read(RecordedVariable const& variable, long long from, long long to, TakeRow const& take);

    // The times of the first and of the last change of a variable; 0 without one.
    long long Oldest(RecordedVariable const& variable);
    long long Newest(RecordedVariable const& variable);

    // The events from `from` to `to`, oldest first, while the function returns true.
    void ReadEvents(long long from, long long to, std::function<bool(RecordedEvent const&)> const& take);

private:
    struct Span {
        long long since;
        long long until;
    };

    void HoldRecent(long long variable);
    std::vector<Span> SpansOf(long long block, long long from, long long to);
    bool ReadSpan(long long variable, Span const& span, long long from, long long to, bool isLast,
                  TakeRow const& take);

    Database database;
    bool isHeld = false;
    Statement find;
    Statement holdRecent;
    Statement spans;
    Statement inForce;
    Statement rows;
    Statement oldest;
    Statement newest;
};

}  // namespace workbench
