#pragma once

#include "host/catalogue/Catalogue.h"
#include "host/insight/DiagnosticRules.h"
#include "host/store/build/FindingLimit.h"
#include "host/store/image/Model.h"

#include <set>
#include <string>
#include <vector>

namespace vex {

/// Appends a finding for each doubtful spot of a model (see `diagnosticRules`).
/// `file` stands in the findings; their places need a model that was loaded with
/// positions. What is wrong with a view of the `policy` stands there.
void checkModel(Model const& model, std::string const& file, Diagnostics& found,
                Policy const* policy = nullptr);

/// False for a model path under which nobody is restricted.
bool isRestrictedPath(I18NString const& path);

/// What the checks of a catalogue have found so far.
class CatalogueFindings {
public:
    CatalogueFindings(std::string const& file, Diagnostics& found) : m_file(file), m_found(found) {}

    /// `tell` makes the text of one that is kept.
    template <class Tell>
    void add(RuleName rule, unsigned long line, unsigned long column, Tell const& tell) {
        add(rule, {}, line, column, tell);
    }

    /// The same in a file that the catalogue is read with; "" for the catalogue itself.
    template <class Tell>
    void add(RuleName rule, std::string const& file, unsigned long line, unsigned long column,
             Tell const& tell) {
        if (m_limit.admits((*rule).name)) {
            m_found.push_back(finding(rule, file.empty() ? m_file : file, line, column, tell()));
        }
    }

    /// Adds how many were left out, where some were; comes last.
    void tellRest() const { m_limit.tellRest(m_found); }

private:
    std::string const& m_file;
    Diagnostics& m_found;
    FindingLimit m_limit;
};

/// Adds a warning for each doubtful spot of a catalogue itself: a model path
/// under which nobody is restricted, a user who may use no view.
void checkCatalogue(Catalogue const& catalogue, CatalogueFindings& findings);

/// The views of a model, and the roles that they ask for.
struct GrantedModel {
    explicit GrantedModel(Model const& model);

    std::set<I18NString> views;
    std::set<I18NString> roles;
};

/// Adds a warning for each grant of a view that the model lacks, for each role that a
/// grant or a view of the model names and no user has, and for each view of a policy that
/// no user may use.
class GrantCheck {
public:
    GrantCheck(Catalogue const& catalogue, CatalogueFindings& findings);

    void check(CatalogueModel const& entry, GrantedModel const& model) const;
    void checkPolicy(CatalogueModel const& entry) const;

private:
    std::set<I18NString> m_held; // by users
    CatalogueFindings& m_findings;
};

/// A shortcut that is met again when it is expanded, and how: from its target
/// through the shortcuts on the way and their targets back to itself. Empty when
/// a model has so many that following each would take too long.
struct EndlessShortcut {
    static constexpr std::size_t MostOfACycle = 20;

    VEX_HANDLE shortcut;
    std::vector<VEX_HANDLE> cycle; // of a long one as many as people read
    std::size_t length = 0;        // of the whole cycle
};

/// In document order.
std::vector<EndlessShortcut> findEndlessShortcuts(Model const& model);

} // namespace vex
