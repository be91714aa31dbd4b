#pragma once

#include "I18NString.h"
#include "model/VexFailure.h"
#include "security/VexMDAccessEngine.h"

#include <vector>

class VexSecurityInfoSource;
class VexSession;

/// What one action demands of a session's security information, and how it fails
/// without.
struct VexSecurityRules {
    /// The list that must hold something once both are read.
    enum class LastTest { Views, Roles };

    VexFailure withoutSource;
    VexFailure withoutViews;
    LastTest lastTest;
    VexFailure lastTestFailed;
};

// quirk: metadata-accepts-no-roles
// The views are tested once more and the roles never: a user without roles is
// accepted here, unlike below. Kept on purpose.
inline constexpr VexSecurityRules MetadataSecurityRules{
    VexFailure::ProviderWithoutSource, VexFailure::ProviderWithoutViews,
    VexSecurityRules::LastTest::Views, VexFailure::ProviderWithoutViews};

// quirk: access-refuses-without-roles
// A user without roles is refused here, unlike above. Kept on purpose.
inline constexpr VexSecurityRules AccessSecurityRules{
    VexFailure::AccessWithoutSource, VexFailure::AccessWithoutViews,
    VexSecurityRules::LastTest::Roles, VexFailure::AccessWithoutRoles};

/// What the host tells of a session's user: security views and roles on the model
/// of one path. Threads: one at a time.
class VexSessionSecurity {
public:
    /// The session is not owned and must outlive this; so must the rules.
    VexSessionSecurity(VexSession& session, VexSecurityRules const& rules)
        : m_session(session), m_rules(rules) {}

    /// Stores the path; true when it is another than before. One outside the
    /// content store lifts all restrictions for good. Views and roles stay.
    bool setModelPath(I18NString const& modelPath);

    /// Reads views and roles, once until they are forgotten. Raises as the rules
    /// say, and tries again at the next call then.
    void retrieve();
    void forget() { m_retrieved = false; }

    I18NString const& modelPath() const { return m_modelPath; }
    /// In ascending order.
    std::vector<I18NString> const& availableViews() const { return m_availableViews; }
    /// The host's; null until it was asked for.
    VexSecurityInfoSource* source() const { return m_source; }
    bool isOutsideContent() const { return m_nonContentPath; }

    /// An engine for those views and the roles that were read.
    VexMDAccessEngine makeEngine(std::vector<I18NString> const& views,
                                 I18NLocale const& locale) const;

private:
    VexSession& m_session;
    VexSecurityRules const& m_rules;
    I18NString m_modelPath;
    std::vector<I18NString> m_availableViews;
    std::vector<I18NString> m_roles;
    VexSecurityInfoSource* m_source = nullptr;
    bool m_retrieved = false;
    bool m_nonContentPath = false;
};
