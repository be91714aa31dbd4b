#include "VexObject.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/ObjectReference.h"
#include "resources.h"

#include <algorithm>
#include <map>
#include <set>

namespace vex {

namespace {

/// The members of one class of one element, in document order.
using Members = std::vector<VEX_HANDLE>;

/// Finds the members whose own name leads a start path elsewhere. The name
/// search compares the name wanted, while it looks at the first member, with the
/// name of the member at place j in the supported locale at place j, for every
/// j; so whoever's name stands there, the first member is found.
class PairingCheck {
public:
    explicit PairingCheck(ModelFindings& findings)
        : m_findings(findings), m_locales(findings.getModel().locales()) {}

    /// How many members were found.
    std::size_t count() const { return m_count; }

    void check(Members const& members) {
        std::set<I18NString> pairs;
        for (std::size_t place = 0; place < std::min(members.size(), m_locales.size()); ++place) {
            pairs.insert(nameOf(members[place], m_locales[place]));
        }
        pairs.erase(I18NString());
        for (std::size_t index = 1; index < members.size() && !pairs.empty(); ++index) {
            checkMember(members[0], members[index], pairs);
        }
    }

private:
    void checkMember(VEX_HANDLE first, VEX_HANDLE member, std::set<I18NString> const& pairs) {
        I18NLocale const fallback = m_findings.getModel().defaultLocale();
        I18NString const firstName = nameOf(first, fallback);
        std::string caught;
        std::size_t count = 0;
        for (I18NLocale const locale : m_locales) {
            I18NString const name = nameOf(member, locale);
            bool const isOwn = name == firstName || name == nameOf(first, locale);
            if (pairs.count(name) != 0 && !isOwn) { // two of one name are another matter
                addToShortList(caught, count,
                               inQuotes(name) + " (" + locale.getName().toUtf8() + ')');
            }
        }
        if (count == 0) {
            return;
        }
        endShortList(caught, count);
        I18NString const name = nameOf(member, fallback);
        bool const hasWay = !name.empty() && pairs.count(name) == 0;
        ++m_count;
        m_findings.add("astray-name", member, [&] {
            return "a start path with the name " + caught + " leads to " +
                   m_findings.nameOf(first) + ", the first beside it; " +
                   (hasWay ? "paths reach it by " + inQuotes(name)
                           : "no path reaches it; start at it by id");
        });
    }

    static I18NString nameOf(VEX_HANDLE element, I18NLocale locale) {
        return ModelFindings::valueOf(element, resources::getString(resources::Name), &locale);
    }

    ModelFindings& m_findings;
    std::vector<I18NLocale> const& m_locales;
    std::size_t m_count = 0;
};

/// "the name of 1 object leads", "the names of 2 objects lead".
std::string countedNames(std::size_t count) {
    return count == 1 ? "the name of 1 object leads"
                      : "the names of " + std::to_string(count) + " objects lead";
}

} // namespace

void checkNames(ModelFindings& findings) {
    PairingCheck check(findings);
    Model const& model = findings.getModel();
    for (std::size_t index = 1; index < model.elementCount(); ++index) {
        VEX_HANDLE const element = model.getElement(index);
        if (!hasReference(model, element)) {
            continue; // paths lead to what stands in namespaces
        }
        Vex_Handle_Collection children;
        VexObject(element).childObjects(children, nullptr, nullptr);
        std::map<I18NString, Members> members;
        for (VEX_HANDLE const child : children) {
            I18NString cls;
            VexObject(child).GetName(cls);
            members[cls].push_back(child);
        }
        for (auto const& [cls, ofClass] : members) {
            check.check(ofClass);
        }
    }
    if (check.count() != 0) {
        findings.add("unreachable-by-path", model.GetRootObject(), [&] {
            return countedNames(check.count()) +
                   " a start path to the first object beside it, in one of the model's "
                   "languages at least (notes \"astray-name\" tell which); start at an "
                   "object by its id: vexma --id, or the extension vex.answer-at/1";
        });
    }
}

} // namespace vex
