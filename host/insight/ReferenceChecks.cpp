#include "VexObject.h"
#include "host/insight/ModelChecks.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/NameResolution.h"
#include "host/insight/ObjectReference.h"
#include "resources.h"

#include <set>

namespace vex {

namespace {

constexpr char const* targetProperty = "refobj";
constexpr char const* emptyName = "\"\"";

/// The readable targets that a shortcut names.
std::vector<I18NString> referencesOf(VEX_HANDLE shortcut) {
    Vex_Handle_Collection properties;
    I18NString const name(targetProperty);
    VexObject(shortcut).Properties(properties, &name, nullptr, false);
    std::vector<I18NString> references;
    for (VEX_HANDLE const property : properties) {
        I18NString reference;
        if (VexObject(property).GetValue(reference, true)) {
            references.push_back(reference);
        }
    }
    return references;
}

/// The objects that another object, earlier in the document, keeps from being
/// found by their reference; and the ones that do so.
class SharedReferences {
public:
    struct Second {
        VEX_HANDLE object;
        VEX_HANDLE first;
    };

    explicit SharedReferences(ModelFindings const& findings) {
        Model const& model = findings.getModel();
        NameResolution names(model);
        for (std::size_t index = 0; index < model.elementCount(); ++index) {
            VEX_HANDLE const element = model.getElement(index);
            if (nameText(model, element).empty()) {
                continue; // nothing without a name is asked for by reference
            }
            VEX_HANDLE const first = names.firstLike(element);
            if (first.IsNotNull() && first != element) {
                m_seconds.push_back({element, first});
                m_firsts.insert(first.Number());
            }
        }
    }

    std::vector<Second> const& seconds() const { return m_seconds; }
    bool isFirst(VEX_HANDLE object) const { return m_firsts.count(object.Number()) != 0; }

private:
    std::vector<Second> m_seconds;
    std::set<std::uint32_t> m_firsts;
};

void checkTarget(ModelFindings& findings, SharedReferences const& shared, VEX_HANDLE shortcut,
                 I18NString const& reference) {
    VEX_HANDLE const target = findings.getModel().GetObjectByReference(reference, 0);
    auto const points = [&] {
        return inQuotes(reference) + " that the shortcut " + findings.nameOf(shortcut) +
               " points to";
    };
    if (!target.IsNotNull()) {
        findings.add("dangling-refobj", shortcut,
                     [&] { return "no object has the reference " + points(); });
        return;
    }
    if (shared.isFirst(target)) {
        findings.add("ambiguous-refobj", shortcut, [&] {
            return "several objects have the reference " + points() + "; the first is taken";
        });
    }
    I18NString cls;
    VexObject(target).GetName(cls);
    if (cls == resources::getString(resources::Shortcut) && target != shortcut) {
        findings.add("unreachable-shortcut-target", shortcut, [&] {
            return "the shortcut " + findings.nameOf(shortcut) + " points to the shortcut " +
                   findings.nameOf(target) +
                   ", whose own target is not shown here; point to that one";
        });
    }
}

void checkOneShortcut(ModelFindings& findings, SharedReferences const& shared,
                      VEX_HANDLE shortcut) {
    std::string const name = findings.nameOf(shortcut);
    std::vector<I18NString> const references = referencesOf(shortcut);
    for (I18NString const& reference : references) {
        checkTarget(findings, shared, shortcut, reference);
    }
    if (references.empty()) {
        findings.add("shortcut-without-target", shortcut, [&] {
            return "the shortcut " + name + " has no refobj, so it is never shown";
        });
    }
    if (references.size() > 1) {
        findings.add("unreachable-shortcut-target", shortcut, [&] {
            return "the shortcut " + name + " has " + std::to_string(references.size()) +
                   " targets; answers show the last, start paths follow the first; keep one";
        });
    }
    if (name == emptyName) {
        findings.add("shortcut-without-name", shortcut,
                     [&] { return "the shortcut has no name, so it is never shown"; });
    }
}

/// ": [A].[B] -> [A] -> [A].[B]"; of a long way the beginning.
std::string cycleText(ModelFindings const& findings, EndlessShortcut const& endless) {
    std::string text;
    if (!endless.cycle.empty()) {
        text = ": " + findings.describe(endless.shortcut);
        for (VEX_HANDLE const element : endless.cycle) {
            text += " -> " + findings.describe(element);
        }
        if (endless.length > endless.cycle.size()) {
            text += " -> ... (" + std::to_string(endless.length - endless.cycle.size()) +
                    " more steps back to it)";
        }
    }
    return text;
}

} // namespace

void checkShortcuts(ModelFindings& findings) {
    SharedReferences const shared(findings);
    for (SharedReferences::Second const& second : shared.seconds()) {
        auto const position = findings.getModel().findPosition(second.first);
        std::string text = "a second object has the reference " + findings.describe(second.object);
        if (position) {
            text += ", which finds the one in line " + std::to_string(position->line);
        }
        findings.add("duplicate-reference", second.object,
                     [&] { return text + "; rename one of them"; });
    }
    for (VEX_HANDLE const shortcut :
         findings.elementsOf(resources::getString(resources::Shortcut))) {
        checkOneShortcut(findings, shared, shortcut);
    }
    for (EndlessShortcut const& endless : findEndlessShortcuts(findings.getModel())) {
        findings.add("endless-shortcut", endless.shortcut, [&] {
            return "the shortcut " + findings.nameOf(endless.shortcut) +
                   " is met again inside its own target" + cycleText(findings, endless) +
                   "; its expansion is cut there";
        });
    }
}

} // namespace vex
