#pragma once

#include "host/store/build/Diagnostic.h"

#include <iterator>
#include <string_view>

namespace vex {

/// A rule that findings name. Names and severities are stable: people filter by
/// them.
struct DiagnosticRule {
    std::string_view name;
    Severity severity;
    std::string_view text; // what breaks the rule
};

inline constexpr DiagnosticRule diagnosticRules[] = {
    {"unreadable", Severity::Error, "The model file cannot be read."},
    {"not-well-formed", Severity::Error, "The model is not well-formed XML."},
    {"document-type", Severity::Error, "The document has a document type."},
    {"root", Severity::Error, "The outermost element is not `model`."},
    {"too-deep", Severity::Error, "Elements are nested more deeply than the limit allows."},
    {"too-many-attributes", Severity::Error, "An element has more attributes than the limit."},
    {"name-too-long", Severity::Error, "A name is longer than the limit."},
    {"too-many-names", Severity::Error, "The model has more different names than the limit."},
    {"too-many-like-names", Severity::Error,
     "Too many element names are so much alike that finding them is slow."},
    {"property-without-name", Severity::Error, "A `property` has no name."},
    {"element-in-property", Severity::Error,
     "An element other than `property` stands in a property."},
    {"element-in-locales", Severity::Error, "An element other than `locale` stands in `locales`."},
    {"element-in-locale", Severity::Error, "An element stands in `locale`."},
    {"locales-outside-model", Severity::Error,
     "`locales` stands somewhere other than directly in `model`."},
    {"unknown-locale", Severity::Error, "A locale is unknown."},
    {"duplicate-id", Severity::Error, "Two elements have the same id."},
    {"duplicate-value", Severity::Error, "A property has two values for one locale."},
    {"unwritable-text", Severity::Error,
     "A text or a class is none that XML 1.0 can hold, in which answers are written."},

    {"catalogue-unreadable", Severity::Error, "The catalogue cannot be read, or is not XML."},
    {"catalogue-element", Severity::Error, "An element stands where the catalogue allows none."},
    {"catalogue-attribute", Severity::Error, "An attribute is missing, or is unknown."},
    {"catalogue-text", Severity::Error, "Text stands in an element that holds none."},
    {"catalogue-locale", Severity::Error, "The locale of a package's property is unknown."},
    {"catalogue-model-twice", Severity::Error, "Two entries have the same model path."},
    {"catalogue-package-twice", Severity::Error, "A model has two packages."},
    {"catalogue-property-twice", Severity::Error,
     "A package's property has two values for one locale."},
    {"catalogue-user-twice", Severity::Error, "Two users have the same name."},
    {"catalogue-role", Severity::Error, "A user's role has no name."},
    {"policy-unreadable", Severity::Error, "A policy cannot be read, or is not one."},
    {"policy-view-twice", Severity::Error,
     "A view of a policy has an id that the model has already."},
    {"policy-too-large", Severity::Error,
     "What policies mean or grant is more than the limits allow."},
    {"model-unreadable", Severity::Error, "The file of an entry cannot be read."},

    {"shortcut-without-target", Severity::Warning,
     "A shortcut has no `refobj`: it is never shown."},
    {"shortcut-without-name", Severity::Warning, "A shortcut has no name: it is never shown."},
    {"dangling-refobj", Severity::Warning,
     "A shortcut's target does not exist: requests that meet the shortcut fail."},
    {"ambiguous-refobj", Severity::Warning,
     "Several objects have the reference that a shortcut points to: the first one is taken."},
    {"endless-shortcut", Severity::Warning,
     "A shortcut is met again inside its own target; the text names the whole cycle."},
    {"unreachable-shortcut-target", Severity::Warning,
     "A target that nothing shows: the target of a shortcut's target, or a `refobj` that a later "
     "one overrides."},
    {"duplicate-reference", Severity::Warning,
     "An earlier object has the same reference: nothing refers to this one."},
    {"unreachable-by-path", Severity::Warning,
     "Objects that a start path with their name does not reach: one finding for a model, with "
     "their number. Start at them by id."},
    {"astray-name", Severity::Note,
     "A start path with the object's name leads to the first of its siblings: the name search "
     "tries the supported locale at place j on the sibling at place j, whichever it looks at."},
    {"untranslated-name", Severity::Warning,
     "A supported locale has no name for the object: where only names are asked for, the object "
     "and what stands in it are left out."},
    {"untranslated-property", Severity::Note,
     "A property has values for some supported locales and none for another."},
    {"misspelt-class", Severity::Warning,
     "A class is written almost like one that has a meaning or is used often."},
    {"misspelt-property", Severity::Warning,
     "A property is written almost like one that has a meaning or is used often."},
    {"unknown-datatype", Severity::Warning, "A `datatype` is none that the schema knows."},
    {"unknown-usage", Severity::Warning, "A `usage` is none that the schema knows."},
    {"object-without-name", Severity::Warning,
     "A namespace, folder, query subject, query item, filter or calculation has no name: where "
     "only "
     "names are asked for, it and what stands in it are left out."},
    {"object-without-id", Severity::Note,
     "One of these has no id in a model with views: no view can list it."},
    {"set-entry-without-object", Severity::Warning,
     "A security set lists an id that no object has."},
    {"unknown-set-kind", Severity::Warning,
     "A set's kind is neither included, excluded nor hidden: it has no effect."},
    {"view-without-set", Severity::Warning,
     "A view has no set with an entry: it shows nothing and hides nothing."},
    {"ignored-member", Severity::Warning,
     "A view has a second member: only the first one's role counts."},
    {"replaced-default-view", Severity::Warning,
     "A later role-based view without members takes this one's place as default view."},
    {"unknown-name-in-expression", Severity::Warning,
     "An expression, or an end of a relationship, names what no object is called."},
    {"object-in-no-view", Severity::Note,
     "No view includes the object: no user of a restricted model sees it."},
    {"granted-view-missing", Severity::Warning, "A role is granted a view that the model lacks."},
    {"role-without-user", Severity::Warning,
     "No user of the catalogue has a role that a grant or a view names."},
    {"user-without-view", Severity::Warning,
     "A user may use no view of any model: every request is refused."},
    {"policy-selector-without-match", Severity::Warning,
     "A selector of a policy means no object of the model."},
    {"policy-rule-without-effect", Severity::Warning,
     "A rule of a policy changes nothing: an exception takes nothing away that its view includes, "
     "or what is meant cannot be in such a set."},
    {"policy-view-without-user", Severity::Warning,
     "No user may use a view of a policy: its rules matter to nobody."},
    {"object-without-rule", Severity::Warning,
     "No rule of the model's policy includes or excepts the object."},
    {"unrestricted-path", Severity::Warning, "Nobody is restricted under the model path."},
    {"unfinished", Severity::Error,
     "A limit or an interrupt ended the check: nothing is known of what was not looked at."},
};

/// Names a rule of the table; what is no such name does not compile.
class RuleName {
public:
    consteval RuleName(char const* name) {
        // By number: comparing the rows' addresses is no constant under sanitizers.
        while (m_row < std::size(diagnosticRules) && diagnosticRules[m_row].name != name) {
            ++m_row;
        }
        if (m_row == std::size(diagnosticRules)) {
            throw "no rule has this name";
        }
    }

    DiagnosticRule const& operator*() const { return diagnosticRules[m_row]; }

private:
    std::size_t m_row = 0;
};

/// A finding with the rule's severity.
inline Diagnostic finding(RuleName rule, std::string file, unsigned long line, unsigned long column,
                          std::string text) {
    return {(*rule).severity, std::string((*rule).name), std::move(file), line, column,
            std::move(text)};
}

} // namespace vex
