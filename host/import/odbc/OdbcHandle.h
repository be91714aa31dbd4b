#pragma once

#include <string>

#include <sql.h>
#include <sqlext.h>

namespace vex {

/// A handle of the driver manager, given back at its end. For the sources of this folder.
class OdbcHandle {
public:
    /// `parent` is null for an environment. Raises `OdbcException`.
    OdbcHandle(SQLSMALLINT kind, OdbcHandle const* parent);
    OdbcHandle(OdbcHandle const&) = delete;
    OdbcHandle& operator=(OdbcHandle const&) = delete;
    ~OdbcHandle();

    SQLHANDLE get() const { return m_handle; }

    /// What was said about the last call, and the state of the first of it.
    struct Diagnosis {
        std::string state;
        std::string text;
    };
    Diagnosis diagnosis() const;

private:
    SQLSMALLINT m_kind;
    SQLHANDLE m_handle = SQL_NULL_HANDLE;
};

} // namespace vex
