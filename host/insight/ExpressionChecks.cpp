#include "VexObject.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/NameResolution.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/Budget.h"
#include "host/store/image/ShortText.h"
#include "host/store/image/TextReferences.h"

#include <algorithm>
#include <optional>
#include <set>

namespace vex {

namespace {

/// The properties whose bracketed names are those of objects.
constexpr char const* expressionProperties[] = {"expression", "left", "right"};

class ExpressionCheck {
public:
    explicit ExpressionCheck(ModelFindings& findings)
        : m_findings(findings), m_names(findings.getModel()) {}

    void check(VEX_HANDLE element, I18NString const& property) {
        I18NString const text = ModelFindings::valueOf(element, property, nullptr);
        bool const isComputed = text.find(u'#') >= 0; // a macro: who knows what it becomes
        if (text.find(u'[') < 0 || isComputed || !outermostNamespaceOf(element).IsNotNull()) {
            return;
        }
        m_literals.reset();
        TextReferences references(text);
        while (TextReference const* const reference = references.next()) {
            Budget::charge();
            if (!reference->isQuoted() && !reference->isMemberKey()) {
                checkReference(element, property, text, *reference);
            }
        }
    }

private:
    void checkReference(VEX_HANDLE element, I18NString const& property, I18NString const& text,
                        TextReference const& reference) {
        NameResolution::Names const all = reference.allNames();
        if (m_names.resolveFor(element, all).used == all.size()) {
            return;
        }
        NameResolution::Names const names = reference.names();
        ResolvedNames const found = m_names.resolveFor(element, names);
        bool const isKnown = found.used == names.size();
        bool const isElement = names.size() == 1 && !reference.before().empty(); // a[0]
        if (isKnown || isElement || m_names.isOutsideName(names.front()) ||
            isDefinedIn(text, names.front())) {
            return;
        }
        I18NString name;
        for (std::u16string_view const each : names) {
            name.append(name.empty() ? "[" : ".[").append(each).append("]");
        }
        m_findings.add("unknown-name-in-expression", element, [&] {
            return m_findings.describe(element) + " names " + shortened(name.view()) + " in its " +
                   property.toUtf8() + ", which no object is called" +
                   (found.used == 0
                        ? ""
                        : "; " + shortened(referenceOf(names.first(found.used)).view()) +
                              " exists");
        });
    }

    /// Functions may define names for what they make, as literals: "Name", [Name].
    bool isDefinedIn(I18NString const& text, std::u16string_view name) {
        if (!m_literals) {
            m_literals.emplace();
            std::u16string_view rest = text.view();
            rest.remove_prefix(std::min(rest.find(u'"'), rest.size()));
            while (!rest.empty()) {
                rest.remove_prefix(1);
                std::size_t const end = rest.find(u'"');
                if (end == std::u16string_view::npos) {
                    break;
                }
                m_literals->insert(rest.substr(0, end));
                rest.remove_prefix(end);
            }
        }
        return m_literals->contains(name);
    }

    ModelFindings& m_findings;
    NameResolution m_names;
    std::optional<std::set<std::u16string_view>> m_literals; // of the text at hand
};

} // namespace

void checkExpressions(ModelFindings& findings) {
    ExpressionCheck check(findings);
    Model const& model = findings.getModel();
    for (std::size_t number = 1; number < model.elementCount(); ++number) {
        for (char const* const property : expressionProperties) {
            check.check(model.getElement(number), property);
        }
    }
}

} // namespace vex
