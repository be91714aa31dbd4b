#pragma once

#include "KRLIDOM_Element.h"
#include "VEX_HANDLE.h"
#include "VexTreeExplanation.h"
#include "Vex_Handle_Collection.h"
#include "model/VexMembers.h"
#include "provider/request/VexClassSelections.h"
#include "provider/tree/VexNestedText.h"
#include "provider/tree/VexPathRecords.h"
#include "provider/tree/VexTreeContext.h"

#include <deque>
#include <limits>
#include <map>
#include <vector>

/// The shortcuts whose expansion is under way, innermost first.
struct VexExpansion {
    VEX_HANDLE shortcut;
    VexExpansion const* outer;
};

/// What was reported about an object.
struct VexReported {
    std::size_t number = VexTreeReport::None;
    bool membersRefused = false; // by the observer
};

/// What an observed tree has reported about the surroundings of a place.
struct VexTreeSurroundings {
    std::size_t container = VexTreeReport::None;
    std::size_t shortcut = VexTreeReport::None;
};

/// Where a tree starts.
struct VexTreeStart {
    I18NString const& className; // under which the objects were reached
    I18NString const& pathText;
    VexMDMaPath const& path;
    KRLIDOM_Node parent;   // under which the tree is written
    int level;             // 1: start objects
    bool pathHoldsElement; // the path begins with the start object's own record
    bool skipViewLists;
    bool isStart;
};

/// What a container hands to its members for "_path" and "_ref".
struct VexTreeTexts {
    VexNestedText::Part path;
    VexPathRecord const* records;
    bool searched;                 // the reference takes a search of the model each time
    VexNestedText::Part reference; // the records' reference, unless it is searched
};

/// Where in the tree objects are written.
struct VexTreePlace {
    I18NString const& className; // under which the objects were reached
    VexTreeTexts texts;          // the container's, or the start's
    KRLIDOM_Node parent;
    int level; // 1: start objects
    bool skipViewLists;
    bool isStart;
    VexExpansion const* expansion;
    VexTreeSurroundings around;

    /// A caller may begin at any level, the last that there is too.
    int levelBelow() const { return level < std::numeric_limits<int>::max() ? level + 1 : level; }
};

/// Writes the requested tree into the response: an element for each object,
/// its members below it, level by level. Used for one tree and dropped.
class VexMDMaTreeWriter {
public:
    /// What the two refer to must outlive the writer.
    VexMDMaTreeWriter(VexTreeContext const& context, VexTreeStart const& start);

    /// Writes what the tree starts at. Raises when that is past the last level; a
    /// single object is written at any, its members are not.
    void writeObjects(Vex_Handle_Collection const& objects);
    void writeObject(VEX_HANDLE object);

    /// The element of a shortcut that the tree starts at, not appended yet; null
    /// when it is not written.
    KRLIDOM_Node shortcutElement(VEX_HANDLE shortcut, bool atStart) {
        return shortcutElement(m_start, shortcut, atStart);
    }

private:
    struct Attribute {
        I18NString const* name;
        I18NString value;
    };
    /// The members of an object while they are written.
    struct Level {
        VexMembers members;
        Vex_Handle_Collection collection;
    };
    class Object;
    class OpenLevel;

    VexTreePlace placeOf(VexTreeStart const& start);
    /// The objects are of the place's class.
    void writeMembersOfClass(VexTreePlace const& place, Vex_Handle_Collection const& objects);
    void checkLevel(VexTreePlace const& place) const;
    void writeReached(VexTreePlace const& place, VexPropertySelection& requested,
                      VEX_HANDLE object);
    void writeMember(VexTreePlace const& place, VexPropertySelection& requested, VEX_HANDLE object);
    void finish(VexTreePlace const& place, Object const& object, bool shown,
                KRLIDOM_Element const& element);
    bool collectAttributes(VexTreePlace const& place, VexPropertySelection& requested,
                           Object& object);
    /// The property's value; `value` holds it unless the object does.
    I18NString const& readValue(VexTreePlace const& place, Object& object,
                                VexSelectedProperty& property, I18NString& value);
    void readName(Object& object);
    bool isWithheld(VexSelectedProperty const& property, I18NString const& value) const;
    I18NString& nextValue(I18NString const& name);
    bool isShown(VexTreePlace const& place, VEX_HANDLE object);
    void writeMembers(VexTreePlace const& place, VEX_HANDLE object, I18NString const& tag);
    void writeShortcut(VexTreePlace const& place, VEX_HANDLE shortcut, bool atStart);
    /// `place` is the shortcut's container's.
    KRLIDOM_Node shortcutElement(VexTreePlace const& place, VEX_HANDLE shortcut, bool atStart);
    /// The members of a shortcut's target, into the shortcut's element.
    void writeTargetMembers(VexTreePlace const& place, VEX_HANDLE target,
                            std::list<I18NString> const& collections);
    void setShortcutAttributes(KRLIDOM_Element const& element, VexPropertySelection& selected,
                               VEX_HANDLE shortcut, VEX_HANDLE target, I18NString const& name,
                               I18NString const& pathText, I18NString const& reference);
    /// The element, or null when nothing is built.
    KRLIDOM_Element makeElement(I18NString const& tag) const;
    void setAttribute(KRLIDOM_Element const& element, I18NString const& name,
                      I18NString const& value) const;
    /// @{
    /// Only when the tree is observed.
    VexReported reportObject(VexTreePlace const& place, Object const& object, bool shown) const;
    VexReported reportShortcut(VexTreePlace const& place, VEX_HANDLE shortcut, VEX_HANDLE target,
                               I18NString const& tag, bool endless) const;
    /// @}
    /// Does nothing unless the tree is observed.
    void reportLeftOut(VexTreePlace const& place, VEX_HANDLE object, VexTreeTreatment treatment,
                       VexTreeMembers members) const;
    bool descends(int level) const { return m_context.depth == 0 || level < m_context.depth; }
    /// `name` stays as it is.
    void readProperty(VEX_HANDLE object, I18NString& name, I18NString& value) const;
    I18NString& nameKey();
    VexPropertySelection attributesOf(VEX_HANDLE object);

    VexTreeContext const& m_context;
    bool m_pathHoldsElement;
    VexClassSelections m_selections;
    std::map<I18NString, I18NString> m_constraints; // of the start object being written
    std::vector<Attribute> m_attributes;            // of the object being written
    std::size_t m_attributeCount = 0;               // slots are used again, not freed
    VexNestedText m_paths;
    VexNestedText m_references;
    std::deque<Level> m_levels; // those in use first; the others wait to be used again
    std::size_t m_openLevels = 0;
    I18NString m_nameKey; // the name property's, as it was fetched last
    VexPathRecords m_startRecords;
    VexTreePlace m_start;
};
