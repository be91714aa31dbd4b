#include "VexReferenceIndex.h"

#include "I18NHash.h"
#include "VexObject.h"
#include "VexReferenceNames.h"
#include "host/store/image/StoreData.h"
#include "resources.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

/// What an element is to the references of what stands inside it.
enum class Part { Namespace, LeftOut, Named };

Part partOf(VEX_HANDLE element) {
    I18NString className;
    VexObject(element).GetName(className);
    if (className == resources::getString(resources::Namespace)) {
        return Part::Namespace;
    }
    return className == resources::getString(resources::Folder) ||
                   className == resources::getString(resources::QueryItemFolder)
               ? Part::LeftOut
               : Part::Named;
}

I18NString nameOf(VEX_HANDLE element, I18NLocale const& locale) {
    I18NString name;
    VexObject const property(
        VexObject(element).GetPropertyByName(resources::getString(resources::Name), &locale));
    property.GetValue(name, true);
    return name;
}

/// The names of an element's reference, the last one first; none outside of every
/// namespace.
std::vector<I18NString> namesFromTheLast(VEX_HANDLE element, I18NLocale const& locale) {
    std::vector<I18NString> names;
    for (VEX_HANDLE at = element; at.IsNotNull(); at = VexObject(at).GetParent()) {
        Part const part = partOf(at);
        if (part != Part::LeftOut || at == element) {
            names.push_back(nameOf(at, locale));
        }
        if (part == Part::Namespace) {
            return names;
        }
    }
    return {};
}

std::uint64_t hashOf(VEX_HANDLE before, I18NString const& name) {
    return vex::nextReferenceHash(before.Number(), name.view(), I18NHashSeed());
}

/// An element whose members are being read.
struct OpenElement {
    Vex_Handle_Collection members;
    std::size_t next = 0;
    VEX_HANDLE before; // what their references begin with; null outside of every namespace
};

} // namespace

VexReferenceIndex::VexReferenceIndex(VEX_HANDLE root, I18NLocale const& defaultLocale)
    : m_locale(defaultLocale) {
    std::vector<OpenElement> open(1); // no recursion: models may nest deeply
    open.back().members.push_back(root);
    while (!open.empty()) {
        OpenElement& innermost = open.back();
        if (innermost.next == innermost.members.size()) {
            open.pop_back();
            continue;
        }
        VEX_HANDLE const element = innermost.members[innermost.next++];
        OpenElement inside;
        inside.before = innermost.before;
        Part const part = partOf(element);
        if (part == Part::Namespace) {
            inside.before = findOrAdd({element, VEX_HANDLE()}, nameOf(element, m_locale));
        } else if (inside.before.IsNotNull()) {
            VEX_HANDLE const first = findOrAdd({element, inside.before}, nameOf(element, m_locale));
            inside.before = part == Part::LeftOut ? inside.before : first;
        }
        VexObject(element).childObjects(inside.members, nullptr, nullptr);
        if (!inside.members.empty()) {
            open.push_back(std::move(inside));
        }
    }
}

// What comes before is known by its first element, so that of a long reference only the
// last name is read: comparing costs the same however deeply elements nest.
VEX_HANDLE VexReferenceIndex::findAfter(VEX_HANDLE before, I18NString const& name) const {
    auto const [first, last] = m_entries.equal_range(hashOf(before, name));
    auto const found = std::find_if(first, last, [&](auto const& known) {
        return known.second.before == before && nameOf(known.second.element, m_locale) == name;
    });
    return found == last ? VEX_HANDLE() : found->second.element;
}

// The first of a reference stays.
VEX_HANDLE VexReferenceIndex::findOrAdd(Entry const& entry, I18NString const& name) {
    VEX_HANDLE const known = findAfter(entry.before, name);
    if (known.IsNotNull()) {
        return known;
    }
    m_entries.emplace(hashOf(entry.before, name), entry);
    return entry.element;
}

VEX_HANDLE VexReferenceIndex::find(I18NString const& reference) const {
    std::vector<I18NString> names;
    VEX_HANDLE found;
    if (VexSplitReference(reference, names)) {
        for (std::size_t at = 0; at < names.size() && (at == 0 || found.IsNotNull()); ++at) {
            found = findAfter(found, names[at]);
        }
    }
    return found;
}

bool VexReferenceIndex::getReference(VEX_HANDLE element, I18NString& reference) const {
    std::vector<I18NString> const names = namesFromTheLast(element, m_locale);
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        VexAppendToReference(reference, *name);
    }
    return !names.empty();
}
