// Tree output, and what it asks about elements, as the provider's interface offers
// them.

#include "model/VexParentNamespace.h"
#include "model/VexShortcutTarget.h"
#include "provider/VexConstants.h"
#include "provider/VexMDMaProvider.h"
#include "provider/tree/VexElementReference.h"
#include "provider/tree/VexMDMaTreeWriter.h"
#include "provider/tree/VexObjectReference.h"
#include "provider/tree/VexPathRecords.h"
#include "provider/tree/VexReducedTree.h"

void VexMDMaProvider::GetRequestedElementTreeAtLevel(
    VexMDMaProviderHelper const& helper, I18NString const& className, I18NString const& startPath,
    VexMDMaPath const& path, int depth, I18NLocale const* locale, KRLIDOM_Node parent,
    Vex_Handle_Collection& objects, VexMDAccessEngine& engine,
    VexMDMaProviderVisability& visibility, int level, bool pathHoldsElement, bool skipViewLists,
    bool isStart) {
    VexTreeContext const context = treeContext(helper, depth, locale, engine, visibility);
    VexMDMaTreeWriter(context, {className, startPath, path, parent, level, pathHoldsElement,
                                skipViewLists, isStart})
        .writeObjects(objects);
}

void VexMDMaProvider::AddRequestedSubtreeAtLevel(
    VexMDMaProviderHelper const& helper, I18NString const& className, I18NString const& startPath,
    VexMDMaPath const& path, int depth, I18NLocale const* locale, KRLIDOM_Node parent,
    VEX_HANDLE object, VexMDAccessEngine& engine, VexMDMaProviderVisability& visibility, int level,
    bool pathHoldsElement, bool skipViewLists, bool isStart) {
    VexTreeContext const context = treeContext(helper, depth, locale, engine, visibility);
    VexMDMaTreeWriter(context, {className, startPath, path, parent, level, pathHoldsElement,
                                skipViewLists, isStart})
        .writeObject(object);
}

KRLIDOM_Node VexMDMaProvider::processShortCut(VexMDMaProviderHelper const& helper,
                                              VEX_HANDLE shortcut, I18NString const& parentPath,
                                              VexMDMaPath const& path, int const& depth, int level,
                                              I18NLocale const* locale, VexMDAccessEngine& engine,
                                              VexMDMaProviderVisability& visibility,
                                              bool pathHoldsElement, bool atStart) {
    VexTreeContext const context = treeContext(helper, depth, locale, engine, visibility);
    I18NString const className; // plays no part in a shortcut's output
    return VexMDMaTreeWriter(context, {className, parentPath, path, KRLIDOM_Node(), level,
                                       pathHoldsElement, true, false})
        .shortcutElement(shortcut, atStart);
}

void VexMDMaProvider::FindShortcutReference(I18NString const& name, VEX_HANDLE& shortcut,
                                            I18NString& targetClass) {
    ::FindShortcutReference(*m_session, name, shortcut, targetClass);
}

void VexMDMaProvider::GetReferenceForElement(I18NLocale const* locale, VexMDMaPath& path,
                                             I18NString& reference) {
    ::GetReferenceForElement(modelScope(locale), VexPathRecords(path).front(), reference);
}

void VexMDMaProvider::BuildObjectReference(NameParts const& parts, I18NString& reference) {
    ::BuildObjectReference(parts, reference);
}

bool VexMDMaProvider::IsNamespaceOrShortcutToNamespace(I18NLocale const* locale,
                                                       I18NString const& className,
                                                       I18NString const& name,
                                                       I18NString& namespaceName) {
    return ::IsNamespaceOrShortcutToNamespace(modelScope(locale), className, name, namespaceName);
}

void VexMDMaProvider::FindParentNamespace([[maybe_unused]] I18NLocale const* locale,
                                          VEX_HANDLE& element) {
    element = ::FindParentNamespace(element);
}

bool VexMDMaProvider::IsQuerySubjectOrQueryItemOrFilterOrCalculation(
    I18NString const& className, [[maybe_unused]] I18NString const& name) {
    return RecordRoleOf(className) == VexRecordRole::Named;
}

bool VexMDMaProvider::IsShortcutToQSFilterCalculation(I18NLocale const* locale,
                                                      I18NString const& className,
                                                      I18NString const& name) {
    return ::IsShortcutToQSFilterCalculation(modelScope(locale), className, name);
}

void VexMDMaProvider::GetReducedElementTree(VEX_HANDLE object, I18NLocale const* locale,
                                            KRLIDOM_Node parent) {
    WriteReducedTree(object, locale, parent);
}

void VexMDMaProvider::AddSubtree(VEX_HANDLE object, I18NLocale const* locale,
                                 KRLIDOM_Element parent) {
    WriteReducedSubtree(object, locale, parent);
}

VexTreeContext VexMDMaProvider::treeContext(VexMDMaProviderHelper const& helper, int depth,
                                            I18NLocale const* locale, VexMDAccessEngine& engine,
                                            VexMDMaProviderVisability& visibility) const {
    return {modelScope(locale), m_document, helper, depth, engine, visibility, m_observation};
}
