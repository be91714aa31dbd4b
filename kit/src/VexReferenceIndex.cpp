#include "VexReferenceIndex.h"

#include "I18NHash.h"
#include "VexObject.h"
#include "VexReferenceNames.h"
#include "host/store/image/StoreData.h"
#include "resources.h"

#include <algorithm>
#include <optional>
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

/// The hash of the names down to an element; nothing outside of every namespace.
using PrefixHash = std::optional<std::uint64_t>;

PrefixHash hashBelow(PrefixHash prefix, Part part, I18NString const& name) {
    if (part == Part::Namespace) {
        return vex::firstReferenceHash(name.view(), I18NHashSeed());
    }
    return prefix ? PrefixHash(vex::nextReferenceHash(*prefix, name.view(), I18NHashSeed()))
                  : std::nullopt;
}

/// An element whose members are being read.
struct OpenElement {
    Vex_Handle_Collection members;
    std::size_t next = 0;
    PrefixHash prefix;
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
        PrefixHash const prefix = innermost.prefix;
        Part const part = partOf(element);
        PrefixHash const own = hashBelow(prefix, part, nameOf(element, m_locale));
        if (own) {
            add(*own, element);
        }
        OpenElement inside;
        inside.prefix = part == Part::LeftOut ? prefix : own;
        VexObject(element).childObjects(inside.members, nullptr, nullptr);
        if (!inside.members.empty()) {
            open.push_back(std::move(inside));
        }
    }
}

// The first of a reference stays.
void VexReferenceIndex::add(std::uint64_t hash, VEX_HANDLE element) {
    auto const [first, last] = m_objects.equal_range(hash);
    if (first != last) {
        std::vector<I18NString> const names = namesFromTheLast(element, m_locale);
        if (std::any_of(first, last, [&](auto const& known) {
                return namesFromTheLast(known.second, m_locale) == names;
            })) {
            return;
        }
    }
    m_objects.emplace(hash, element);
}

VEX_HANDLE VexReferenceIndex::find(I18NString const& reference) const {
    std::vector<I18NString> names;
    if (!VexSplitReference(reference, names) || names.empty()) {
        return VEX_HANDLE();
    }
    std::uint64_t const seed = I18NHashSeed();
    std::uint64_t hash = vex::firstReferenceHash(names.front().view(), seed);
    for (auto name = names.begin() + 1; name != names.end(); ++name) {
        hash = vex::nextReferenceHash(hash, name->view(), seed);
    }
    std::reverse(names.begin(), names.end());
    auto const [first, last] = m_objects.equal_range(hash);
    auto const found = std::find_if(first, last, [&](auto const& known) {
        return namesFromTheLast(known.second, m_locale) == names;
    });
    return found == last ? VEX_HANDLE() : found->second;
}

bool VexReferenceIndex::getReference(VEX_HANDLE element, I18NString& reference) const {
    std::vector<I18NString> const names = namesFromTheLast(element, m_locale);
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        VexAppendToReference(reference, *name);
    }
    return !names.empty();
}
