#include "tests/host/import/database/PostgresServer.h"

#include "host/import/odbc/OdbcConnection.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Arguments = std::vector<std::string>;

constexpr char const* driver = "PostgreSQL Unicode";
// A start takes a second; a machine that is busy with other things gets minutes.
constexpr int mostAttempts = 3'000;
constexpr auto betweenAttempts = std::chrono::milliseconds(100);

/// The folder of the newest server's programs; empty when none is installed.
std::filesystem::path programs() {
    std::filesystem::path found;
    int newest = 0;
    std::error_code problem;
    for (auto const& version :
         std::filesystem::directory_iterator("/usr/lib/postgresql", problem)) {
        int const number = std::atoi(version.path().filename().c_str());
        if (number > newest && std::filesystem::exists(version.path() / "bin/initdb")) {
            newest = number;
            found = version.path() / "bin";
        }
    }
    return found;
}

/// The server refuses to run as root: it runs as nobody then.
passwd const* otherUser() {
    return ::geteuid() == 0 ? ::getpwnam("nobody") : nullptr;
}

/// In a child: becomes the program, with nothing of this one's environment. Does not return.
[[noreturn]] void become(Arguments const& arguments, std::filesystem::path const& output) {
    if (passwd const* const user = otherUser()) {
        if (::setgroups(0, nullptr) != 0 || ::setgid(user->pw_gid) != 0 ||
            ::setuid(user->pw_uid) != 0) {
            ::_exit(126);
        }
    }
    // The server goes when the tests go, whatever ends them.
    ::prctl(PR_SET_PDEATHSIG, SIGQUIT);
    // The folder that the tests run in may be closed to that user, and the programs of the
    // server go back to where they began.
    if (::chdir("/") != 0) {
        ::_exit(126);
    }
    int const in = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    int const out = ::open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (in < 0 || out < 0 || ::dup2(in, 0) < 0 || ::dup2(out, 1) < 0 || ::dup2(out, 2) < 0) {
        ::_exit(126);
    }
    std::vector<char*> pointers;
    for (std::string const& each : arguments) {
        pointers.push_back(const_cast<char*>(each.c_str())); // NOLINT: as execve wants them
    }
    pointers.push_back(nullptr);
    std::string path = "PATH=/usr/bin:/bin";
    std::string locale = "LC_ALL=C.UTF-8";
    char* environment[] = {path.data(), locale.data(), nullptr};
    ::execve(pointers.front(), pointers.data(), environment);
    ::_exit(127);
}

int statusOf(pid_t process) {
    int status = -1;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int runProgram(Arguments const& arguments, std::filesystem::path const& output) {
    pid_t const child = ::fork();
    if (child == 0) {
        become(arguments, output);
    }
    return statusOf(child);
}

std::string textOf(std::filesystem::path const& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

} // namespace

std::string PostgresServer::whatIsMissing() {
    auto const drivers = vex::installedOdbcDrivers();
    if (programs().empty()) {
        return "PostgreSQL is not installed: apt-get install postgresql";
    }
    if (std::find(drivers.begin(), drivers.end(), driver) == drivers.end()) {
        return "the driver of PostgreSQL is not installed: apt-get install odbc-postgresql";
    }
    return "";
}

PostgresServer& PostgresServer::shared() {
    static PostgresServer server;
    return server;
}

PostgresServer::PostgresServer() {
    std::string name = "/tmp/vexpg.XXXXXX"; // the path of a socket is short
    if (::mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder for a server: " + name);
    }
    m_folder = name;
    try {
        if (passwd const* const user = otherUser()) {
            if (::chown(name.c_str(), user->pw_uid, user->pw_gid) != 0) {
                throw std::runtime_error("the folder of a server cannot be given away: " + name);
            }
        }
        initialize();
        start();
        waitUntilReady();
    } catch (...) {
        stop();
        throw;
    }
}

PostgresServer::~PostgresServer() {
    stop();
}

void PostgresServer::stop() noexcept {
    if (m_process > 0) {
        ::kill(m_process, SIGQUIT);
        statusOf(m_process);
        m_process = -1;
    }
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

std::string PostgresServer::said() const {
    return textOf(m_folder / "log");
}

void PostgresServer::initialize() const {
    std::string const data = (m_folder / "data").string();
    int const status =
        runProgram({(programs() / "initdb").string(), "--pgdata=" + data, "--username=boss",
                    "--auth=trust", "--encoding=UTF8", "--locale=C.UTF-8", "--no-sync"},
                   m_folder / "log");
    if (status != 0) {
        throw std::runtime_error("initdb failed with status " + std::to_string(status) + "\n" +
                                 said());
    }
    std::ofstream(m_folder / "data/pg_hba.conf") << "local all locked scram-sha-256\n"
                                                    "local all all trust\n";
}

void PostgresServer::start() {
    Arguments const arguments{(programs() / "postgres").string(),
                              "-D",
                              (m_folder / "data").string(),
                              "-k",
                              m_folder.string(),
                              "-c",
                              "listen_addresses=",
                              "-c",
                              "fsync=off",
                              "-c",
                              "shared_buffers=16MB",
                              "-c",
                              "dynamic_shared_memory_type=mmap"};
    m_process = ::fork();
    if (m_process == 0) {
        become(arguments, m_folder / "log");
    }
}

void PostgresServer::waitUntilReady() const {
    Arguments const asks{(programs() / "pg_isready").string(), "-q", "-h", m_folder.string()};
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        if (runProgram(asks, m_folder / "log") == 0) {
            return;
        }
        if (::waitpid(m_process, nullptr, WNOHANG) != 0) {
            throw std::runtime_error("the server ended at once\n" + said());
        }
        std::this_thread::sleep_for(betweenAttempts);
    }
    throw std::runtime_error("the server did not get ready\n" + said());
}

void PostgresServer::run(std::string const& database, std::string const& sql) const {
    std::filesystem::path const script = m_folder / "script.sql";
    std::filesystem::path const output = m_folder / "output";
    std::ofstream(script) << sql;
    std::filesystem::permissions(script, std::filesystem::perms::others_read,
                                 std::filesystem::perm_options::add);
    std::filesystem::remove(output);
    int const status =
        runProgram({(programs() / "psql").string(), "-X", "-q", "-v", "ON_ERROR_STOP=1", "-h",
                    m_folder.string(), "-U", "boss", "-d", database, "-f", script.string()},
                   output);
    if (status != 0) {
        throw std::runtime_error("psql failed\n" + textOf(output));
    }
}

void PostgresServer::create(std::string const& database, std::string const& sql) const {
    run("postgres", "DROP DATABASE IF EXISTS " + database + ";\nCREATE DATABASE " + database);
    run(database, sql);
}

std::string PostgresServer::connectionTo(std::string const& database,
                                         std::string const& user) const {
    return std::string("Driver=") + driver + ";Servername=" + m_folder.string() +
           ";Database=" + database + ";UID=" + user;
}
