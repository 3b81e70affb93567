// Starts the servers' own programs through posix_spawn (no shell), keeping their output in a log
// file in the server's directory for error reports. Connections go through the Qt SQL drivers, so
// that every test reads rows the same way whatever the server.
#include "ZvTestServers.h"

#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <pwd.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace zv::test {
namespace {

namespace fs = std::filesystem;

std::string ReadFile(const fs::path& Path) {
    std::ifstream In(Path);
    std::stringstream Text;
    Text << In.rdbuf();
    return Text.str();
}

bool IsRoot() {
    return geteuid() == 0;
}

// Starts Arguments with standard input from /dev/null and both outputs appended to Log. Returns
// the child's id, or -1 when it could not be started.
pid_t Spawn(std::vector<std::string> Arguments, const fs::path& Log) {
    std::vector<char*> Argv;
    for (std::string& Argument : Arguments) {
        Argv.push_back(Argument.data());
    }
    Argv.push_back(nullptr);
    posix_spawn_file_actions_t Actions;
    posix_spawn_file_actions_init(&Actions);
    posix_spawn_file_actions_addopen(&Actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&Actions, STDOUT_FILENO, Log.c_str(), O_WRONLY | O_CREAT | O_APPEND,
                                     0644);
    posix_spawn_file_actions_adddup2(&Actions, STDOUT_FILENO, STDERR_FILENO);
    pid_t Child = 0;
    const int Spawned = posix_spawnp(&Child, Argv[0], &Actions, nullptr, Argv.data(), environ);
    posix_spawn_file_actions_destroy(&Actions);
    return Spawned == 0 ? Child : -1;
}

// Waits for Child; its exit status, or -1 when it did not exit normally.
int Wait(pid_t Child) {
    int Status = 0;
    while (waitpid(Child, &Status, 0) < 0) {
        if (errno != EINTR) {
            return -1;
        }
    }
    return WIFEXITED(Status) ? WEXITSTATUS(Status) : -1;
}

// Runs Arguments to the end; the exit status, or -1 when it could not be started.
int Run(const std::vector<std::string>& Arguments, const fs::path& Log) {
    const pid_t Child = Spawn(Arguments, Log);
    return Child < 0 ? -1 : Wait(Child);
}

// Arguments run as User when the tests run as root (servers that refuse root).
std::vector<std::string> AsUser(const std::string& User, std::vector<std::string> Arguments) {
    if (IsRoot()) {
        Arguments.insert(Arguments.begin(), {"runuser", "-u", User, "--"});
    }
    return Arguments;
}

// The first of Candidates that exists, else the program of that name on the PATH.
std::optional<fs::path> FindProgram(const std::string& Name, const std::vector<fs::path>& Candidates = {}) {
    for (const fs::path& Dir : Candidates) {
        if (fs::exists(Dir / Name)) {
            return Dir / Name;
        }
    }
    if (const char* Path = std::getenv("PATH")) {
        std::stringstream Parts(Path);
        std::string Dir;
        while (std::getline(Parts, Dir, ':')) {
            if (!Dir.empty() && fs::exists(fs::path(Dir) / Name)) {
                return fs::path(Dir) / Name;
            }
        }
    }
    return std::nullopt;
}

fs::path RequireProgram(const std::string& Name, const std::string& Package,
                        const std::vector<fs::path>& Candidates = {}) {
    if (std::optional<fs::path> Found = FindProgram(Name, Candidates)) {
        return *Found;
    }
    throw std::runtime_error(Name + " not found (Debian package " + Package +
                             "); install it with scripts/install-deps.sh");
}

// The directory holding initdb and pg_ctl: $ZEVRIN_PG_BINDIR, else the newest Debian install
// under /usr/lib/postgresql, else the directory of pg_ctl on the PATH.
std::optional<fs::path> FindPostgresBinDirectory() {
    const auto HasTools = [](const fs::path& Dir) {
        return fs::exists(Dir / "initdb") && fs::exists(Dir / "pg_ctl");
    };
    if (const char* Env = std::getenv("ZEVRIN_PG_BINDIR"); Env && *Env) {
        return HasTools(Env) ? std::optional<fs::path>(Env) : std::nullopt;
    }
    std::vector<fs::path> Found;
    std::error_code Error;
    for (const auto& Entry : fs::directory_iterator("/usr/lib/postgresql", Error)) {
        if (HasTools(Entry.path() / "bin")) {
            Found.push_back(Entry.path() / "bin");
        }
    }
    if (!Found.empty()) {
        // Version directories are numbers; the longest, then greatest, name is the newest.
        return *std::max_element(Found.begin(), Found.end(), [](const fs::path& A, const fs::path& B) {
            const std::string Sa = A.parent_path().filename(), Sb = B.parent_path().filename();
            return Sa.size() != Sb.size() ? Sa.size() < Sb.size() : Sa < Sb;
        });
    }
    if (std::optional<fs::path> PgCtl = FindProgram("pg_ctl"); PgCtl && HasTools(PgCtl->parent_path())) {
        return PgCtl->parent_path();
    }
    return std::nullopt;
}

// A directory that must belong to User, the one the server runs as, when the tests run as root.
void HandOver(const fs::path& Path, const std::string& User) {
    if (!IsRoot()) {
        return;
    }
    const passwd* Entry = getpwnam(User.c_str());
    if (!Entry) {
        throw std::runtime_error("the tests run as root but there is no \"" + User +
                                 "\" user to run the server as");
    }
    if (chown(Path.c_str(), Entry->pw_uid, Entry->pw_gid) != 0) {
        throw std::runtime_error("cannot hand " + Path.string() + " to the " + User + " user");
    }
}

// A port of its own per process keeps a server's shared-memory key apart from any other.
int ProcessPort() {
    return 55000 + static_cast<int>(getpid() % 2000);
}

struct TSharedEntry {
    std::unique_ptr<TZvTestServer> Server;
    std::string Failure;
};

struct TSharedState {
    std::map<std::type_index, TSharedEntry> Entries;
    std::vector<std::type_index> StartOrder;
};

TSharedState& Shared() {
    static TSharedState State;
    return State;
}

} // namespace

// --- base ----------------------------------------------------------------------------------------

TZvTestServer::TZvTestServer(const std::string& Prefix) {
    std::string Template = (fs::temp_directory_path() / ("zevrin-" + Prefix + "-XXXXXX")).string();
    if (!mkdtemp(Template.data())) {
        throw std::runtime_error("cannot create a temporary directory for the " + Prefix + " server");
    }
    Directory = Template;
    fs::permissions(Directory, fs::perms::owner_all);
}

TZvTestServer::~TZvTestServer() {
    RemoveDirectory();
}

void TZvTestServer::RemoveDirectory() {
    if (!Directory.empty()) {
        std::error_code Ignored;
        fs::remove_all(Directory, Ignored);
        Directory.clear();
    }
}

QSqlDatabase TZvTestServer::AddConnection(const QString& Driver, const QString& ConnectionName) {
    if (!QSqlDatabase::isDriverAvailable(Driver)) {
        throw std::runtime_error("the Qt SQL driver " + Driver.toStdString() +
                                 " is not installed (scripts/install-deps.sh installs it)");
    }
    if (QSqlDatabase::contains(ConnectionName)) {
        QSqlDatabase::removeDatabase(ConnectionName);
    }
    return QSqlDatabase::addDatabase(Driver, ConnectionName);
}

void TZvTestServer::Open(QSqlDatabase& Connection, const std::string& What) {
    if (!Connection.open()) {
        throw std::runtime_error("cannot connect to the test " + What + ": " +
                                 Connection.lastError().text().toStdString());
    }
}

// --- PostgreSQL ----------------------------------------------------------------------------------

TZvTestPostgres::TZvTestPostgres() : TZvTestServer("pg") {
    const std::optional<fs::path> Bin = FindPostgresBinDirectory();
    if (!Bin) {
        RemoveDirectory();
        throw std::runtime_error("PostgreSQL server binaries (initdb, pg_ctl) not found under "
                                 "/usr/lib/postgresql/*/bin, $ZEVRIN_PG_BINDIR or the PATH; "
                                 "install them with scripts/install-deps.sh");
    }
    BinDirectory = *Bin;
    HandOver(Directory, "postgres");
    Port = ProcessPort();

    const fs::path Log = Directory / "server.log";
    const fs::path Data = Directory / "data";
    const auto Fail = [&](const std::string& What) {
        const std::string Output = ReadFile(Log);
        Stop();
        throw std::runtime_error(What + "\n" + Output);
    };
    if (Run(AsUser("postgres", {(BinDirectory / "initdb").string(), "-D", Data.string(), "-U", "postgres",
                                "-A", "trust", "-E", "UTF8", "--locale=C", "--no-sync"}),
            Log) != 0) {
        Fail("initdb failed");
    }
    const std::string Options = "-c listen_addresses='' -c unix_socket_directories=" + Directory.string() +
                                " -c port=" + std::to_string(Port) +
                                " -c fsync=off -c synchronous_commit=off -c full_page_writes=off";
    if (Run(AsUser("postgres",
                   {(BinDirectory / "pg_ctl").string(), "-D", Data.string(), "-l",
                    (Directory / "postgres.log").string(), "-o", Options, "-w", "-t", "60", "start"}),
            Log) != 0) {
        Running = true; // pg_ctl may have started it before giving up waiting
        Fail("pg_ctl start failed:\n" + ReadFile(Directory / "postgres.log"));
    }
    Running = true;
}

TZvTestPostgres::~TZvTestPostgres() {
    Stop();
}

void TZvTestPostgres::Stop() {
    if (Running) {
        Run(AsUser("postgres", {(BinDirectory / "pg_ctl").string(), "-D", (Directory / "data").string(), "-m",
                                "immediate", "-w", "stop"}),
            Directory / "server.log");
        Running = false;
    }
    RemoveDirectory();
}

QSqlDatabase TZvTestPostgres::Connect(const QString& ConnectionName) const {
    return Connect(ConnectionName, QStringLiteral("postgres"));
}

QSqlDatabase TZvTestPostgres::Connect(const QString& ConnectionName, const QString& Database) const {
    QSqlDatabase Connection = AddConnection(QStringLiteral("QPSQL"), ConnectionName);
    Connection.setHostName(QString::fromStdString(Directory.string()));
    Connection.setPort(Port);
    Connection.setUserName(QStringLiteral("postgres"));
    Connection.setDatabaseName(Database);
    Open(Connection, "PostgreSQL server");
    return Connection;
}

// --- MariaDB -------------------------------------------------------------------------------------

TZvTestMariaDB::TZvTestMariaDB() : TZvTestServer("mariadb") {
    const fs::path InstallDb = RequireProgram("mariadb-install-db", "mariadb-server");
    const fs::path Server = RequireProgram("mariadbd", "mariadb-server", {"/usr/sbin"});
    const fs::path Log = Directory / "server.log";
    const fs::path Data = Directory / "data";
    const fs::path Socket = Directory / "mysqld.sock";
    const auto Fail = [&](const std::string& What) {
        const std::string Output = ReadFile(Log);
        Stop();
        throw std::runtime_error(What + "\n" + Output);
    };
    // As root the server must be told to stay root; the data directory then belongs to root too.
    // "normal" authentication lets any operating-system user log in as the database's root.
    std::vector<std::string> Common = {"--no-defaults", "--datadir=" + Data.string()};
    if (IsRoot()) {
        Common.push_back("--user=root");
    }
    std::vector<std::string> Install = {InstallDb.string()};
    Install.insert(Install.end(), Common.begin(), Common.end());
    Install.insert(Install.end(), {"--auth-root-authentication-method=normal", "--skip-test-db"});
    if (Run(Install, Log) != 0) {
        Fail("mariadb-install-db failed");
    }
    std::vector<std::string> Start = {Server.string()};
    Start.insert(Start.end(), Common.begin(), Common.end());
    Start.insert(Start.end(),
                 {"--skip-networking", "--socket=" + Socket.string(),
                  "--pid-file=" + (Directory / "mysqld.pid").string(), "--character-set-server=utf8mb4",
                  "--collation-server=utf8mb4_bin", "--innodb-flush-log-at-trx-commit=0", "--skip-log-bin"});
    ServerProcess = Spawn(Start, Log);
    if (ServerProcess < 0) {
        ServerProcess = 0;
        Fail("mariadbd could not be started");
    }
    // The server accepts connections once its socket exists; it gives up within a minute.
    const auto Deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!fs::exists(Socket)) {
        if (waitpid(ServerProcess, nullptr, WNOHANG) == ServerProcess) {
            ServerProcess = 0;
            Fail("mariadbd stopped while starting");
        }
        if (std::chrono::steady_clock::now() > Deadline) {
            Fail("mariadbd did not open its socket within 60 seconds");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    try {
        QSqlDatabase Admin = ConnectTo(QStringLiteral("zevrin-mariadb-admin"), QString());
        ExecuteSql(Admin, QStringLiteral("CREATE DATABASE zevrin CHARACTER SET utf8mb4 COLLATE utf8mb4_bin"));
        Admin.close();
    } catch (const std::exception& Error) {
        Fail(Error.what());
    }
    QSqlDatabase::removeDatabase(QStringLiteral("zevrin-mariadb-admin"));
}

TZvTestMariaDB::~TZvTestMariaDB() {
    Stop();
}

void TZvTestMariaDB::Stop() {
    if (ServerProcess > 0) {
        kill(ServerProcess, SIGTERM);
        Wait(ServerProcess);
        ServerProcess = 0;
    }
    RemoveDirectory();
}

QSqlDatabase TZvTestMariaDB::Connect(const QString& ConnectionName) const {
    return ConnectTo(ConnectionName, QStringLiteral("zevrin"));
}

QSqlDatabase TZvTestMariaDB::ConnectTo(const QString& ConnectionName, const QString& Database) const {
    QSqlDatabase Connection = AddConnection(QStringLiteral("QMYSQL"), ConnectionName);
    Connection.setConnectOptions(QStringLiteral("UNIX_SOCKET=") +
                                 QString::fromStdString((Directory / "mysqld.sock").string()));
    Connection.setUserName(QStringLiteral("root"));
    Connection.setDatabaseName(Database);
    Open(Connection, "MariaDB server");
    return Connection;
}

// --- Firebird ------------------------------------------------------------------------------------

TZvTestFirebird::TZvTestFirebird() : TZvTestServer("firebird") {
    const fs::path Isql = RequireProgram("isql-fb", "firebird3.0-utils");
    // The embedded engine keeps its lock files where FIREBIRD_LOCK says; set before the client
    // library first opens a database in this process, and inherited by isql.
    setenv("FIREBIRD_LOCK", (Directory / "lock").c_str(), 1);
    const fs::path Script = Directory / "create.sql";
    std::ofstream(Script) << "SET SQL DIALECT 3;\nCREATE DATABASE '" << (Directory / "test.fdb").string()
                          << "' USER 'SYSDBA' DEFAULT CHARACTER SET UTF8;\n";
    const fs::path Log = Directory / "isql.log";
    if (Run({Isql.string(), "-q", "-b", "-i", Script.string()}, Log) != 0 ||
        !fs::exists(Directory / "test.fdb")) {
        const std::string Output = ReadFile(Log);
        RemoveDirectory();
        throw std::runtime_error("isql-fb could not create the Firebird database (is firebird3.0-server "
                                 "installed, which brings the embedded engine?)\n" +
                                 Output);
    }
}

TZvTestFirebird::~TZvTestFirebird() {
    // Connections hold the file open; they are closed by the caller before the shared servers stop.
    RemoveDirectory();
}

QSqlDatabase TZvTestFirebird::Connect(const QString& ConnectionName) const {
    QSqlDatabase Connection = AddConnection(QStringLiteral("QIBASE"), ConnectionName);
    Connection.setDatabaseName(QString::fromStdString((Directory / "test.fdb").string()));
    Connection.setUserName(QStringLiteral("SYSDBA"));
    Connection.setConnectOptions(QStringLiteral("ISC_DPB_LC_CTYPE=UTF8"));
    Open(Connection, "Firebird database");
    return Connection;
}

// --- SQLite --------------------------------------------------------------------------------------

TZvTestSQLite::TZvTestSQLite() : TZvTestServer("sqlite") {}

TZvTestSQLite::~TZvTestSQLite() = default;

QSqlDatabase TZvTestSQLite::Connect(const QString& ConnectionName) const {
    QSqlDatabase Connection = AddConnection(QStringLiteral("QSQLITE"), ConnectionName);
    Connection.setDatabaseName(QString::fromStdString((Directory / "test.sqlite").string()));
    Open(Connection, "SQLite database");
    return Connection;
}

// --- sharing -------------------------------------------------------------------------------------

bool IsServerOptedOut(const std::string& Name) {
    const char* Env = std::getenv("ZEVRIN_SKIP_SERVERS");
    if (!Env) {
        return false;
    }
    std::stringstream Parts(Env);
    std::string Part;
    while (std::getline(Parts, Part, ',')) {
        if (Part == Name || Part == "all") {
            return true;
        }
    }
    return false;
}

std::unique_ptr<TZvTestServer>&
SharedServerSlot(std::type_index Kind, const std::string& Name,
                 const std::function<std::unique_ptr<TZvTestServer>()>& Start) {
    if (IsServerOptedOut(Name)) {
        throw TZvServerOptedOut("the " + Name + " server is opted out by ZEVRIN_SKIP_SERVERS");
    }
    TSharedState& State = Shared();
    TSharedEntry& Entry = State.Entries[Kind];
    if (!Entry.Server) {
        if (!Entry.Failure.empty()) {
            throw std::runtime_error(Entry.Failure);
        }
        try {
            Entry.Server = Start();
            State.StartOrder.push_back(Kind);
        } catch (const std::exception& Error) {
            Entry.Failure = "the " + Name + " test server did not start: " + Error.what();
            throw std::runtime_error(Entry.Failure);
        }
    }
    return Entry.Server;
}

void StopSharedServers() {
    TSharedState& State = Shared();
    for (auto Kind = State.StartOrder.rbegin(); Kind != State.StartOrder.rend(); ++Kind) {
        State.Entries[*Kind].Server.reset();
    }
    State.StartOrder.clear();
}

void ExecuteSql(QSqlDatabase& Database, const QString& Statement) {
    QSqlQuery Query(Database);
    if (!Query.exec(Statement)) {
        throw std::runtime_error("SQL failed: " + Query.lastError().text().toStdString() +
                                 "\nin: " + Statement.toStdString());
    }
}

} // namespace zv::test
