// Runs initdb and pg_ctl through posix_spawn (no shell), as the "postgres" user when the tests run
// as root, and keeps their output in a log file in the cluster directory for error reports.
#include "ZvTestPostgres.h"

#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
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

// The directory holding initdb and pg_ctl: $ZEVRIN_PG_BINDIR, else the newest Debian install
// under /usr/lib/postgresql, else the directory of pg_ctl on the PATH.
std::optional<fs::path> FindBinDirectory() {
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
    if (const char* Path = std::getenv("PATH")) {
        std::stringstream Parts(Path);
        std::string Dir;
        while (std::getline(Parts, Dir, ':')) {
            if (!Dir.empty() && HasTools(Dir)) {
                return fs::path(Dir);
            }
        }
    }
    return std::nullopt;
}

std::string ReadFile(const fs::path& Path) {
    std::ifstream In(Path);
    std::stringstream Text;
    Text << In.rdbuf();
    return Text.str();
}

// Runs Arguments (prefixed with runuser when the server must change user), appending its output to
// Log. Returns the exit status, or -1 when it could not be started.
int Run(std::vector<std::string> Arguments, const fs::path& Log) {
    if (geteuid() == 0) {
        Arguments.insert(Arguments.begin(), {"runuser", "-u", "postgres", "--"});
    }
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
    if (Spawned != 0) {
        return -1;
    }
    int Status = 0;
    while (waitpid(Child, &Status, 0) < 0) {
        if (errno != EINTR) {
            return -1;
        }
    }
    return WIFEXITED(Status) ? WEXITSTATUS(Status) : -1;
}

// The cluster directory must belong to the user the server runs as.
void HandOver(const fs::path& Path) {
    if (geteuid() != 0) {
        return;
    }
    const passwd* User = getpwnam("postgres");
    if (!User) {
        throw std::runtime_error(
            "the tests run as root but there is no \"postgres\" user to run the server as");
    }
    if (chown(Path.c_str(), User->pw_uid, User->pw_gid) != 0) {
        throw std::runtime_error("cannot hand " + Path.string() + " to the postgres user");
    }
}

struct TSharedState {
    std::unique_ptr<TZvTestPostgres> Server;
    std::string Failure;
};

TSharedState& Shared() {
    static TSharedState State;
    return State;
}

} // namespace

TZvTestPostgres::TZvTestPostgres() {
    const std::optional<fs::path> Bin = FindBinDirectory();
    if (!Bin) {
        throw std::runtime_error("PostgreSQL server binaries (initdb, pg_ctl) not found under "
                                 "/usr/lib/postgresql/*/bin, $ZEVRIN_PG_BINDIR or the PATH; "
                                 "install them with scripts/install-deps.sh");
    }
    BinDirectory = *Bin;
    std::string Template = (fs::temp_directory_path() / "zevrin-pg-XXXXXX").string();
    if (!mkdtemp(Template.data())) {
        throw std::runtime_error("cannot create a temporary directory for the PostgreSQL cluster");
    }
    Directory = Template;
    fs::permissions(Directory, fs::perms::owner_all);
    HandOver(Directory);
    // A port of its own per process keeps the server's shared-memory key apart from any other.
    Port = 55000 + static_cast<int>(getpid() % 2000);

    const fs::path Log = Directory / "server.log";
    const fs::path Data = Directory / "data";
    const auto Fail = [&](const std::string& What) {
        const std::string Output = ReadFile(Log);
        Stop();
        throw std::runtime_error(What + "\n" + Output);
    };
    if (Run({(BinDirectory / "initdb").string(), "-D", Data.string(), "-U", "postgres", "-A", "trust", "-E",
             "UTF8", "--locale=C", "--no-sync"},
            Log) != 0) {
        Fail("initdb failed");
    }
    const std::string Options = "-c listen_addresses='' -c unix_socket_directories=" + Directory.string() +
                                " -c port=" + std::to_string(Port) +
                                " -c fsync=off -c synchronous_commit=off -c full_page_writes=off";
    if (Run({(BinDirectory / "pg_ctl").string(), "-D", Data.string(), "-l",
             (Directory / "postgres.log").string(), "-o", Options, "-w", "-t", "60", "start"},
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
        Run({(BinDirectory / "pg_ctl").string(), "-D", (Directory / "data").string(), "-m", "immediate", "-w",
             "stop"},
            Directory / "server.log");
        Running = false;
    }
    if (!Directory.empty()) {
        std::error_code Ignored;
        fs::remove_all(Directory, Ignored);
        Directory.clear();
    }
}

TZvTestPostgres& TZvTestPostgres::Shared() {
    TSharedState& State = zv::test::Shared();
    if (!State.Server) {
        if (!State.Failure.empty()) {
            throw std::runtime_error(State.Failure);
        }
        try {
            State.Server = std::make_unique<TZvTestPostgres>();
        } catch (const std::exception& Error) {
            State.Failure = Error.what();
            throw;
        }
    }
    return *State.Server;
}

void TZvTestPostgres::StopShared() {
    zv::test::Shared().Server.reset();
}

QSqlDatabase TZvTestPostgres::Connect(const QString& ConnectionName, const QString& Database) const {
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL"))) {
        throw std::runtime_error("the Qt PostgreSQL driver (QPSQL) is not installed");
    }
    if (QSqlDatabase::contains(ConnectionName)) {
        QSqlDatabase::removeDatabase(ConnectionName);
    }
    QSqlDatabase Connection = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), ConnectionName);
    Connection.setHostName(QString::fromStdString(Directory.string()));
    Connection.setPort(Port);
    Connection.setUserName(QStringLiteral("postgres"));
    Connection.setDatabaseName(Database);
    if (!Connection.open()) {
        throw std::runtime_error("cannot connect to the test server: " +
                                 Connection.lastError().text().toStdString());
    }
    return Connection;
}

void TZvTestPostgres::Execute(QSqlDatabase& Database, const QString& Script) {
    QSqlQuery Query(Database);
    if (!Query.exec(Script)) {
        throw std::runtime_error("SQL failed: " + Query.lastError().text().toStdString());
    }
}

} // namespace zv::test
