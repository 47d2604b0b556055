#include "Database.h"

#include <sqlite3.h>

#include <limits>

namespace workbench {

namespace {

int FlagsOf(Database::Access access) {
    int const mode = access == Database::Access::Create ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE
                                                        : SQLITE_OPEN_READONLY;
    return mode | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_URI | SQLITE_OPEN_EXRESCODE;
}

// Of a URI only "%", "?" and "#" have a meaning that a path can collide with.
std::string UriOf(std::string const& path, Database::Access access) {
    // An absolute path follows an empty host, so that it may begin with two slashes.
    std::string uri = path.compare(0, 1, "/") == 0 ? "file://" : "file:";
    for (char const octet : path) {
        switch (octet) {
            case '%':
                uri += "%25";
                break;
            case '?':
                uri += "%3f";
                break;
            case '#':
                uri += "%23";
                break;
            default:
                uri += octet;
        }
    }
    return uri + (access == Database::Access::ReadUnchanged ? "?immutable=1" : "");
}

}  // namespace

void Database::Close::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

Database::Database(std::string const& path, Access access, int lockTimeout) {
    sqlite3* opened = nullptr;
    int const result = sqlite3_open_v2(UriOf(path, access).c_str(), &opened, FlagsOf(access), nullptr);
    handle.reset(opened);
    if (result != SQLITE_OK) {
        throw DatabaseError(result, sqlite3_errstr(result));
    }
    sqlite3_busy_timeout(opened, lockTimeout);
}

void Database::Run(std::string const& statements) {
    int const result = sqlite3_exec(handle.get(), statements.c_str(), nullptr, nullptr, nullptr);
    if (result != SQLITE_OK) {
        throw DatabaseError(result, sqlite3_errmsg(handle.get()));
    }
}

long long Database::Number(std::string const& query) {
    Statement statement(*this, query);
    return statement.Next() ? statement.Number(0) : 0;
}

std::string Database::Text(std::string const& query) {
    Statement statement(*this, query);
    return statement.Next() ? statement.Text(0) : std::string();
}

long long Database::LastId() const {
    return sqlite3_last_insert_rowid(handle.get());
}

long long Database::Changes() const {
    return sqlite3_changes64(handle.get());
}

void Statement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

Statement::Statement(Database& statementDatabase, std::string_view text)
    : database(statementDatabase.handle.get()) {
    sqlite3_stmt* prepared = nullptr;
    int const result = sqlite3_prepare_v3(database, text.data(), static_cast<int>(text.size()),
                                          SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    handle.reset(prepared);
    Check(result);
}

void Statement::Check(int result) const {
    if (result != SQLITE_OK) {
        throw DatabaseError(result, sqlite3_errmsg(database));
    }
}

Statement& Statement::Bind(int parameter, long long value) {
    Check(sqlite3_bind_int64(handle.get(), parameter, value));
    return *this;
}

Statement& Statement::Bind(int parameter, double value) {
    Check(sqlite3_bind_double(handle.get(), parameter, value));
    return *this;
}

Statement& Statement::Bind(int parameter, std::string_view text) {
    Check(sqlite3_bind_text64(handle.get(), parameter, text.data() ? text.data() : "", text.size(),
                              SQLITE_TRANSIENT, SQLITE_UTF8));
    return *this;
}

Statement& Statement::BindNull(int parameter) {
    Check(sqlite3_bind_null(handle.get(), parameter));
    return *this;
}

bool Statement::Next() {
    int const result = sqlite3_step(handle.get());
    if (result == SQLITE_ROW) {
        return true;
    }
    DatabaseError const mistake(result, sqlite3_errmsg(database));
    sqlite3_reset(handle.get());
    if (result != SQLITE_DONE) {
        throw mistake;
    }
    return false;
}

void Statement::Run() {
    while (Next()) {
    }
}

void Statement::Reset() {
    sqlite3_reset(handle.get());
}

bool Statement::IsNull(int column) const {
    return sqlite3_column_type(handle.get(), column) == SQLITE_NULL;
}

bool Statement::IsText(int column) const {
    return sqlite3_column_type(handle.get(), column) == SQLITE_TEXT;
}

long long Statement::Number(int column) const {
    return sqlite3_column_int64(handle.get(), column);
}

double Statement::Real(int column) const {
    return IsNull(column) ? std::numeric_limits<double>::quiet_NaN()
                          : sqlite3_column_double(handle.get(), column);
}

std::string Statement::Text(int column) const {
    auto const* const text = reinterpret_cast<char const*>(sqlite3_column_text(handle.get(), column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(handle.get(), column)))
                : std::string();
}

Transaction::Transaction(Database& transactionDatabase) : database(transactionDatabase) {
    database.Run("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
    if (isDone) {
        return;
    }
    try {
        database.Run("ROLLBACK");
    } catch (DatabaseError const&) {
        // After some mistakes SQLite has undone it already.
    }
}

void Transaction::Commit() {
    database.Run("COMMIT");
    isDone = true;
}

}  // namespace workbench
