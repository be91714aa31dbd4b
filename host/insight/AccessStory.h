#pragma once

#include "I18NLocale.h"
#include "VexAccessExplanation.h"
#include "host/store/image/Model.h"

#include <string>
#include <vector>

namespace vex {

/// A stable name for programs, such as "not-in-views".
char const* codeOf(VexAccessReason reason);
char const* codeOf(VexViewRole role);

/// Tells an access explanation in sentences, with the names that matter.
class AccessStory {
public:
    /// All three stay where they are.
    AccessStory(Model const& model, I18NLocale const& locale,
                VexAccessExplanation const& explanation)
        : m_model(model), m_locale(locale), m_explanation(explanation) {}

    /// "hidden: ..." or "shown: ...", with the rule that decided.
    std::string verdictOf(VexExplainedObject const& object) const;

    /// What the view is to the user, and why it counts or does not.
    std::string partOf(VexExplainedView const& view) const;

    /// What the views say about the object, view by view; one entry for each
    /// that names it.
    std::vector<std::string> mentionsOf(VexExplainedObject const& object) const;

    /// Its id and name.
    std::string nameOf(VexExplainedView const& view) const;

private:
    using Mark = bool VexViewMention::*;

    std::string viewsInForce() const;
    std::string viewsThat(VexExplainedObject const& object, Mark mark, VexViewRole role) const;
    std::string rolesThat(VexExplainedObject const& object, Mark mark, char const* verb) const;
    std::string includedBy(VexExplainedObject const& object) const;
    std::string defaultView() const;
    bool says(VexExplainedObject const& object, Mark mark, VexViewRole role) const;

    Model const& m_model;
    I18NLocale const& m_locale;
    VexAccessExplanation const& m_explanation;
};

} // namespace vex
