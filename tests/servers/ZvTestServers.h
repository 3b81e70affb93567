// Throw-away database servers for tests: each lives in a temporary directory of its own, listens
// only on a Unix socket there (or is a database file opened in process), and is stopped and removed
// at the end. Every test that needs a server gets it from SharedServer, so one test process starts
// each kind at most once.
#pragma once

#include <QSqlDatabase>
#include <QString>

#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <typeindex>

namespace zv::test {

// Raised instead of starting a server that ZEVRIN_SKIP_SERVERS names; tests turn it into a skip
// with this message. Any other failure to start is a std::runtime_error and fails the test.
class TZvServerOptedOut : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class TZvTestServer {
public:
    virtual ~TZvTestServer();
    TZvTestServer(const TZvTestServer&) = delete;
    TZvTestServer& operator=(const TZvTestServer&) = delete;

    // The server's name in messages and in ZEVRIN_SKIP_SERVERS ("sqlite", "postgresql", ...).
    virtual std::string GetName() const = 0;
    // Opens a connection to the server's test database under ConnectionName (replacing a
    // connection of that name). Throws, with the driver's message, when the Qt driver is missing
    // or the connection fails.
    virtual QSqlDatabase Connect(const QString& ConnectionName) const = 0;

    const std::filesystem::path& GetDirectory() const { return Directory; }

protected:
    // Makes the temporary directory "zevrin-<Prefix>-XXXXXX"; throws when it cannot.
    explicit TZvTestServer(const std::string& Prefix);
    // Removes the temporary directory (the derived destructor stops the server first).
    void RemoveDirectory();
    // Opens Connection or throws with the driver's message.
    static void Open(QSqlDatabase& Connection, const std::string& What);
    // A connection of the named Qt driver under ConnectionName, replacing one of that name.
    static QSqlDatabase AddConnection(const QString& Driver, const QString& ConnectionName);

    std::filesystem::path Directory;
};

// A fresh PostgreSQL cluster (initdb, pg_ctl) on a non-default port. PostgreSQL refuses to run as
// root, so as root the server runs as the "postgres" user.
class TZvTestPostgres : public TZvTestServer {
public:
    // Creates and starts the cluster. Throws std::runtime_error, with the reason and the server's
    // log, when the server binaries are missing or the server does not start: the install step
    // provides them, so their absence is a failure, not a reason to skip.
    TZvTestPostgres();
    ~TZvTestPostgres() override;

    static constexpr const char* kName = "postgresql";
    std::string GetName() const override { return kName; }
    // A connection as the superuser "postgres" to the database "postgres".
    QSqlDatabase Connect(const QString& ConnectionName) const override;
    // The same to another database of the cluster.
    QSqlDatabase Connect(const QString& ConnectionName, const QString& Database) const;

    int GetPort() const { return Port; }

private:
    void Stop();

    std::filesystem::path BinDirectory;
    int Port = 0;
    bool Running = false;
};

// A fresh MariaDB instance (mariadb-install-db, then mariadbd with networking off) on a socket in
// its directory, with an empty database "zevrin" (utf8mb4) for the tests.
class TZvTestMariaDB : public TZvTestServer {
public:
    TZvTestMariaDB();
    ~TZvTestMariaDB() override;

    static constexpr const char* kName = "mariadb";
    std::string GetName() const override { return kName; }
    QSqlDatabase Connect(const QString& ConnectionName) const override;

private:
    QSqlDatabase ConnectTo(const QString& ConnectionName, const QString& Database) const;
    void Stop();

    int ServerProcess = 0;
};

// A new Firebird database file (UTF8, SQL dialect 3) opened directly by the client library's
// embedded engine: no server process runs. The engine's lock files go to the temporary directory.
class TZvTestFirebird : public TZvTestServer {
public:
    TZvTestFirebird();
    ~TZvTestFirebird() override;

    static constexpr const char* kName = "firebird";
    std::string GetName() const override { return kName; }
    QSqlDatabase Connect(const QString& ConnectionName) const override;
};

// A new SQLite database file.
class TZvTestSQLite : public TZvTestServer {
public:
    TZvTestSQLite();
    ~TZvTestSQLite() override;

    static constexpr const char* kName = "sqlite";
    std::string GetName() const override { return kName; }
    QSqlDatabase Connect(const QString& ConnectionName) const override;
};

// Whether ZEVRIN_SKIP_SERVERS (a comma-separated list of server names, or "all") opts out of the
// named server, for a machine that cannot run it.
bool IsServerOptedOut(const std::string& Name);

// The one server of kind TServer in this process, started on first use. A failed start is
// remembered and reported again to every later caller; an opted-out server raises
// TZvServerOptedOut.
std::unique_ptr<TZvTestServer>&
SharedServerSlot(std::type_index Kind, const std::string& Name,
                 const std::function<std::unique_ptr<TZvTestServer>()>& Start);

template <class TServer>
TServer& SharedServer() {
    auto& Slot =
        SharedServerSlot(typeid(TServer), TServer::kName, [] { return std::make_unique<TServer>(); });
    return static_cast<TServer&>(*Slot);
}

// Stops every shared server, newest first (the test mains call this at the end).
void StopSharedServers();

// Runs one SQL statement; throws with the server's message and the statement when it fails.
void ExecuteSql(QSqlDatabase& Database, const QString& Statement);

} // namespace zv::test
