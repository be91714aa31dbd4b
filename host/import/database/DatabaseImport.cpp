#include "host/import/database/DatabaseImport.h"

#include "I18NLocale.h"
#include "host/import/database/DatabaseModel.h"
#include "host/import/database/DatabaseObjects.h"
#include "host/import/database/DatabaseSource.h"
#include "host/import/database/DatabaseViews.h"
#include "host/import/database/PostgresCatalogue.h"
#include "host/import/database/SqliteCatalogue.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/odbc/OdbcConnection.h"
#include "host/import/odbc/OdbcException.h"

#include <optional>

namespace vex {

namespace {

void readPostgres(OdbcConnection& connection, DatabaseModel& model, ImportWork& work) {
    // All that is read is of one moment.
    connection.execute("SET TRANSACTION ISOLATION LEVEL REPEATABLE READ, READ ONLY");
    // Nothing that the database holds is to stand in the place of the server's functions.
    connection.execute("SET search_path TO pg_catalog, pg_temp");
    PostgresNumbers const numbers = readPostgresCatalogue(connection, model, work);
    readPostgresRoles(connection, numbers, model, work);
}

struct DatabaseProduct {
    char const* name; // as drivers say it
    void (*read)(OdbcConnection& connection, DatabaseModel& model, ImportWork& work);
};

constexpr DatabaseProduct products[] = {{"PostgreSQL", &readPostgres},
                                        {"SQLite", &readSqliteCatalogue}};

void readModel(OdbcConnection& connection, DatabaseModel& model, ImportWork& work) {
    std::string const name = connection.productName();
    for (DatabaseProduct const& product : products) {
        if (name == product.name) {
            product.read(connection, model, work);
            return;
        }
    }
    work.refuse("the database is \"" + name +
                "\"; who may read what is known of PostgreSQL and SQLite only");
}

void readDatabase(ConnectionString const& how, DatabaseModel& model, ImportWork& work) {
    std::optional<OdbcConnection> connection;
    try {
        connection.emplace(
            how, OdbcLimits{work.request.limits.sourceValues, work.request.limits.sourceBytes});
    } catch (OdbcException const& problem) {
        work.refuse(problem.what() + adviceFor(how, problem.state()));
    }
    readModel(*connection, model, work);
}

DatabaseModel readSource(ImportWork& work) {
    DatabaseModel model;
    try {
        ConnectionString const how = connectionOf(work.request);
        if (work.request.source != "-" && ConnectionString(work.request.source).hasPassword()) {
            work.account.note("the password stood in the command line, where others on the machine "
                              "could read it; give it with --password-file");
        }
        readDatabase(how, model, work);
    } catch (OdbcException const& problem) {
        work.refuse(problem.what());
    } catch (OdbcLimitException const& problem) {
        work.refuse(problem.what());
    }
    return model;
}

} // namespace

void importDatabase(ImportWork& work) {
    DatabaseModel model = readSource(work);
    work.draft.model.setDefaultLocale(I18NLocale(I18NString::fromUtf8(work.request.language)));
    draftDatabase(model, work);
    if (model.tables.empty()) {
        work.refuse("the database has no table to import; another --schema or --include may find "
                    "some");
    }
    draftDatabaseViews(model, work);
}

} // namespace vex
