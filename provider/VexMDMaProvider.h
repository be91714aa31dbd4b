#pragma once

#include "I18NLocale.h"
#include "I18NString.h"
#include "KRLIDOM_Document.h"
#include "VEX_HANDLE.h"
#include "Vex_Handle_Collection.h"
#include "Vex_I18NString_Collection.h"
#include "model/VexMDMaModelElementInfo.h"
#include "security/VexMDAccessEngine.h"
#include "security/VexSessionSecurity.h"

#include <list>
#include <optional>
#include <set>

class VexMDMaProviderHelper;
class VexMDMaProviderVisability;
class VexSession;
struct VexFoundStart;
struct VexModelScope;
struct VexStartContext;
struct VexTreeContext;
class VexTreeObservation;

/// Answers the metadata requests of one session, one at a time.
///
/// Between requests it keeps the model path of the first one, the security
/// information once that was read, and the model's locales. Failures are raised
/// as `VexException`; what is in the response by then stays there.
class VexMDMaProvider {
public:
    using NameParts = std::list<I18NString>; // outermost first

    /// The session must outlive the provider.
    VexMDMaProvider(VexSession& session, I18NString const& modelPath);
    VexMDMaProvider(VexMDMaProvider const&) = delete;
    VexMDMaProvider& operator=(VexMDMaProvider const&) = delete;

    // --- Entry (VexMDMaProvider.cpp)

    /// Classifies the model path: only a content path has security.
    void Initialize(I18NString const& modelPath);

    /// Answers the request below `request` into `response`, whose first child
    /// takes the tree.
    void doRequest(KRLIDOM_Node& request, KRLIDOM_Node& response);
    void doRequest(VexMDMaProviderHelper& helper, KRLIDOM_Node responseNode);
    /// The same at `object` instead of where the request says to start. Raises, before
    /// anything is written, when that is no element of the open model below its root.
    void doRequestAt(KRLIDOM_Node& request, KRLIDOM_Node& response, VEX_HANDLE object);

    /// Tells `observation` about every tree that is written from now on; null tells
    /// nobody. It must outlive those trees.
    void observe(VexTreeObservation* observation) { m_observation = observation; }

    /// The engine for the views that the request asks for.
    VexMDAccessEngine getAccessEngine(VexMDMaProviderHelper const& helper,
                                      I18NLocale const& locale);

    // --- The model as a whole (VexMDMaProviderGlobal.cpp)

    void getModelLocales();
    /// Appends the global entries asked for to `response`.
    void ProcessGlobal(VexMDMaProviderHelper const& helper, I18NLocale const* locale,
                       KRLIDOM_Element& response);

    // --- Start paths and references (VexMDMaProviderStart.cpp, start/)

    /// Finds the object that the parts of `startPath` lead to and writes its
    /// tree below `parent`.
    void ProcessRequest(VexMDMaProviderHelper const& helper, NameParts const& parts,
                        I18NString const& startPath, int const& depth, I18NLocale const* locale,
                        VexMDAccessEngine& engine, VexMDMaProviderVisability& visibility,
                        bool isReference, KRLIDOM_Node parent);

    /// Writes the tree of `object` below `parent`, its own path being the start's.
    void ProcessRequestAt(VexMDMaProviderHelper const& helper, VEX_HANDLE object, int depth,
                          I18NLocale const* locale, VexMDAccessEngine& engine,
                          VexMDMaProviderVisability& visibility, KRLIDOM_Node const& parent);

    /// Looks for the name at `part` among `items`. When found, leaves that one
    /// object in `items`, puts its record in front of `path` and its ancestors'
    /// at the back; otherwise changes neither.
    bool FindItemInCollection(NameParts::const_iterator& part, I18NLocale const* locale,
                              Vex_Handle_Collection& items, VexMDMaPath& path);

    /// The same for a reference; `found` is what its first name leads to.
    void ProcessStartAtRefRequest(VexMDMaProviderHelper const& helper, NameParts const& parts,
                                  I18NString const& startPath, int const& depth,
                                  I18NLocale const* locale, KRLIDOM_Node parent,
                                  VexMDAccessEngine& engine, VexMDMaProviderVisability& visibility,
                                  Vex_Handle_Collection& found);
    bool FindReferencedFilterOrCalculation(NameParts const& names, I18NLocale const* locale,
                                           Vex_Handle_Collection& candidates, VexMDMaPath& path);
    bool FindReferencedNamespaces(I18NString const& name, I18NLocale const* locale,
                                  Vex_Handle_Collection& candidates);
    bool FindReferencedShortcutQI(VexMDMaProviderHelper const& helper, NameParts const& names,
                                  I18NString const& reference, int const& depth,
                                  I18NLocale const* locale, KRLIDOM_Node node,
                                  VexMDAccessEngine& engine, VexMDMaProviderVisability& visibility,
                                  Vex_Handle_Collection& candidates);
    bool FindReferencedItem(NameParts const& names, I18NLocale const* locale,
                            Vex_Handle_Collection& candidates, VexMDMaPath& path);

    // --- Tree output (VexMDMaProviderTree.cpp, tree/)

    /// Writes each of `objects` with its members under `parent`.
    void GetRequestedElementTreeAtLevel(VexMDMaProviderHelper const& helper,
                                        I18NString const& className, I18NString const& startPath,
                                        VexMDMaPath const& path, int depth,
                                        I18NLocale const* locale, KRLIDOM_Node parent,
                                        Vex_Handle_Collection& objects, VexMDAccessEngine& engine,
                                        VexMDMaProviderVisability& visibility, int level,
                                        bool pathHoldsElement, bool skipViewLists, bool isStart);
    /// Writes one object with its members under `parent`.
    void AddRequestedSubtreeAtLevel(VexMDMaProviderHelper const& helper,
                                    I18NString const& className, I18NString const& startPath,
                                    VexMDMaPath const& path, int depth, I18NLocale const* locale,
                                    KRLIDOM_Node parent, VEX_HANDLE object,
                                    VexMDAccessEngine& engine,
                                    VexMDMaProviderVisability& visibility, int level,
                                    bool pathHoldsElement, bool skipViewLists, bool isStart);
    /// Writes a shortcut as an element of its target's class and gives that,
    /// not appended yet; null when it is not written.
    KRLIDOM_Node processShortCut(VexMDMaProviderHelper const& helper, VEX_HANDLE shortcut,
                                 I18NString const& parentPath, VexMDMaPath const& path,
                                 int const& depth, int level, I18NLocale const* locale,
                                 VexMDAccessEngine& engine, VexMDMaProviderVisability& visibility,
                                 bool pathHoldsElement, bool atStart);
    /// Replaces a shortcut's handle by its target's, null when it names none,
    /// and `targetClass` by the target's class when there is one.
    void FindShortcutReference(I18NString const& name, VEX_HANDLE& shortcut,
                               I18NString& targetClass);

    // --- Element classification (VexMDMaProviderTree.cpp, tree/VexElementReference.h)

    /// Appends the reference of the object that `path` leads to.
    void GetReferenceForElement(I18NLocale const* locale, VexMDMaPath& path, I18NString& reference);
    bool IsNamespaceOrShortcutToNamespace(I18NLocale const* locale, I18NString const& className,
                                          I18NString const& name, I18NString& namespaceName);
    /// Replaces `element` by its nearest enclosing namespace or null; an element
    /// is never its own.
    void FindParentNamespace(I18NLocale const* locale, VEX_HANDLE& element);
    bool IsQuerySubjectOrQueryItemOrFilterOrCalculation(I18NString const& className,
                                                        I18NString const& name);
    bool IsShortcutToQSFilterCalculation(I18NLocale const* locale, I18NString const& className,
                                         I18NString const& name);
    /// Appends the parts as [part].[part]... to `reference`.
    void BuildObjectReference(NameParts const& parts, I18NString& reference);

    // --- Reduced tree (VexMDMaProviderTree.cpp, tree/VexReducedTree.h)

    /// Writes the child objects of `object` under the first child of `parent`,
    /// each with id, name, role and class, whatever the user may see.
    void GetReducedElementTree(VEX_HANDLE object, I18NLocale const* locale, KRLIDOM_Node parent);
    void AddSubtree(VEX_HANDLE object, I18NLocale const* locale, KRLIDOM_Element parent);

    // --- Security information and classes (VexMDMaProviderSecurity.cpp, ...Schema.cpp)

    void RetrieveSecurityInfo();
    /// The names of the secured classes; one set for the process, filled when it is
    /// empty. Threads: any, but who empties it must be alone until the next call has
    /// returned.
    static std::set<I18NString>& GetSecuredObjectsSet();
    bool IsObjectSecured(I18NString const& className);
    /// Cuts the collection suffix's length off `name`.
    void getClassName(I18NString const& name, I18NString& className);
    /// Appends the children of `object` whose class is `collectionName`.
    void loadCollection(VEX_HANDLE object, I18NString const& collectionName,
                        Vex_Handle_Collection& found);
    void getAllAttributes(Vex_Handle_Collection& properties, std::list<I18NString>& names);
    void getAllCollections(Vex_Handle_Collection& properties, std::list<I18NString>& names);

private:
    /// Answers at `object`; where the request says to start, when that is null.
    void answer(VexMDMaProviderHelper const& helper, KRLIDOM_Node const& response,
                VEX_HANDLE object);
    /// The tree goes into `result`, settings behind it into `response`.
    void answerModelRequest(VexMDMaProviderHelper const& helper, KRLIDOM_Node const& response,
                            KRLIDOM_Node const& result, int depth, VEX_HANDLE object);
    void answerFunctionRequest(VexMDMaProviderHelper const& helper, KRLIDOM_Node const& result,
                               KRLIDOM_Element const& package);

    /// The one place where what was found is written; nothing for none.
    static void writeStart(std::optional<VexFoundStart> const& start, VexTreeContext const& context,
                           I18NString const& startPath, KRLIDOM_Node const& parent);

    VexModelScope modelScope(I18NLocale const* locale) const;
    VexStartContext startContext(I18NLocale const* locale) const;
    VexTreeContext treeContext(VexMDMaProviderHelper const& helper, int depth,
                               I18NLocale const* locale, VexMDAccessEngine& engine,
                               VexMDMaProviderVisability& visibility) const;

    VexSession* m_session;
    KRLIDOM_Document m_document;
    VexSessionSecurity m_security; // model path, views, roles and their source
    int m_currentRequestValue = 0; // the root namespace's handle
    Vex_I18NString_Collection m_supportedLocales;
    I18NString m_defaultLocale;
    VexTreeObservation* m_observation = nullptr;
};
