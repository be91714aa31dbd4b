#include "host/insight/LeakScan.h"

#include "VexObject.h"
#include "host/insight/NameResolution.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/Budget.h"
#include "host/store/image/TextReferences.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

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
            m_namedHere.clear();
            scanValue(object, name, property);
            m_valuesHere = {property};
            for (I18NLocale const& locale : m_model.locales()) {
                VEX_HANDLE const value = VexObject(owner).GetPropertyByName(name, &locale);
                if (m_valuesHere.insert(value).second) { // often one value is that of many
                    scanValue(object, name, value);
                }
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
        TextReferences references(text);
        while (TextReference const* const reference = references.next()) {
            Budget::charge();
            NameResolution::Names names = reference->names();
            ResolvedNames const named = isForPeople(property) || reference->isMemberKey()
                                            ? m_names.resolve(names)
                                            : resolveExpression(object, *reference, names);
            if (!named.candidates.empty() && !isAnySeen(object, named.candidates)) {
                add(object, property, named, names);
            }
        }
    }

    /// Whichever of several is meant, it is hidden when all are.
    bool isAnySeen(VEX_HANDLE reader, std::span<VEX_HANDLE const> candidates) {
        auto const before = [](VEX_HANDLE a, VEX_HANDLE b) { return a.Number() < b.Number(); };
        if (std::binary_search(candidates.begin(), candidates.end(), reader, before)) {
            return true;
        }
        auto const [known, isNew] = m_anySeen.try_emplace(candidates.data());
        if (isNew) {
            known->second = std::any_of(candidates.begin(), candidates.end(), m_canSee);
        }
        return known->second;
    }

    /// Gives in `names` those that were looked for.
    ResolvedNames resolveExpression(VEX_HANDLE object, TextReference const& reference,
                                    NameResolution::Names& names) {
        if (!reference.before().empty()) {
            ResolvedNames const named = m_names.resolveFor(object, reference.allNames());
            if (named.used == reference.allNames().size()) {
                names = reference.allNames();
                return named;
            }
        }
        return m_names.resolveFor(object, reference.names());
    }

    void add(VEX_HANDLE object, I18NString const& property, ResolvedNames const& named,
             NameResolution::Names names) {
        VEX_HANDLE const first = named.candidates.front();
        if (m_namedHere.insert(first).second) {
            m_found.push_back({object, property, first, referenceOf(names.first(named.used)),
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
    std::unordered_map<VEX_HANDLE const*, bool> m_anySeen; // of lists of candidates
    std::unordered_set<VEX_HANDLE> m_valuesHere;           // of the property at hand, looked at
    std::unordered_set<VEX_HANDLE> m_namedHere;            // by it
};

} // namespace

std::vector<NamedObject> objectsNamedIn(Model const& model, I18NString const& text) {
    NameResolution resolution(model);
    std::vector<NamedObject> found;
    TextReferences references(text);
    while (TextReference const* const reference = references.next()) {
        NameResolution::Names const names = reference->names();
        ResolvedNames const named = resolution.resolve(names);
        if (!named.candidates.empty()) {
            found.push_back({named.candidates.front(), referenceOf(names.first(named.used))});
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
