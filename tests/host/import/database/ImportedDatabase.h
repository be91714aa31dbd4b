#pragma once

#include "host/import/database/DatabaseImport.h"
#include "host/import/database/DatabaseSource.h"
#include "host/import/draft/FinishedImport.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/odbc/OdbcConnection.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

/// A database, imported as "m".
class ImportedDatabase {
public:
    using Options = std::map<std::string, std::vector<std::string>>;

    explicit ImportedDatabase(std::string const& source, Options const& options = {},
                              vex::ImportLimits const& limits = {}) {
        vex::ImportRequest request;
        request.source = source;
        request.shownSource = vex::shownDatabase(source);
        request.name = "m";
        request.options = options;
        request.limits = limits;
        m_work.emplace(std::move(request));
        try {
            vex::importDatabase(*m_work);
            m_documents = vex::finishImport(*m_work);
        } catch (vex::SourceReport::Stop const&) {
            m_documents.reset();
        }
    }

    bool isWritten() const { return m_documents.has_value(); }
    std::string const& model() const { return m_documents.value().model; }
    std::string const& catalogue() const { return m_documents.value().catalogue; }
    vex::ImportAccount const& account() const { return m_work->account; }

    /// The errors, each as it is printed.
    std::string errors() const {
        std::string texts;
        for (vex::Diagnostic const& each : m_work->found) {
            texts += toString(each) + '\n';
        }
        return texts;
    }

    /// The ids that the view of a role shows.
    std::vector<std::string> seenBy(std::string const& role) const {
        std::vector<std::string> ids;
        for (vex::DraftGrant const& grant : m_work->draft.grants) {
            if (grant.role == role) {
                for (std::size_t const object : m_work->draft.views[grant.view].included) {
                    ids.push_back(m_work->draft.model[object].id);
                }
            }
        }
        return ids;
    }

    /// The roles of a user; nothing for one who is none.
    std::vector<std::string> rolesOf(std::string const& user) const {
        for (vex::DraftUser const& each : m_work->draft.users()) {
            if (each.name == user) {
                return each.roles;
            }
        }
        return {};
    }

    /// Why a thing of a kind was left out; "" when it was not.
    std::string reasonFor(std::string const& kind, std::string const& name) const {
        for (auto const& omission : account().omissions()) {
            for (auto const& place : omission.places) {
                if (omission.kind == kind && place.name == name) {
                    return omission.reason;
                }
            }
        }
        return "";
    }

    std::vector<std::string> notes() const {
        std::vector<std::string> texts;
        for (auto const& note : account().notes()) {
            texts.push_back(note.text);
        }
        return texts;
    }

private:
    std::optional<vex::ImportWork> m_work;
    std::optional<vex::ImportedDocuments> m_documents;
};

/// A file of SQLite with tables made by SQL, in a folder of its own.
class SqliteFile {
public:
    explicit SqliteFile(std::string const& sql) {
        std::string name = "/tmp/vexsqlite.XXXXXX";
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no folder: " + name);
        }
        m_folder = name;
        std::ofstream(m_folder / "script.sql") << sql;
        std::string const command =
            "sqlite3 -bail '" + path() + "' < '" + (m_folder / "script.sql").string() + "'";
        if (std::system(command.c_str()) != 0) { // NOLINT: one thread
            throw std::runtime_error("sqlite3 failed");
        }
    }
    SqliteFile(SqliteFile const&) = delete;
    SqliteFile& operator=(SqliteFile const&) = delete;
    ~SqliteFile() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    std::string path() const { return (m_folder / "shop.db").string(); }
    std::string connection() const { return "Driver=SQLite3;Database=" + path(); }

    /// What is not installed that it takes; "" when it can be had.
    static std::string whatIsMissing() {
        auto const drivers = vex::installedOdbcDrivers();
        if (std::find(drivers.begin(), drivers.end(), "SQLite3") == drivers.end()) {
            return "the driver of SQLite is not installed: apt-get install libsqliteodbc";
        }
        return std::filesystem::exists("/usr/bin/sqlite3")
                   ? ""
                   : "SQLite is not installed: apt-get install sqlite3";
    }

private:
    std::filesystem::path m_folder;
};

/// Tests of a kind of database, skipped where it is not installed.
template <class Database> class DatabaseTest : public testing::Test {
protected:
    void SetUp() override {
        if (std::string const missing = Database::whatIsMissing(); !missing.empty()) {
            GTEST_SKIP() << missing;
        }
    }
};
