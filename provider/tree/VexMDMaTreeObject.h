#pragma once

#include "provider/tree/VexMDMaTreeWriter.h"
#include "resources.h"

#include <forward_list>
#include <optional>

/// The object being written: what was read of it, and the path text and records
/// that it hands to its members. Those are the container's own until "_path" or
/// "_ref" is asked for.
class VexMDMaTreeWriter::Object {
public:
    /// The class name and the container's records must outlive the object.
    Object(VEX_HANDLE object, I18NString const& theClassName, VexTreeTexts const& container)
        : handle(object), className(theClassName), texts(container) {}
    Object(Object const&) = delete;
    Object& operator=(Object const&) = delete;

    VEX_HANDLE const handle;
    I18NString const& className;
    VexTreeTexts texts;
    I18NString name;
    bool isNameRead = false;
    std::optional<VexPropertySelection> allAttributes; // when the request asks for all

    /// The tag of its element.
    I18NString const& tag() const {
        return className == resources::getString(resources::Namespace)
                   ? resources::getString(resources::Folder)
                   : className;
    }

    void extendPath(VexNestedText& paths) { texts.path = paths.extend(texts.path, name, true); }

    void putRecordInFront(VexNestedText& references) {
        m_own.push_front({&name, &className, texts.records});
        texts.records = &m_own.front();
        switch (RecordRoleOf(className)) {
        case VexRecordRole::Other:
            break;
        case VexRecordRole::Shortcut:
            texts.searched = true;
            break;
        case VexRecordRole::Outermost:
            texts.searched = false;
            texts.reference = references.extend(references.put(texts.reference, {}), name, false);
            break;
        case VexRecordRole::Named:
            texts.reference = references.extend(texts.reference, name, !texts.reference.empty());
            break;
        }
    }

private:
    std::forward_list<VexPathRecord> m_own; // more than one when "_ref" is asked for again
};
