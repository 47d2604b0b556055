#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace workbench {

// A mistake that SQLite reports, with its result code and its own words.
class DatabaseError : public std::runtime_error {
public:
    DatabaseError(int resultCode, std::string const& words) : std::runtime_error(words), code(resultCode) {}

    // Without the details that an extended result code adds.
    int Code() const { return code & 0xFF; }
    int ExtendedCode() const { return code; }

private:
    int code;
};

// A connection to a database of SQLite, for one thread at a time. All calls throw DatabaseError.
class Database {
public:
    enum class Access {
        Create,  // read and write; a file that is missing is created
        Read,
        // Read a file that nobody changes, such as one on a medium that cannot be written: without locks and
        // without files beside it.
        ReadUnchanged
    };

    // Waits for other programs' locks up to that many milliseconds in each call.
    Database(std::string const& path, Access access, int lockTimeout);

    // Statements without results, separated by semicolons.
    void Run(std::string const& statements);
    // The first column of the first row; 0 and "" without one.
    long long Number(std::string const& query);
    std::string Text(std::string const& query);

    long long LastId() const;
    // The rows that the latest INSERT, UPDATE or DELETE has changed.
    long long Changes() const;

private:
    friend class Statement;

    struct Close {
        void operator()(sqlite3* database) const;
    };

    std::unique_ptr<sqlite3, Close> handle;
};

// A prepared statement, which its database must outlive. Parameters count from 1, columns from 0.
class Statement {
public:
    Statement(Database& database, std::string_view text);

    Statement& Bind(int parameter, long long value);
    Statement& Bind(int parameter, double value);  // NaN becomes null
    Statement& Bind(int parameter, std::string_view text);
    Statement& BindNull(int parameter);

    // Goes to the next row; false, and ready for the next use, after the last one.
    bool Next();
    // For a statement without rows: runs it and makes it ready for the next use.
    void Run();
    // Leaves the rest of the rows.
    void Reset();

    bool IsNull(int column) const;
    bool IsText(int column) const;
    long long Number(int column) const;
    double Real(int column) const;  // NaN of null
    std::string Text(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };

    void Check(int result) const;

    sqlite3* database;
    std::unique_ptr<sqlite3_stmt, Finalize> handle;
};

// Undoes what was done since it began, unless Commit has been called.
class Transaction {
public:
    // Takes the lock for writing at once.
    explicit Transaction(Database& transactionDatabase);
    Transaction(Transaction const&) = delete;
    Transaction& operator=(Transaction const&) = delete;
    ~Transaction();

    void Commit();

private:
    Database& database;
    bool isDone = false;
};

}  // namespace workbench
