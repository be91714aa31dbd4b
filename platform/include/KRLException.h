#pragma once

#include "VexExport.h"

#include <exception>
#include <string>
#include <utility>

/// Where a failure was raised: the source's name and a line in it. A record of
/// the contract, not of the compiler: hosts match on it.
struct KRLSourceLocation {
    char const* source; ///< never null
    int line;           ///< from 1; 0 is unknown
};

/// What everything that host and plug-in raise for each other derives from. What a
/// host's own operation throws, and `std::bad_alloc`, pass as they are.
class VEX_PLATFORM_API KRLException : public std::exception {
public:
    /// `text` is UTF-8, for people.
    explicit KRLException(std::string text);
    KRLException(KRLException const&) = default;
    KRLException& operator=(KRLException const&) = default;
    ~KRLException() override;

    /// UTF-8, for people.
    char const* what() const noexcept override { return m_text.c_str(); }

protected:
    /// For derived classes whose text grows after construction.
    void SetText(std::string text) { m_text = std::move(text); }

private:
    std::string m_text;
};

/// A limit of the host ended the call: too many answer elements, the byte
/// budget, the deadline, or the user. It passes through a plug-in unchanged; it
/// is not a failure of the request's own.
class VEX_PLATFORM_API KRLLimitException final : public KRLException {
public:
    using KRLException::KRLException;
    KRLLimitException(KRLLimitException const&) = default;
    ~KRLLimitException() override;
};

/// A document could not be read: malformed, over a limit, or of a refused kind.
/// Lines and columns count from 1; 0 is unknown.
class VEX_PLATFORM_API KRLDocumentException final : public KRLException {
public:
    /// `what` says all of it: file, line, column and problem, as far as known.
    KRLDocumentException(std::string const& file, unsigned long line, unsigned long column,
                         std::string const& problem);
    KRLDocumentException(KRLDocumentException const&) = default;
    ~KRLDocumentException() override;

    /// @{
    /// What the constructor was given.
    std::string const& GetProblem() const { return m_problem; }
    unsigned long GetLine() const { return m_line; }
    unsigned long GetColumn() const { return m_column; }
    /// @}

private:
    std::string m_problem;
    unsigned long m_line;
    unsigned long m_column;
};
