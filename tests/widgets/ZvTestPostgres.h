// A throw-away PostgreSQL server for tests: a fresh cluster in a temporary directory, listening
// only on a Unix socket in that directory on a non-default port, stopped and removed at the end.
// PostgreSQL refuses to run as root, so as root the server runs as the "postgres" user.
#pragma once

#include <QSqlDatabase>
#include <QString>

#include <filesystem>
#include <string>

namespace zv::test {

class TZvTestPostgres {
public:
    // Creates and starts the cluster. Throws std::runtime_error, with the reason and the server's
    // log, when the server binaries are missing or the server does not start: the install step
    // provides them, so their absence is a failure, not a reason to skip.
    TZvTestPostgres();
    ~TZvTestPostgres();
    TZvTestPostgres(const TZvTestPostgres&) = delete;
    TZvTestPostgres& operator=(const TZvTestPostgres&) = delete;

    // The one server of the test process, started on first use. A failed start is remembered and
    // reported again to every later caller.
    static TZvTestPostgres& Shared();
    // Stops the shared server if one was started (the test main calls this at the end).
    static void StopShared();

    const std::filesystem::path& GetDirectory() const { return Directory; }
    int GetPort() const { return Port; }

    // Opens a connection as the superuser "postgres" to Database over the socket, under
    // ConnectionName (replacing a connection of that name). Throws when the Qt PostgreSQL driver
    // is missing or the connection fails.
    QSqlDatabase Connect(const QString& ConnectionName,
                         const QString& Database = QStringLiteral("postgres")) const;
    // Runs several SQL statements separated by semicolons; throws with the server's message when
    // one fails.
    static void Execute(QSqlDatabase& Database, const QString& Script);

private:
    void Stop();

    std::filesystem::path BinDirectory;
    std::filesystem::path Directory;
    int Port = 0;
    bool Running = false;
};

} // namespace zv::test
