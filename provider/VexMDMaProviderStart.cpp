// Where a request starts. The searches find it and write nothing; what they found
// is handed to the tree output here.

#include "provider/VexConstants.h"
#include "provider/VexMDMaProvider.h"
#include "provider/start/VexItemSearch.h"
#include "provider/start/VexObjectStart.h"
#include "provider/start/VexReferenceSearch.h"
#include "provider/start/VexReferencedItem.h"
#include "provider/start/VexStartWalk.h"
#include "provider/tree/VexMDMaTreeWriter.h"

void VexMDMaProvider::ProcessRequest(VexMDMaProviderHelper const& helper, NameParts const& parts,
                                     I18NString const& startPath, int const& depth,
                                     I18NLocale const* locale, VexMDAccessEngine& engine,
                                     VexMDMaProviderVisability& visibility, bool isReference,
                                     KRLIDOM_Node parent) {
    Vex_Handle_Collection const namespaces = FindNamespaces(*m_session);
    m_currentRequestValue = Convert2Int(namespaces[0]);
    if (startPath.empty()) {
        NameParts rootParts;
        I18NString const rootPath = PathOfRootNamespace(modelScope(locale), rootParts);
        ProcessRequest(helper, rootParts, rootPath, depth, locale, engine, visibility, isReference,
                       parent);
        return;
    }
    writeStart(FindStart(startContext(locale), helper, namespaces, {parts, startPath, isReference}),
               treeContext(helper, depth, locale, engine, visibility), startPath, parent);
}

void VexMDMaProvider::ProcessRequestAt(VexMDMaProviderHelper const& helper, VEX_HANDLE object,
                                       int depth, I18NLocale const* locale,
                                       VexMDAccessEngine& engine,
                                       VexMDMaProviderVisability& visibility,
                                       KRLIDOM_Node const& parent) {
    m_currentRequestValue = Convert2Int(FindNamespaces(*m_session)[0]);
    I18NString pathText;
    VexFoundStart const start = StartAtObject(locale, object, pathText);
    writeStart(start, treeContext(helper, depth, locale, engine, visibility), pathText, parent);
}

void VexMDMaProvider::ProcessStartAtRefRequest(VexMDMaProviderHelper const& helper,
                                               NameParts const& parts, I18NString const& startPath,
                                               int const& depth, I18NLocale const* locale,
                                               KRLIDOM_Node parent, VexMDAccessEngine& engine,
                                               VexMDMaProviderVisability& visibility,
                                               Vex_Handle_Collection& found) {
    writeStart(FindReferencedStart(startContext(locale), parts, startPath, found),
               treeContext(helper, depth, locale, engine, visibility), startPath, parent);
}

bool VexMDMaProvider::FindReferencedShortcutQI(VexMDMaProviderHelper const& helper,
                                               NameParts const& names, I18NString const& reference,
                                               int const& depth, I18NLocale const* locale,
                                               KRLIDOM_Node node, VexMDAccessEngine& engine,
                                               VexMDMaProviderVisability& visibility,
                                               Vex_Handle_Collection& candidates) {
    VEX_HANDLE const shortcut = FindReferencedShortcut(startContext(locale), names, candidates);
    if (!shortcut.IsNotNull()) {
        return false;
    }
    Vex_Handle_Collection fresh;
    fresh.push_back(shortcut);
    ProcessStartAtRefRequest(helper, names, reference, depth, locale, node, engine, visibility,
                             fresh);
    return true;
}

void VexMDMaProvider::writeStart(std::optional<VexFoundStart> const& start,
                                 VexTreeContext const& context, I18NString const& startPath,
                                 KRLIDOM_Node const& parent) {
    if (start) {
        constexpr int startLevel = 1;
        VexMDMaTreeWriter(context, {start->className, startPath, start->path, parent, startLevel,
                                    start->pathHoldsElement, start->throughShortcut, true})
            .writeObjects(start->objects);
    }
}

bool VexMDMaProvider::FindItemInCollection(NameParts::const_iterator& part,
                                           I18NLocale const* locale, Vex_Handle_Collection& items,
                                           VexMDMaPath& path) {
    return ::FindItemInCollection(startContext(locale), *part, items, path);
}

bool VexMDMaProvider::FindReferencedFilterOrCalculation(NameParts const& names,
                                                        I18NLocale const* locale,
                                                        Vex_Handle_Collection& candidates,
                                                        VexMDMaPath& path) {
    return ::FindReferencedFilterOrCalculation(startContext(locale), names, candidates, path);
}

bool VexMDMaProvider::FindReferencedNamespaces(I18NString const& name, I18NLocale const* locale,
                                               Vex_Handle_Collection& candidates) {
    return ::FindReferencedNamespaces(name, locale, candidates);
}

bool VexMDMaProvider::FindReferencedItem(NameParts const& names, I18NLocale const* locale,
                                         Vex_Handle_Collection& candidates, VexMDMaPath& path) {
    return ::FindReferencedItem(startContext(locale), names, candidates, path);
}

VexModelScope VexMDMaProvider::modelScope(I18NLocale const* locale) const {
    return {*m_session, locale, ConvertFromInt(m_currentRequestValue)};
}

VexStartContext VexMDMaProvider::startContext(I18NLocale const* locale) const {
    return {modelScope(locale), m_defaultLocale, m_supportedLocales};
}
