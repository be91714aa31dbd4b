#pragma once

#include <filesystem>
#include <string>

#include <sys/types.h>

/// A server of PostgreSQL for the tests of one program: with its files in a folder of its own
/// and a Unix socket in it, without a port. It starts when it is first asked for and ends with
/// the program, however that ends.
class PostgresServer {
public:
    /// What is not installed that it takes; "" when it can be had. Tests skip for that reason
    /// alone: a server that is installed and does not start is a failure.
    static std::string whatIsMissing();

    /// Raises `std::runtime_error` with what the server wrote when it does not start.
    static PostgresServer& shared();

    PostgresServer(PostgresServer const&) = delete;
    PostgresServer& operator=(PostgresServer const&) = delete;
    ~PostgresServer();

    /// Runs SQL as the superuser "boss". Raises `std::runtime_error` on the first failure.
    void run(std::string const& database, std::string const& sql) const;
    /// Makes a database, in the place of one of that name.
    void create(std::string const& database, std::string const& sql) const;

    std::string connectionTo(std::string const& database, std::string const& user = "boss") const;

private:
    PostgresServer();

    void initialize() const;
    void start();
    void waitUntilReady() const;
    void stop() noexcept;
    std::string said() const;

    std::filesystem::path m_folder;
    pid_t m_process = -1;
};
