// Shortcuts in the tree: the target's element under the shortcut's own name.

#include "KRLIDOM_Helper.h"
#include "VexSession.h"
#include "model/VexClassNames.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexShortcutTarget.h"
#include "provider/VexConstants.h"
#include "provider/tree/VexElementReference.h"
#include "provider/tree/VexMDMaTreeWriter.h"
#include "resources.h"

#include <optional>

namespace {

bool isUnderWay(VexExpansion const* expansion, VEX_HANDLE shortcut) {
    for (; expansion != nullptr; expansion = expansion->outer) {
        if (expansion->shortcut == shortcut) {
            return true;
        }
    }
    return false;
}

} // namespace

KRLIDOM_Node VexMDMaTreeWriter::shortcutElement(VexTreePlace const& place, VEX_HANDLE shortcut,
                                                bool atStart) {
    I18NString name;
    readProperty(shortcut, nameKey(), name);
    VEX_HANDLE const target =
        FindShortcutTarget(m_context.model.session.GetObjectStore(), shortcut,
                           VexTargetRule::LastDecides, VexFailure::WrittenShortcutDangling);
    I18NString targetClass;
    VexMDMaProviderUtility::GetName(target, targetClass);
    if (name.empty() || targetClass.empty()) {
        reportLeftOut(place, shortcut, VexTreeTreatment::NothingToStandFor,
                      VexTreeMembers::LeftOut);
        return KRLIDOM_Node();
    }

    static I18NString const shortcutClass(VexClass::Shortcut);
    VexTreeTexts texts = place.texts;
    VexPathRecord const own{&name, &shortcutClass, texts.records};
    if (!atStart) {
        texts.path = m_paths.extend(texts.path, name, true);
        texts.records = &own;
        texts.searched = true;
    }
    I18NString const pathText(m_paths.view(texts.path));
    I18NString reference; // built whether it is asked for or not: it may raise
    GetReferenceForElement(m_context.model, texts.records, reference);

    std::list<I18NString> const& collections = m_selections.collectionsOf(targetClass).names;
    if (targetClass == resources::getString(resources::Namespace)) {
        targetClass = resources::getString(resources::Folder);
    }
    if (!KRLIDOM_Helper::isName(targetClass)) {
        reportLeftOut(place, shortcut, VexTreeTreatment::NothingToStandFor,
                      VexTreeMembers::LeftOut);
        return KRLIDOM_Node(); // no element can be named after it
    }
    KRLIDOM_Element const element = makeElement(targetClass);
    VexPropertySelection& requested = m_selections.propertiesOf(targetClass);
    std::optional<VexPropertySelection> all;
    if (requested.all) {
        all = attributesOf(target);
    }
    setShortcutAttributes(element, all ? *all : requested, shortcut, target, name, pathText,
                          reference);

    // Without a depth, a shortcut that is met inside its own expansion is where
    // the tree would go on for ever. With one, the depth ends it.
    bool const endless = m_context.depth == 0 && isUnderWay(place.expansion, shortcut);
    VexTreeSurroundings around;
    VexReported reported;
    if (m_context.observation != nullptr) {
        reported = reportShortcut(place, shortcut, target, targetClass, endless);
        around = {reported.number, reported.number};
    }
    if (descends(place.level) && !endless && !reported.membersRefused) {
        VexExpansion const expansion{shortcut, place.expansion};
        writeTargetMembers(
            {targetClass, texts, element, place.levelBelow(), true, false, &expansion, around},
            target, collections);
    }
    return element;
}

void VexMDMaTreeWriter::setShortcutAttributes(KRLIDOM_Element const& element,
                                              VexPropertySelection& selected, VEX_HANDLE shortcut,
                                              VEX_HANDLE target, I18NString const& name,
                                              I18NString const& pathText,
                                              I18NString const& reference) {
    using Kind = VexSelectedProperty::Kind;
    // quirk: shortcut-values-pass-from-property-to-property
    // One string for the whole loop, not emptied between properties: one that
    // neither object has repeats what was written before it, and every name is
    // set, with an empty value too. Kept on purpose.
    I18NString value;
    for (VexSelectedProperty& property : selected.properties) {
        I18NString own;
        switch (property.kind) {
        case Kind::Name:
            value = name;
            break;
        case Kind::Path:
            value = pathText;
            break;
        case Kind::Reference:
            value = reference;
            break;
        case Kind::ScreenText:
            readProperty(shortcut, property.name, own);
            if (own.empty()) {
                readProperty(target, property.name, value);
            } else {
                value = own;
            }
            break;
        case Kind::Plain:
            readProperty(target, property.name, value);
            break;
        }
        if (property.isXmlName) {
            setAttribute(element, property.name, value);
        }
    }
}
