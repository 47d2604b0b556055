#include "RecordSchema.h"

#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>

#include "Printable.h"

namespace workbench {

namespace {

constexpr int LockTimeout = 1000;         // milliseconds
constexpr int ReadersLockTimeout = 5000;  // a reader only waits while a file is created or recovered

// Changes go to `recent` in order of time, where a transaction of many variables writes few pages, and from
// there to `number`, where the values of a variable are together.
constexpr char Tables[] = R"(
CREATE TABLE run (
  id INTEGER PRIMARY KEY, started INTEGER NOT NULL, seen INTEGER NOT NULL, ended INTEGER,
  version TEXT NOT NULL, project TEXT NOT NULL) STRICT;
CREATE TABLE block (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE) STRICT;
CREATE TABLE polled (
  id INTEGER PRIMARY KEY, block INTEGER NOT NULL REFERENCES block, since INTEGER NOT NULL,
  until INTEGER NOT NULL) STRICT;
CREATE INDEX polled_by_time ON polled (block, since);
CREATE TABLE variable (
  id INTEGER PRIMARY KEY, block INTEGER NOT NULL REFERENCES block, name TEXT NOT NULL,
  UNIQUE (block, name)) STRICT;
CREATE TABLE period (
  variable INTEGER NOT NULL REFERENCES variable, since INTEGER NOT NULL, object TEXT NOT NULL,
  property TEXT NOT NULL, type TEXT NOT NULL, unit TEXT, states TEXT, description TEXT,
  PRIMARY KEY (variable, since)) STRICT, WITHOUT ROWID;
CREATE TABLE number (
  variable INTEGER NOT NULL, time INTEGER NOT NULL, value REAL, status INTEGER NOT NULL,
  PRIMARY KEY (variable, time)) STRICT, WITHOUT ROWID;
CREATE TABLE recent (
  id INTEGER PRIMARY KEY, variable INTEGER NOT NULL, time INTEGER NOT NULL, value REAL,
  status INTEGER NOT NULL) STRICT;
CREATE TABLE text (
  variable INTEGER NOT NULL, time INTEGER NOT NULL, value TEXT, status INTEGER NOT NULL,
  PRIMARY KEY (variable, time)) STRICT;
CREATE TABLE event (
  id INTEGER PRIMARY KEY, time INTEGER NOT NULL, event TEXT NOT NULL, block TEXT, variable TEXT,
  text TEXT NOT NULL) STRICT;
CREATE INDEX event_by_time ON event (time);
)";

// With names and times for people. While values are being collected, a row may be in both tables of numbers.
// Each table has a query of its own, so that a condition on the variable finds its rows without the others.
std::string SamplesOf(std::string const& table, std::string const& condition = "") {
    return "SELECT block.name AS block, variable.name AS variable, s.time AS time, "
           "strftime('%Y-%m-%dT%H:%M:%fZ', s.time / 1000.0, 'unixepoch') AS utc, s.value AS value, "
           "CASE s.status >> 30 WHEN 0 THEN 'good' WHEN 1 THEN 'uncertain' ELSE 'bad' END AS quality "
           "FROM block JOIN variable ON variable.block = block.id JOIN " +
           table + " AS s ON s.variable = variable.id " + condition;
}

std::string SamplesView() {
    return "CREATE VIEW samples AS " + SamplesOf("number") + " UNION ALL " +
           SamplesOf("recent",
                     "WHERE NOT EXISTS (SELECT 1 FROM number AS n WHERE n.variable = s.variable AND n.time = "
                     "s.time)") +
           " UNION ALL " + SamplesOf("text");
}

std::string Begin(std::string const& path) {
    return tools::Printable(path) + ": ";
}

bool IsEmpty(Database& database) {
    return database.Number("SELECT count(*) FROM sqlite_master") == 0;
}

// What the header says comes first, so that no statement runs into foreign tables.
void CheckKind(Database& database, std::string const& path) {
    if (database.Number("PRAGMA application_id") != RecordApplication) {
        throw RecordMistake(Begin(path) +
                            "this is a database of another program, not a recording; nothing was changed; "
                            "name another file");
    }
    long long const version = database.Number("PRAGMA user_version");
    if (version != RecordVersion) {
        throw RecordMistake(Begin(path) + "the recording has version " + std::to_string(version) +
                            ", and this program knows version " + std::to_string(RecordVersion) +
                            "; use the program that wrote it, or another file");
    }
}

void CreateTables(Database& database) {
    Transaction transaction(database);
    if (IsEmpty(database)) {
        database.Run(Tables);
        database.Run(SamplesView());
        database.Run("PRAGMA application_id = " + std::to_string(RecordApplication) +
                     "; PRAGMA user_version = " + std::to_string(RecordVersion));
    }
    transaction.Commit();
}

}  // namespace

void CheckRecordFolder(std::string const& path) {
    std::filesystem::path const folder = std::filesystem::path(path).parent_path();
    char const* const name = folder.empty() ? "." : folder.c_str();
    if (access(name, F_OK) != 0) {
        throw RecordMistake(Begin(path) + "the folder " + tools::Quoted(name) + " does not exist; create it");
    }
    if (access(name, W_OK) != 0) {
        throw RecordMistake(Begin(path) + "the folder " + tools::Quoted(name) +
                            " cannot be written, where SQLite keeps files beside the recording; allow it, or "
                            "name a file elsewhere");
    }
}

namespace {

bool IsThere(std::string const& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

Database Opened(std::string const& path, Database::Access access) {
    Database database(path, access, ReadersLockTimeout);
    CheckKind(database, path);
    return database;
}

}  // namespace

Database OpenForRecording(std::string const& path) {
    Database database(path, Database::Access::Create, LockTimeout);
    if (IsEmpty(database) && database.Number("PRAGMA application_id") == 0) {
        // Only before there are tables.
        database.Run("PRAGMA auto_vacuum = INCREMENTAL");
        database.Run("PRAGMA journal_mode = WAL");
        CreateTables(database);
    }
    CheckKind(database, path);
    database.Run(
        "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; PRAGMA cache_size = -16000; "
        "PRAGMA journal_size_limit = 16777216");
    return database;
}

// Without files beside it, a recording can be read from a folder that cannot be written only as unchanged.
Database OpenForReading(std::string const& path) {
    std::error_code ignored;
    if (!IsThere(path)) {
        throw RecordMistake(Begin(path) + "the file does not exist");
    }
    if (std::filesystem::is_directory(path, ignored)) {
        throw RecordMistake(Begin(path) + "this is a folder; name a recording in it");
    }
    try {
        return Opened(path, Database::Access::Read);
    } catch (DatabaseError const& mistake) {
        bool const isCannotOpen = mistake.Code() == SQLITE_CANTOPEN || mistake.Code() == SQLITE_READONLY;
        if (!isCannotOpen || IsThere(path + "-wal") || access(path.c_str(), R_OK) != 0) {
            throw;
        }
    }
    return Opened(path, Database::Access::ReadUnchanged);
}

std::string TroubleOf(std::string const& path, DatabaseError const& mistake) {
    switch (mistake.Code()) {
        case SQLITE_FULL:
            return Begin(path) + "the disk is full: free some space, or allow less with --record-most";
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return Begin(path) + "another program holds a lock on the file: end its transaction";
        case SQLITE_READONLY:
            return Begin(path) + "the file or its folder cannot be written: allow it";
        case SQLITE_CANTOPEN:
            return Begin(path) +
                   "the file cannot be opened: its folder must exist and allow reading and writing";
        case SQLITE_NOTADB:
            return Begin(path) + "this is not a database of SQLite; nothing was changed; name another file";
        case SQLITE_CORRUPT:
            return Begin(path) + "the file is damaged (" + mistake.what() +
                   "): move it away, and a new one is begun; \"sqlite3 FILE .recover\" saves what can be "
                   "read";
        case SQLITE_IOERR:
            return Begin(path) + "the disk fails (" + mistake.what() + "): check the disk and its connection";
        default:
            return Begin(path) + mistake.what();
    }
}

}  // namespace workbench
