#include "host/insight/NameResolution.h"

#include "VexObject.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/ReferenceText.h"

namespace vex {

namespace {

using Names = std::vector<std::u16string>;

I18NString referenceOf(Names const& names) {
    I18NString reference;
    for (std::u16string const& name : names) {
        appendToReference(reference, name);
    }
    return reference;
}

bool isFolder(VEX_HANDLE object) {
    I18NString const cls = classOf(object);
    return cls == "folder" || cls == "queryItemFolder";
}

Names namesOf(Model const& model, VEX_HANDLE object) {
    I18NString reference;
    Names names;
    if (model.getReference(object, reference)) {
        splitReference(reference, names);
    }
    return names;
}

bool standsIn(VEX_HANDLE object, VEX_HANDLE container) {
    for (VEX_HANDLE at = object; at.IsNotNull(); at = VexObject(at).GetParent()) {
        if (at == container) {
            return true;
        }
    }
    return false;
}

} // namespace

VEX_HANDLE NameResolution::find(Names const& names) const {
    return m_model.GetObjectByReference(referenceOf(names), 0);
}

/// Goes from name to name: references leave folders out, and go on from the target of
/// a shortcut.
ResolvedNames NameResolution::follow(Names const& scope, Names const& names) const {
    Names reference = scope;
    ResolvedNames found;
    for (std::size_t number = 0; number < names.size(); ++number) {
        reference.push_back(names[number]);
        VEX_HANDLE object = find(reference);
        if (!object.IsNotNull() && reference.size() > 1) { // a namespace in another one has
            Names const alone{names[number]};              // a reference of its own
            VEX_HANDLE const nested = find(alone);
            bool const isInside = nested.IsNotNull() && !found.candidates.empty() &&
                                  standsIn(nested, found.candidates.front());
            if (isInside) {
                object = nested;
                reference = alone;
            }
        }
        if (!object.IsNotNull()) {
            break;
        }
        found.candidates = {object};
        found.used = number + 1;
        if (isFolder(object)) {
            reference.pop_back();
        } else if (number + 1 < names.size() && classOf(object) == "shortcut") {
            VEX_HANDLE const target = targetOf(m_model, object);
            if (!target.IsNotNull()) {
                break;
            }
            reference = namesOf(m_model, target);
        }
    }
    found.reference =
        referenceOf({names.begin(), names.begin() + static_cast<std::ptrdiff_t>(found.used)});
    return found;
}

ResolvedNames NameResolution::resolve(Names const& names) const {
    VEX_HANDLE const whole = find(names);
    if (whole.IsNotNull()) {
        return {{whole}, names.size(), referenceOf(names)};
    }
    return follow({}, names);
}

std::vector<Names> NameResolution::scopesOf(VEX_HANDLE reader) const {
    std::vector<Names> scopes;
    for (VEX_HANDLE at = VexObject(reader).GetParent(); at.IsNotNull();
         at = VexObject(at).GetParent()) {
        if (!isFolder(at)) {
            Names names = namesOf(m_model, at);
            if (!names.empty()) {
                scopes.push_back(std::move(names));
            }
        }
    }
    return scopes;
}

ResolvedNames NameResolution::resolveFor(VEX_HANDLE reader, Names const& names) {
    ResolvedNames best = resolve(names);
    if (best.used == names.size()) {
        return best;
    }
    for (Names const& scope : scopesOf(reader)) {
        ResolvedNames relative = follow(scope, names);
        if (relative.used > best.used) {
            best = std::move(relative);
        }
        if (best.used == names.size()) {
            return best;
        }
    }
    if (names.size() != 1) {
        return best;
    }
    buildIndex();
    for (VEX_HANDLE space = namespaceAround(reader); space.IsNotNull();
         space = namespaceAround(space)) {
        Named const& named = m_inNamespaces[space];
        auto const found = named.find(names.front());
        if (found != named.end()) {
            return {found->second, 1, referenceOf(names)};
        }
    }
    return best;
}

bool NameResolution::isOutsideName(std::u16string const& name) {
    buildIndex();
    return m_outside.contains(name);
}

void NameResolution::buildIndex() {
    if (m_isIndexed) {
        return;
    }
    m_isIndexed = true;
    I18NLocale const locale = m_model.defaultLocale();
    for (std::size_t number = 1; number < m_model.elementCount(); ++number) {
        VEX_HANDLE const object = m_model.getElement(number);
        I18NString const name = nameIn(locale, object);
        if (name.empty()) {
            continue;
        }
        std::u16string text(name.view());
        VEX_HANDLE const space = namespaceAround(object);
        if (space.IsNotNull()) {
            m_inNamespaces[space][std::move(text)].push_back(object);
        } else if (classOf(object) != "namespace") {
            m_outside.insert(std::move(text));
        }
    }
}

} // namespace vex
