#pragma once

#include "I18NLocale.h"
#include "I18NString.h"
#include "VEX_HANDLE.h"
#include "VexHostExport.h"

#include <cstdint>
#include <unordered_map>

/// Finds the objects of a model by reference: what a host answers
/// `VexObjectStore::GetObjectByReference` from. It reads the model through `VexObject`,
/// so it serves a model of any make.
///
/// The reference of a namespace is its name; that of another element the name of the
/// nearest namespace around it, then the names of what stands between the two, folders
/// and query item folders left out, then its own. Names are those of one locale, the
/// model's default; no name counts as the empty one. Where several elements have one
/// reference, the first in document order answers.
///
/// Takes a few words of memory for each element that has a reference, no text.
/// Threads: any, once it is made.
class VEX_HOST_API VexReferenceIndex {
public:
    /// An index without objects.
    VexReferenceIndex() = default;
    /// Reads all elements below `root`, and `root` itself. Raises what the model
    /// raises.
    VexReferenceIndex(VEX_HANDLE root, I18NLocale const& defaultLocale);

    /// The object with that reference; the null handle when there is none or the text
    /// does not split. Raises what the model raises.
    VEX_HANDLE find(I18NString const& reference) const;

    /// Appends the reference of an element, no property, with each "]" in a name
    /// doubled. False, and nothing appended, for an element outside of every namespace
    /// and for a handle that names nothing. Raises what the model raises.
    bool getReference(VEX_HANDLE element, I18NString& reference) const;

private:
    /// One reference: what comes before its last name is a reference again, or nothing.
    struct Entry {
        VEX_HANDLE element; // the first that has it
        VEX_HANDLE before;  // the first that has what comes before; null for a namespace
    };
    VEX_HANDLE findAfter(VEX_HANDLE before, I18NString const& name) const;
    VEX_HANDLE findOrAdd(Entry const& entry, I18NString const& name);

    I18NLocale m_locale;
    std::unordered_multimap<std::uint64_t, Entry> m_entries; // by the hash of both parts
};
