#include "RecordReader.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <limits>

#include "RecordSchema.h"

namespace workbench {

namespace {

// `recent` has no order that helps to find the rows of a variable, so that they are copied first. While
// values are being collected, a row may be in both tables.
constexpr char Copies[] =
    "PRAGMA temp_store = MEMORY; CREATE TEMP TABLE held (variable INTEGER NOT NULL, time INTEGER NOT NULL, "
    "value REAL, status INTEGER NOT NULL, PRIMARY KEY (variable, time)) WITHOUT ROWID";

constexpr char HoldAll[] =
    "CREATE TEMP TABLE held_polled AS SELECT * FROM polled; "
    "CREATE INDEX temp.held_by_time ON held_polled (block, since); "
    "INSERT OR REPLACE INTO held SELECT variable, time, value, status FROM recent ORDER BY id";

constexpr char Rows[] =
    "SELECT time, value, status FROM number WHERE variable = ?1 AND time > ?2 AND time <= ?3 UNION ALL "
    "SELECT time, value, status FROM held WHERE variable = ?1 AND time > ?2 AND time <= ?3 UNION ALL "
    "SELECT time, value, status FROM text WHERE variable = ?1 AND time > ?2 AND time <= ?3 ORDER BY time";

constexpr char InForce[] =
    "SELECT time, value, status FROM ("
    "SELECT * FROM (SELECT time, value, status FROM number WHERE variable = ?1 AND time BETWEEN ?2 AND ?3 "
    "ORDER BY time DESC LIMIT 1) UNION ALL "
    "SELECT * FROM (SELECT time, value, status FROM held WHERE variable = ?1 AND time BETWEEN ?2 AND ?3 "
    "ORDER BY time DESC LIMIT 1) UNION ALL "
    "SELECT * FROM (SELECT time, value, status FROM text WHERE variable = ?1 AND time BETWEEN ?2 AND ?3 "
    "ORDER BY time DESC LIMIT 1)) ORDER BY time DESC LIMIT 1";

std::string EdgeOf(char const* edge) {
    std::string const of = std::string("SELECT ") + edge + "(time) AS time FROM ";
    return std::string("SELECT ") + edge + "(time) FROM (" + of + "number WHERE variable = ?1 UNION ALL " +
           of + "held WHERE variable = ?1 UNION ALL " + of + "text WHERE variable = ?1)";
}

RecordRow RowOf(Statement const& statement) {
    RecordRow row;
    row.time = statement.Number(0);
    row.isText = statement.IsText(1);
    row.number = row.isText ? std::numeric_limits<double>::quiet_NaN() : statement.Real(1);
    row.text = row.isText ? statement.Text(1) : std::string();
    row.quality = KindOf(static_cast<OpcUa_StatusCode>(statement.Number(2)));
    return row;
}

std::vector<std::string> StatesOf(std::string const& json) {
    std::vector<std::string> states;
    rapidjson::Document document;
    document.Parse(json.c_str());
    if (!document.HasParseError() && document.IsArray()) {
        for (auto const& state : document.GetArray()) {
            states.emplace_back(state.IsString() ? state.GetString() : "");
        }
    }
    return states;
}

// Leaves the rest of the rows at the end of the scope, so that the file is not held.
struct ResetAtEnd {
    Statement& statement;
    ~ResetAtEnd() { statement.Reset(); }
};

std::string SpansFrom(char const* table) {
    return std::string("SELECT since, until FROM ") + table +
           " WHERE block = ?1 AND until >= ?2 AND since <= ?3 ORDER BY since, id";
}

Database OpenWithCopies(std::string const& path) {
    Database database = OpenForReading(path);
    database.Run(Copies);
    return database;
}

}  // namespace

RecordReader::RecordReader(std::string const& path)
    : database(OpenWithCopies(path)),
      find(database,
           "SELECT variable.id, block.id FROM block JOIN variable ON variable.block = block.id WHERE "
           "block.name = ? AND variable.name = ?"),
      holdRecent(database,
                 "INSERT OR REPLACE INTO held SELECT variable, time, value, status FROM recent WHERE "
                 "variable = ? ORDER BY id"),
      spans(database, SpansFrom("polled")),
      inForce(database, InForce),
      rows(database, Rows),
      oldest(database, EdgeOf("min")),
      newest(database, EdgeOf("max")) {}

void RecordReader::Hold() {
    if (!isHeld) {
        database.Run("BEGIN");
        database.Run("DELETE FROM held");
        database.Run(HoldAll);
        database.Run("COMMIT");
        spans = Statement(database, SpansFrom("held_polled"));
        isHeld = true;
    }
}

void RecordReader::HoldRecent(long long variable) {
    if (!isHeld) {
        database.Run("DELETE FROM held");
        holdRecent.Bind(1, variable).Run();
    }
}

std::vector<RecordedVariable> RecordReader::Variables() {
    Statement list(
        database,
        "SELECT variable.id, block.id, block.name, variable.name, object, property, type, unit, "
        "states, description FROM variable JOIN block ON block.id = variable.block LEFT JOIN period "
        "ON period.variable = variable.id AND since = (SELECT max(since) FROM period WHERE "
        "variable = variable.id) ORDER BY block.name, variable.id");
    std::vector<RecordedVariable> variables;
    while (list.Next()) {
        variables.push_back({list.Number(0), list.Number(1), list.Text(2), list.Text(3), list.Text(4),
                             list.Text(5), list.Text(6), list.Text(7), StatesOf(list.Text(8)), list.Text(9)});
    }
    return variables;
}

RecordedVariable RecordReader::Find(std::string const& block, std::string const& name) {
    ResetAtEnd const reset{find};
    RecordedVariable variable;
    if (find.Bind(1, block).Bind(2, name).Next()) {
        variable.id = find.Number(0);
        variable.blockId = find.Number(1);
    }
    variable.block = block;
    variable.name = name;
    return variable;
}

std::vector<RecordReader::Span> RecordReader::SpansOf(long long block, long long from, long long to) {
    std::vector<Span> found;
    spans.Bind(1, block).Bind(2, from).Bind(3, to);
    while (spans.Next()) {
        Span const span = {spans.Number(0), spans.Number(1)};
        // They overlap where a clock was set back: then they are one, so that each row comes once.
        if (!found.empty() && span.since <= found.back().until) {
            found.back().until = std::max(found.back().until, span.until);
        } else {
            found.push_back(span);
        }
    }
    return found;
}

bool RecordReader::ReadSpan(long long variable, Span const& span, long long from, long long to, bool isLast,
                            TakeRow const& take) {
    long long const begin = std::max(span.since, from);
    long long const end = std::min(span.until, to);
    RecordRow latest;
    bool hasRow = false;
    {
        ResetAtEnd const reset{inForce};
        if (inForce.Bind(1, variable).Bind(2, span.since).Bind(3, begin).Next()) {
            latest = RowOf(inForce);
            latest.time = begin;
            hasRow = true;
        }
    }
    if (hasRow && !take(latest)) {
        return false;
    }
    ResetAtEnd const reset{rows};
    rows.Bind(1, variable).Bind(2, begin).Bind(3, end);
    while (rows.Next()) {
        if (hasRow && rows.Number(0) == latest.time) {
            continue;
        }
        latest = RowOf(rows);
        hasRow = true;
        if (!take(latest)) {
            return false;
        }
    }
    if (hasRow && latest.time < end) {
        latest.time = end;
        if (!take(latest)) {
            return false;
        }
    }
    RecordRow gap;
    gap.time = end + 1;
    gap.number = std::numeric_limits<double>::quiet_NaN();
    return !hasRow || isLast || take(gap);
}

void RecordReader::Read(RecordedVariable const& variable, long long from, long long to, TakeRow const& take) {
    std::vector<Span> const found = SpansOf(variable.blockId, from, to);
    HoldRecent(variable.id);
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (!ReadSpan(variable.id, found[i], from, to, i + 1 == found.size(), take)) {
            return;
        }
    }
}

long long RecordReader::Oldest(RecordedVariable const& variable) {
    HoldRecent(variable.id);
    ResetAtEnd const reset{oldest};
    return oldest.Bind(1, variable.id).Next() ? oldest.Number(0) : 0;
}

long long RecordReader::Newest(RecordedVariable const& variable) {
    HoldRecent(variable.id);
    ResetAtEnd const reset{newest};
    return newest.Bind(1, variable.id).Next() ? newest.Number(0) : 0;
}

void RecordReader::ReadEvents(long long from, long long to,
                              std::function<bool(RecordedEvent const&)> const& take) {
    Statement list(database,
                   "SELECT id, time, event, block, variable, text FROM event WHERE time BETWEEN ? AND ? "
                   "ORDER BY time, id");
    list.Bind(1, from).Bind(2, to);
    while (list.Next() &&
           take({list.Number(0), list.Number(1), list.Text(2), list.Text(3), list.Text(4), list.Text(5)})) {
    }
}

}  // namespace workbench
