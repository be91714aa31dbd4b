#include "VexObject.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/ObjectReference.h"
#include "host/insight/StatedView.h"
#include "resources.h"

#include <algorithm>
#include <set>

namespace vex {

namespace {

constexpr long knownKinds[] = {resources::Included, resources::Excluded, resources::Hidden};
constexpr char const* setClass = "set";

class ViewCheck {
public:
    explicit ViewCheck(ModelFindings& findings) : m_findings(findings) {}

    void checkView(VEX_HANDLE view) {
        std::size_t entries = 0;
        for (VEX_HANDLE const set : below(view, setClass)) {
            entries += checkSet(set);
        }
        bool const isRoleBased = saysYes(
            ModelFindings::valueOf(view, resources::getString(resources::RoleBased), nullptr));
        Vex_Handle_Collection const members =
            below(view, resources::getString(resources::ViewMember));
        bool const isDefault = isRoleBased && members.size() == 0;
        if (entries == 0 && !isDefault) { // an empty default view hides nothing on purpose
            m_findings.add("view-without-set", view, [&] {
                return nameOfView(view) + " has no set with an entry, so it shows nothing";
            });
        }
        if (isRoleBased && members.size() > 1) {
            m_findings.add("ignored-member", members[1], [&] {
                return "only the first member's role counts for " + nameOfView(view) +
                       "; make a view for each role";
            });
        }
        if (isDefault) {
            if (m_default.IsNotNull()) {
                m_findings.add("replaced-default-view", m_default, [&] {
                    return nameOfView(m_default) + " has no effect: " + nameOfView(view) +
                           " is a later role-based view without members";
                });
            }
            m_default = view;
        }
    }

    /// What no view includes, among what views decide about.
    void checkObjects() {
        Model const& model = m_findings.getModel();
        I18NString const& shortcut = resources::getString(resources::Shortcut);
        for (std::size_t index = 0; index < model.elementCount(); ++index) {
            VEX_HANDLE const element = model.getElement(index);
            I18NString text;
            if (!hasReference(model, element) || !VexObject(element).GetName(text) ||
                text == shortcut) { // shortcuts are shown without a test
                continue;
            }
            I18NString id;
            VexObject(element).GetId(id);
            if (m_included.count(id) == 0) {
                m_findings.add("object-in-no-view", element, [&] {
                    return "no view includes " + text.toUtf8() + ' ' + m_findings.nameOf(element) +
                           (id.empty() ? "; it has no id to include it by" : "");
                });
            }
        }
    }

private:
    /// The number of its entries.
    std::size_t checkSet(VEX_HANDLE set) {
        I18NString const kind =
            ModelFindings::valueOf(set, resources::getString(resources::SetKind), nullptr);
        bool const isKnown =
            std::any_of(std::begin(knownKinds), std::end(knownKinds),
                        [&](long known) { return kind == resources::getString(known); });
        if (!isKnown) {
            m_findings.add("unknown-set-kind", set, [&] {
                return "the kind of the set is " + inQuotes(kind) +
                       ", so it has no effect; write included, excluded or hidden";
            });
        }
        bool const isIncluded = kind == resources::getString(resources::Included);
        Vex_Handle_Collection const entries = below(set, resources::getString(resources::SetEntry));
        for (VEX_HANDLE const entry : entries) {
            I18NString id;
            VexObject(entry).GetValue(id, true);
            if (!m_findings.getModel().findById(id).IsNotNull()) {
                m_findings.add("set-entry-without-object", entry, [&] {
                    return "no object has the id " + inQuotes(id) + " that the security set lists";
                });
            }
            if (isIncluded) {
                m_included.insert(id);
            }
        }
        return entries.size();
    }

    static Vex_Handle_Collection below(VEX_HANDLE element, I18NString const& tag) {
        return ModelFindings::elementsBelow(element, tag);
    }

    static std::string nameOfView(VEX_HANDLE view) {
        I18NString id;
        VexObject(view).GetId(id);
        return "the view " + inQuotes(id);
    }

    ModelFindings& m_findings;
    std::set<I18NString> m_included;
    VEX_HANDLE m_default;
};

} // namespace

void checkViews(ModelFindings& findings) {
    Vex_Handle_Collection const views =
        findings.elementsOf(resources::getString(resources::SecurityView));
    ViewCheck check(findings);
    for (VEX_HANDLE const view : views) {
        check.checkView(view);
    }
    if (views.size() != 0) { // without views there is nothing to be included by
        check.checkObjects();
    }
}

} // namespace vex
