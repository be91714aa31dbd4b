#include "host/insight/LeakScan.h"

#include "VexObject.h"
#include "host/insight/NameResolution.h"
#include "host/insight/ObjectText.h"
#include "host/insight/TextReferences.h"

#include <algorithm>

namespace vex {

namespace {

constexpr char const* textsForPeople[] = {"name", "screenTip", "description"};

bool isForPeople(I18NString const& property) {
    return std::any_of(std::begin(textsForPeople), std::end(textsForPeople),
                       [&](char const* name) { return property == name; });
}

class LeakScan {
public:
    LeakScan(Model const& model, std::function<bool(VEX_HANDLE)> const& canSee)
        : m_model(model), m_canSee(canSee), m_names(model) {}

    void scanProperties(VEX_HANDLE object, VEX_HANDLE owner) {
        Vex_Handle_Collection properties;
        VexObject(owner).Properties(properties, nullptr, nullptr, false);
        for (VEX_HANDLE const property : properties) {
            if (VexObject(property).hasChildObjects()) {
                continue; // a collection: its members are objects of their own
            }
            I18NString const name = classOf(property); // of a property: its name
            m_firstOfProperty = m_found.size();
            scanValue(object, name, property);
            for (I18NLocale const& locale : m_model.locales()) {
                scanValue(object, name, VexObject(owner).GetPropertyByName(name, &locale));
            }
            scanProperties(object, property);
        }
    }

    std::vector<Leak> take() { return std::move(m_found); }

private:
    void scanValue(VEX_HANDLE object, I18NString const& property, VEX_HANDLE valueHolder) {
        I18NString text;
        if (!VexObject(valueHolder).GetValue(text, true)) {
            return;
        }
        for (TextReference const& reference : referencesIn(text)) {
            ResolvedNames named = isForPeople(property) || reference.isMemberKey
                                      ? m_names.resolve(reference.names)
                                      : resolveExpression(object, reference);
            // Whichever of several is meant, it is hidden when all are.
            bool const isSeen =
                std::any_of(named.candidates.begin(), named.candidates.end(),
                            [&](VEX_HANDLE each) { return each == object || m_canSee(each); });
            if (!named.candidates.empty() && !isSeen) {
                add(object, property, std::move(named));
            }
        }
    }

    ResolvedNames resolveExpression(VEX_HANDLE object, TextReference const& reference) {
        if (!reference.before.empty()) {
            std::vector<std::u16string> const all = reference.allNames();
            ResolvedNames named = m_names.resolveFor(object, all);
            if (named.used == all.size()) {
                return named;
            }
        }
        return m_names.resolveFor(object, reference.names);
    }

    void add(VEX_HANDLE object, I18NString const& property, ResolvedNames named) {
        VEX_HANDLE const first = named.candidates.front();
        auto const known = m_found.begin() + static_cast<std::ptrdiff_t>(m_firstOfProperty);
        bool const isKnown = std::any_of(known, m_found.end(),
                                         [&](Leak const& leak) { return leak.named == first; });
        if (!isKnown) {
            m_found.push_back({object, property, first, std::move(named.reference),
                               isJoinKey(object, property, first)});
        }
    }

    /// Keys are often hidden while the relationships that need them are shown.
    bool isJoinKey(VEX_HANDLE object, I18NString const& property, VEX_HANDLE named) const {
        if (classOf(object) != "relationship" || isForPeople(property) ||
            classOf(named) != "queryItem") {
            return false;
        }
        VEX_HANDLE subject = VexObject(named).GetParent();
        while (subject.IsNotNull() && classOf(subject) != "querySubject") {
            subject = VexObject(subject).GetParent();
        }
        return subject.IsNotNull() && m_canSee(subject);
    }

    Model const& m_model;
    std::function<bool(VEX_HANDLE)> const& m_canSee;
    NameResolution m_names;
    std::vector<Leak> m_found;
    std::size_t m_firstOfProperty = 0;
};

} // namespace

std::vector<NamedObject> objectsNamedIn(Model const& model, I18NString const& text) {
    NameResolution const resolution(model);
    std::vector<NamedObject> found;
    for (TextReference const& reference : referencesIn(text)) {
        ResolvedNames named = resolution.resolve(reference.names);
        if (!named.candidates.empty()) {
            found.push_back({named.candidates.front(), std::move(named.reference)});
        }
    }
    return found;
}

std::vector<Leak> findLeaks(Model const& model, std::vector<VEX_HANDLE> const& visible,
                            std::function<bool(VEX_HANDLE)> const& canSee) {
    LeakScan scan(model, canSee);
    for (VEX_HANDLE const object : visible) {
        scan.scanProperties(object, object);
    }
    return scan.take();
}

} // namespace vex
