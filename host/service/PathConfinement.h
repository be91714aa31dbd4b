#pragma once

#include "I18NString.h"
#include "KRLException.h"
#include "VexParams.h"

namespace vex {

/// A session was to be asked about another model path than its own; no plug-in was called.
class ForeignPathException final : public KRLException {
public:
    using KRLException::KRLException;
};

/// The one model path that a session may be asked about: as the session was opened with
/// it, or behind the prefix "path:". Every other path lies somewhere else or lifts what
/// restricts the user, so none is let through.
class PathConfinement {
public:
    explicit PathConfinement(I18NString path);

    /// As the session was opened with it.
    I18NString const& path() const { return m_path; }

    /// What a caller may name.
    bool admits(I18NString const& asked) const;
    /// Raises `ForeignPathException` unless `asked` is admitted.
    void require(I18NString const& asked) const;
    /// The same of the parameter that names a model, for the actions that have one. A value
    /// of another type names none.
    void requireIn(VexVariant const& action, VexParams const& in) const;

    /// True for the path that an admitted one stands for once its prefix is read.
    bool isMeantBy(I18NString const& read) const;

private:
    I18NString m_path;
    I18NString m_prefixed;
};

} // namespace vex
