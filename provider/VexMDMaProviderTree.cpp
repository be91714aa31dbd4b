// Tree output as the provider's interface offers it.

#include "VexSession.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexShortcutTarget.h"
#include "provider/VexMDMaProvider.h"
#include "provider/tree/VexMDMaTreeWriter.h"
#include "provider/tree/VexPathRecords.h"

void VexMDMaProvider::GetRequestedElementTreeAtLevel(
    VexMDMaProviderHelper const& helper, I18NString const& className, I18NString const& startPath,
    VexMDMaPath const& path, int depth, I18NLocale const* locale, KRLIDOM_Node parent,
    Vex_Handle_Collection& objects, VexMDAccessEngine& engine,
    VexMDMaProviderVisability& visibility, int level, bool pathHoldsElement, bool skipViewLists,
    bool isStart) {
    VexPathRecords const records(path);
    VexTreeRequest const request{helper, depth, locale, engine, visibility, pathHoldsElement};
    VexMDMaTreeWriter writer(*this, *m_session, m_document, request);
    writer.writeObjects(writer.placeOf({className, startPath, records.front(), parent, level,
                                        skipViewLists, isStart}),
                        objects);
}

void VexMDMaProvider::AddRequestedSubtreeAtLevel(
    VexMDMaProviderHelper const& helper, I18NString const& className, I18NString const& startPath,
    VexMDMaPath const& path, int depth, I18NLocale const* locale, KRLIDOM_Node parent,
    VEX_HANDLE object, VexMDAccessEngine& engine, VexMDMaProviderVisability& visibility, int level,
    bool pathHoldsElement, bool skipViewLists, bool isStart) {
    VexPathRecords const records(path);
    VexTreeRequest const request{helper, depth, locale, engine, visibility, pathHoldsElement};
    VexMDMaTreeWriter writer(*this, *m_session, m_document, request);
    writer.writeObject(writer.placeOf({className, startPath, records.front(), parent, level,
                                       skipViewLists, isStart}),
                       object);
}

KRLIDOM_Node VexMDMaProvider::processShortCut(VexMDMaProviderHelper const& helper,
                                              VEX_HANDLE shortcut, I18NString const& parentPath,
                                              VexMDMaPath const& path, int const& depth, int level,
                                              I18NLocale const* locale, VexMDAccessEngine& engine,
                                              VexMDMaProviderVisability& visibility,
                                              bool pathHoldsElement, bool atStart) {
    VexPathRecords const records(path);
    VexTreeRequest const request{helper, depth, locale, engine, visibility, pathHoldsElement};
    I18NString const className; // plays no part in a shortcut's output
    VexMDMaTreeWriter writer(*this, *m_session, m_document, request);
    return writer.shortcutElement(writer.placeOf({className, parentPath, records.front(),
                                                  KRLIDOM_Node(), level, true, false}),
                                  shortcut, atStart);
}

void VexMDMaProvider::FindShortcutReference(I18NString const& name, VEX_HANDLE& shortcut,
                                            I18NString& targetClass) {
    VEX_HANDLE const target =
        FindShortcutTarget(m_session->GetObjectStore(), shortcut, VexTargetRule::FirstDecides,
                           VexFailure::ShortcutTargetUnknown, &name);
    if (target.IsNotNull()) {
        VexMDMaProviderUtility::GetName(target, targetClass);
    }
    shortcut = target;
}
