#pragma once

#include "host/import/odbc/ConnectionString.h"

#include <string>

namespace vex {

class ImportWork;
struct ImportRequest;

/// Where a database is and how to get in: the request's source, or standard input, with the
/// password of --password-file or of the environment. Raises `OdbcException` and
/// `KRLDocumentException`.
ConnectionString connectionOf(ImportRequest const& request);

/// A source of this kind for messages: without what is secret in it.
std::string shownDatabase(std::string const& source);

/// What is to be done about a failure to connect; "" when nothing better is known than what
/// the driver says.
std::string adviceFor(ConnectionString const& how, std::string const& state);

} // namespace vex
