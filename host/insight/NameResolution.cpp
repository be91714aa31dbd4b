#include "host/insight/NameResolution.h"

#include "VexObject.h"
#include "host/insight/ObjectReference.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/ReferenceText.h"

#include <algorithm>
#include <tuple>

namespace vex {

I18NString referenceOf(NameResolution::Names names) {
    I18NString reference;
    for (std::u16string_view const name : names) {
        appendToReference(reference, name);
    }
    return reference;
}

bool NameResolution::isFolder(VEX_HANDLE object) const {
    I18NString const cls = classOf(object);
    return cls == "folder" || cls == "queryItemFolder";
}

NameResolution::Place const& NameResolution::placeOf(VEX_HANDLE element) const {
    static Place const none;
    std::size_t const number = numberOf(m_model, element);
    return number < m_places.size() ? m_places[number] : none;
}

bool NameResolution::standsIn(VEX_HANDLE object, VEX_HANDLE container) const {
    for (VEX_HANDLE at = object; at.IsNotNull(); at = VexObject(at).GetParent()) {
        if (at == container) {
            return true;
        }
    }
    return false;
}

NameResolution::Reference NameResolution::continued(Reference before,
                                                    std::u16string_view name) const {
    auto const found = m_references.find({before, name});
    return found == m_references.end() ? Nowhere : found->second;
}

/// The reference that names go on from behind a shortcut; that of no object when its target
/// has none. Nothing for a shortcut without a target.
std::optional<NameResolution::Reference> NameResolution::targetOf(VEX_HANDLE shortcut) {
    auto const [known, isNew] = m_targets.try_emplace(shortcut);
    if (isNew) {
        VEX_HANDLE const target = vex::targetOf(m_model, shortcut);
        if (target.IsNotNull()) {
            known->second = placeOf(target).own;
        }
    }
    return known->second;
}

/// Goes from name to name: references leave folders out, and go on from the target of
/// a shortcut.
ResolvedNames NameResolution::follow(Reference scope, Names names) {
    Reference at = scope;
    ResolvedNames found;
    for (std::size_t number = 0; number < names.size(); ++number) {
        Reference next = continued(at, names[number]);
        if (next == Nowhere && at != Nowhere && !found.candidates.empty()) {
            // A namespace in another one has a reference of its own.
            Reference const alone = continued(Nowhere, names[number]);
            bool const isInside =
                alone != Nowhere && standsIn(m_firsts[alone], found.candidates.front());
            next = isInside ? alone : Nowhere;
        }
        if (next == Nowhere) {
            break;
        }
        VEX_HANDLE const object = m_firsts[next];
        found = {{&m_firsts[next], 1}, number + 1};
        if (isFolder(object)) {
            continue;
        }
        at = next;
        if (number + 1 < names.size() && classOf(object) == "shortcut") {
            std::optional<Reference> const target = targetOf(object);
            if (!target) {
                break;
            }
            at = *target;
        }
    }
    return found;
}

ResolvedNames NameResolution::resolve(Names names) {
    buildIndex();
    Reference whole = Nowhere;
    for (std::u16string_view const name : names) {
        whole = continued(whole, name);
        if (whole == Nowhere) {
            return follow(Nowhere, names);
        }
    }
    return names.empty() ? ResolvedNames() : ResolvedNames{{&m_firsts[whole], 1}, names.size()};
}

ResolvedNames NameResolution::resolveFor(VEX_HANDLE reader, Names names) {
    ResolvedNames best = resolve(names);
    if (best.used == names.size()) {
        return best;
    }
    for (VEX_HANDLE scope = placeOf(reader).scope; scope.IsNotNull();
         scope = placeOf(scope).scope) {
        ResolvedNames const relative = follow(placeOf(scope).own, names);
        if (relative.used > best.used) {
            best = relative;
        }
        if (best.used == names.size()) {
            return best;
        }
    }
    if (names.size() != 1) {
        return best;
    }
    for (VEX_HANDLE space = placeOf(reader).space; space.IsNotNull();
         space = placeOf(space).space) {
        std::span<VEX_HANDLE const> const found = findNamed(space, names.front());
        if (!found.empty()) {
            return {found, 1};
        }
    }
    return best;
}

std::span<VEX_HANDLE const> NameResolution::findNamed(VEX_HANDLE space,
                                                      std::u16string_view name) const {
    auto const [first, last] =
        std::equal_range(m_namedBy.begin(), m_namedBy.end(), std::pair(space.Number(), name));
    return std::span(m_named).subspan(static_cast<std::size_t>(first - m_namedBy.begin()),
                                      static_cast<std::size_t>(last - first));
}

bool NameResolution::isOutsideName(std::u16string_view name) {
    buildIndex();
    return m_outside.contains(name);
}

VEX_HANDLE NameResolution::firstLike(VEX_HANDLE element) {
    buildIndex();
    return m_firsts[placeOf(element).own];
}

std::vector<VEX_HANDLE> NameResolution::firstsLike(Model const& other) {
    buildIndex();
    NameResolution others(other);
    others.buildIndex();
    std::vector<Reference> here(others.m_firsts.size(), Nowhere); // of each reference there
    std::vector<VEX_HANDLE> firsts(other.elementCount());
    for (std::size_t number = 1; number < other.elementCount(); ++number) {
        VEX_HANDLE const object = other.getElement(number);
        Place const& place = others.m_places[number];
        if (place.own == Nowhere) {
            continue;
        }
        if (others.m_firsts[place.own] == object) { // what it continues was met before
            bool const isSpace = classOf(object) == "namespace";
            Reference const before = isSpace ? Nowhere : here[others.placeOf(place.scope).own];
            here[place.own] =
                isSpace || before != Nowhere ? continued(before, nameText(other, object)) : Nowhere;
        }
        firsts[number] = m_firsts[here[place.own]];
    }
    return firsts;
}

NameResolution::Place NameResolution::placeBelow(VEX_HANDLE container) const {
    Place const& around = placeOf(container);
    bool const isSpace = classOf(container) == "namespace";
    bool const isScope = around.own != Nowhere && !isFolder(container);
    return {Nowhere, isScope ? container : around.scope, isSpace ? container : around.space};
}

void NameResolution::buildIndex() {
    if (!m_places.empty()) {
        return;
    }
    std::vector<Named> named;
    m_firsts.emplace_back(); // of no reference
    m_places.reserve(m_model.elementCount());
    m_places.emplace_back(); // of the root
    for (std::size_t number = 1; number < m_model.elementCount(); ++number) {
        VEX_HANDLE const object = m_model.getElement(number);
        std::u16string_view const name = nameText(m_model, object);
        bool const isSpace = classOf(object) == "namespace";
        Place place = placeBelow(VexObject(object).GetParent());
        if (isSpace || place.space.IsNotNull()) {
            Reference const before = isSpace ? Nowhere : placeOf(place.scope).own;
            auto const [known, isNew] =
                m_references.try_emplace({before, name}, static_cast<Reference>(m_firsts.size()));
            if (isNew) {
                m_firsts.push_back(object);
            }
            place.own = known->second;
        }
        m_places.push_back(place);
        if (!name.empty() && place.space.IsNotNull()) {
            named.push_back({place.space.Number(), name, object});
        } else if (!name.empty() && !isSpace) {
            m_outside.insert(name);
        }
    }
    sortNamed(std::move(named));
}

void NameResolution::sortNamed(std::vector<Named> named) {
    std::stable_sort(named.begin(), named.end(), [](Named const& a, Named const& b) {
        return std::tie(a.space, a.name) < std::tie(b.space, b.name);
    });
    m_namedBy.reserve(named.size());
    m_named.reserve(named.size());
    for (Named const& each : named) {
        m_namedBy.emplace_back(each.space, each.name);
        m_named.push_back(each.object);
    }
}

} // namespace vex
