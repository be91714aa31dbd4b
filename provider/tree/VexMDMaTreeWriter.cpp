#include "provider/tree/VexMDMaTreeWriter.h"

#include "KRLIDOM_Helper.h"
#include "model/VexClassNames.h"
#include "model/VexCollections.h"
#include "model/VexFailure.h"
#include "model/VexMDMaProviderUtility.h"
#include "provider/VexConstants.h"
#include "provider/request/VexMDMaProviderHelper.h"
#include "provider/tree/VexElementReference.h"
#include "provider/tree/VexMDMaProviderVisability.h"
#include "provider/tree/VexMDMaTreeObject.h"
#include "resources.h"
#include "security/VexMDAccessEngine.h"

namespace {

// Far beyond any model, and reached before the call stack ends.
constexpr int maximumLevel = 1024;

} // namespace

/// A level of members in use while this lives.
class VexMDMaTreeWriter::OpenLevel {
public:
    explicit OpenLevel(VexMDMaTreeWriter& writer) : m_writer(writer) {
        if (writer.m_openLevels == writer.m_levels.size()) {
            writer.m_levels.emplace_back();
        }
        m_level = &writer.m_levels[writer.m_openLevels++];
    }
    OpenLevel(OpenLevel const&) = delete;
    OpenLevel& operator=(OpenLevel const&) = delete;
    ~OpenLevel() { --m_writer.m_openLevels; }

    Level* operator->() const { return m_level; }

private:
    VexMDMaTreeWriter& m_writer;
    Level* m_level;
};

VexMDMaTreeWriter::VexMDMaTreeWriter(VexTreeContext const& context, VexTreeStart const& start)
    : m_context(context), m_pathHoldsElement(start.pathHoldsElement), m_selections(context.helper),
      m_startRecords(start.path), m_start(placeOf(start)) {}

VexTreePlace VexMDMaTreeWriter::placeOf(VexTreeStart const& start) {
    VexPathRecord const* const records = m_startRecords.front();
    VexTreeTexts texts{
        m_paths.put({}, start.pathText.view()), records, NeedsModelSearch(records), {}};
    if (!texts.searched) {
        I18NString reference;
        GetReferenceForElement(m_context.model, records, reference);
        texts.reference = m_references.put({}, reference.view());
    }
    return {start.className,     texts,         start.parent, start.level,
            start.skipViewLists, start.isStart, nullptr,      {}};
}

void VexMDMaTreeWriter::writeObjects(Vex_Handle_Collection const& objects) {
    checkLevel(m_start);
    for (VEX_HANDLE const object : objects) {
        writeObject(object);
    }
}

void VexMDMaTreeWriter::writeObject(VEX_HANDLE object) {
    if (m_start.className == VexClass::Shortcut) {
        writeShortcut(m_start, object, true);
    } else {
        writeReached(m_start, m_selections.propertiesOf(m_start.className), object);
    }
}

void VexMDMaTreeWriter::writeMembersOfClass(VexTreePlace const& place,
                                            Vex_Handle_Collection const& objects) {
    checkLevel(place);
    if (place.className == VexClass::Shortcut) {
        for (VEX_HANDLE const object : objects) {
            writeShortcut(place, object, true);
        }
        return;
    }
    VexPropertySelection& requested = m_selections.propertiesOf(place.className);
    // An object with a path has an attribute, and an element, whatever it is; then one
    // that is not shown need not be read.
    bool const isWritten = requested.hasPath &&
                           (!requested.hasReference || !place.texts.searched) &&
                           KRLIDOM_Helper::isName(place.className);
    for (VEX_HANDLE const object : objects) {
        if (isWritten) {
            writeMember(place, requested, object);
        } else {
            writeReached(place, requested, object);
        }
    }
}

void VexMDMaTreeWriter::checkLevel(VexTreePlace const& place) const {
    if (place.level > maximumLevel) {
        RaiseFailure(VexFailure::OutputTooDeep, {I18NString(m_paths.view(place.texts.path))});
    }
}

void VexMDMaTreeWriter::writeReached(VexTreePlace const& place, VexPropertySelection& requested,
                                     VEX_HANDLE handle) {
    I18NString className;
    VexMDMaProviderUtility::GetName(handle, className);
    Object object(handle, className, place.texts);
    if (!KRLIDOM_Helper::isName(object.tag())) {
        reportLeftOut(place, handle, VexTreeTreatment::WithoutAttributes, VexTreeMembers::LeftOut);
        return; // nor is one that no element can be named after
    }
    // The element is made only when it is shown; until then its attributes wait.
    if (!collectAttributes(place, requested, object)) {
        reportLeftOut(place, handle, VexTreeTreatment::WithoutAttributes, VexTreeMembers::LeftOut);
        return; // an object without attributes is left out with all its members
    }
    bool const shown = isShown(place, handle);
    KRLIDOM_Element element;
    if (shown) {
        element = makeElement(object.tag());
        for (std::size_t index = 0; index < m_attributeCount; ++index) {
            setAttribute(element, *m_attributes[index].name, m_attributes[index].value);
        }
    }
    finish(place, object, shown, element);
}

void VexMDMaTreeWriter::writeMember(VexTreePlace const& place, VexPropertySelection& requested,
                                    VEX_HANDLE handle) {
    bool const shown = isShown(place, handle);
    if (!shown && !VexMDMaProviderUtility::hasChildObjects(handle)) {
        reportLeftOut(place, handle, VexTreeTreatment::NotIncluded, VexTreeMembers::Lifted);
        return;
    }
    // A member's class is the name of the collection that it was reached in.
    Object object(handle, place.className, place.texts);
    readName(object);
    KRLIDOM_Element element;
    if (shown) {
        element = makeElement(object.tag());
    }
    for (VexSelectedProperty& property : requested.properties) {
        bool const reachesMembers = property.kind == VexSelectedProperty::Kind::Path ||
                                    property.kind == VexSelectedProperty::Kind::Reference;
        if (!shown && !reachesMembers) {
            continue;
        }
        I18NString read;
        I18NString const& value = readValue(place, object, property, read);
        if (shown && !value.empty() && property.isXmlName) {
            setAttribute(element, property.name, value);
        }
    }
    finish(place, object, shown, element);
}

void VexMDMaTreeWriter::finish(VexTreePlace const& place, Object const& object, bool shown,
                               KRLIDOM_Element const& element) {
    VexTreeSurroundings around = place.around;
    VexReported reported;
    if (m_context.observation != nullptr) {
        reported = reportObject(place, object, shown);
        around.container = reported.number;
    }
    KRLIDOM_Node parent = place.parent; // of the members of an object that is not shown
    if (shown) {
        parent.appendChild(element);
        if (!descends(place.level)) {
            return;
        }
        parent = element;
    }
    if (!reported.membersRefused && VexMDMaProviderUtility::hasChildObjects(object.handle)) {
        writeMembers({object.className, object.texts, parent, place.levelBelow(),
                      place.skipViewLists, false, place.expansion, around},
                     object.handle, object.tag());
    }
}

bool VexMDMaTreeWriter::isShown(VexTreePlace const& place, VEX_HANDLE object) {
    I18NString id;
    VexMDMaProviderUtility::GetId(object, id);
    if (m_context.engine.IsIncluded(id, place.skipViewLists)) {
        return true;
    }
    VEX_HANDLE copy = object;
    bool const visible = place.className == resources::getString(resources::Namespace) &&
                         m_context.visibility.IsVisible(copy) == VexMDMaProviderVisability::Visible;
    return visible || place.isStart;
}

void VexMDMaTreeWriter::writeMembers(VexTreePlace const& place, VEX_HANDLE object,
                                     I18NString const& tag) {
    // By the tag, not by the class under which the object was reached.
    VexCollectionSelection const& requested = m_selections.collectionsOf(tag);
    std::list<I18NString> allNames;
    if (requested.all) {
        Vex_Handle_Collection properties;
        VexMDMaProviderUtility::Properties(object, properties, nullptr, nullptr, false);
        ListCollections(properties, allNames);
    }
    // `loadCollection` goes through all the children for each name: a whole tree took a
    // seventh longer. The provider's `processShortCut` begins a tree of its own, which
    // knows of no expansion under way.
    OpenLevel const level(*this);
    level->members.read(object);
    for (I18NString const& name : requested.all ? allNames : requested.names) {
        level->collection.clear();
        level->members.appendOfClass(name, level->collection);
        if (level->collection.empty()) {
            continue;
        }
        if (name == VexClass::Shortcut) {
            for (VEX_HANDLE const shortcut : level->collection) {
                writeShortcut(place, shortcut, false);
            }
        } else {
            writeMembersOfClass({name, place.texts, place.parent, place.level, place.skipViewLists,
                                 false, place.expansion, place.around},
                                level->collection);
        }
    }
}

// Reads the target's members once, as the members of any object are read: `loadCollection`
// would go through all of them for each name.
void VexMDMaTreeWriter::writeTargetMembers(VexTreePlace const& place, VEX_HANDLE target,
                                           std::list<I18NString> const& collections) {
    OpenLevel const level(*this);
    level->members.read(target);
    for (I18NString const& name : collections) {
        level->collection.clear();
        level->members.appendOfClass(name, level->collection);
        if (!level->collection.empty()) {
            writeMembersOfClass({name, place.texts, place.parent, place.level, place.skipViewLists,
                                 false, place.expansion, place.around},
                                level->collection);
        }
    }
}

void VexMDMaTreeWriter::writeShortcut(VexTreePlace const& place, VEX_HANDLE shortcut,
                                      bool atStart) {
    KRLIDOM_Node const element = shortcutElement(place, shortcut, atStart);
    if (!element.isNull()) {
        place.parent.appendChild(element);
    }
}
