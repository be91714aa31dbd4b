#include "VexObject.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/NameResolution.h"
#include "host/insight/ObjectText.h"
#include "host/insight/TextReferences.h"

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
        for (TextReference const& reference : referencesIn(text)) {
            if (!reference.isQuoted && !reference.isMemberKey) {
                checkReference(element, property, text, reference);
            }
        }
    }

private:
    void checkReference(VEX_HANDLE element, I18NString const& property, I18NString const& text,
                        TextReference const& reference) {
        std::vector<std::u16string> const all = reference.allNames();
        if (m_names.resolveFor(element, all).used == all.size()) {
            return;
        }
        ResolvedNames const found = m_names.resolveFor(element, reference.names);
        bool const isKnown = found.used == reference.names.size();
        bool const isElement = reference.names.size() == 1 && !reference.before.empty(); // a[0]
        if (isKnown || isElement || m_names.isOutsideName(reference.names.front()) ||
            isDefinedIn(text, reference.names.front())) {
            return;
        }
        I18NString name;
        for (std::u16string const& each : reference.names) {
            name.append(name.empty() ? "[" : ".[").append(I18NString(each)).append("]");
        }
        m_findings.add("unknown-name-in-expression", element,
                       m_findings.describe(element) + " names " + name.toUtf8() + " in its " +
                           property.toUtf8() + ", which no object is called" +
                           (found.used == 0 ? "" : "; " + found.reference.toUtf8() + " exists"));
    }

    /// Functions may define names for what they make, as literals: "Name", [Name].
    static bool isDefinedIn(I18NString const& text, std::u16string const& name) {
        return text.find(I18NString(u'"' + name + u'"')) >= 0;
    }

    ModelFindings& m_findings;
    NameResolution m_names;
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
