#pragma once

#include "model/VexMDMaModelElementInfo.h"

#include <deque>

/// What the record of an element means for a reference.
enum class VexRecordRole {
    Other,     // nothing: folders and the like
    Named,     // one more name
    Outermost, // a namespace: the reference begins with its name
    Shortcut,  // only a search of the model tells
};

VexRecordRole RecordRoleOf(I18NString const& className);

/// The records of a path as the tree output hands them down: each object puts
/// its record in front of its container's, which it shares instead of copying.
/// The strings belong to whoever made the record and outlive it.
struct VexPathRecord {
    I18NString const* name;
    I18NString const* className;
    VexPathRecord const* outer; // null at the outermost record
};

/// True when the model has to be searched for the reference that the records
/// make up.
bool NeedsModelSearch(VexPathRecord const* records);

/// A list of path records in that form. The list must outlive this.
class VexPathRecords {
public:
    explicit VexPathRecords(VexMDMaPath const& path) {
        for (auto element = path.rbegin(); element != path.rend(); ++element) {
            VexPathRecord const* const outer = front();
            m_records.push_back({&element->name, &element->className, outer});
        }
    }
    VexPathRecords(VexPathRecords const&) = delete;
    VexPathRecords& operator=(VexPathRecords const&) = delete;

    /// The innermost record; null for an empty path.
    VexPathRecord const* front() const { return m_records.empty() ? nullptr : &m_records.back(); }

private:
    std::deque<VexPathRecord> m_records; // a deque keeps earlier records in place
};
