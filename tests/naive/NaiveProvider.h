#pragma once

#include "tests/naive/NaiveFailure.h"
#include "tests/naive/NaiveRequest.h"
#include "tests/naive/NaiveVisibility.h"
#include "tests/naive/PlainCatalogue.h"
#include "tests/naive/ResponseDocument.h"

#include <list>

namespace naive {

/// What a session stands on.
struct NaiveHost {
    PlainModel const& model;
    PlainCatalogue const* catalogue; ///< null when a model was given alone
    Text user;
    Text locale; ///< the session's, as negotiated
};

/// One model element met along a path.
struct ElementInfo {
    Text name;
    Text className;
};
using Path = std::list<ElementInfo>;

/// What stays the same while one request is answered.
struct RequestScope {
    NaiveRequest const& request;
    Text const& locale;
    int depth;
    NaiveAccessEngine& engine;
    NaiveVisibility& visibility;
    ResponseDocument& document;
    WorkBudget& budget;
    Handles expanding; ///< the shortcuts whose members are being written
};

struct OutputFlags {
    bool pathHoldsElement;
    bool skipViewLists;
    bool isStart;
};

/// Answers the metadata requests of one session, and keeps what lasts between them.
class NaiveProvider {
public:
    NaiveProvider(NaiveHost const& host, Text const& modelPath);

    void doRequest(NaiveRequest const& request, ResponseDocument& document, WorkBudget& budget);

private:
    // Entry
    void retrieveSecurityInfo();
    void answerFunctionRequest(NaiveRequest const& request, ResponseDocument& document);
    void answerModelRequest(NaiveRequest const& request, int depth, ResponseDocument& document,
                            WorkBudget& budget);
    NaiveAccessEngine accessEngine(NaiveRequest const& request) const;

    // Global information
    void getModelLocales();
    void writeGlobals(NaiveRequest const& request, ResponseDocument& document) const;

    // The start object
    void processRequest(RequestScope& scope, Texts const& parts, Text const& startPath,
                        bool isReference);
    void walkStartPath(RequestScope& scope, Texts const& parts, Text const& startPath,
                       Handles found);
    bool findItemInCollection(Text const& wanted, Handles& items, Path& path) const;
    bool matchesInSupportedLocale(Text const& wanted, Handles const& items) const;

    // References
    void processReference(RequestScope& scope, Texts const& parts, Text const& reference,
                          Handles found, bool secondPass);
    bool findFilterOrCalculation(Texts const& parts, Handles& candidates, Path& path) const;
    bool namespaceExistsBelow(Text const& name, Handles const& candidates) const;
    bool findThroughShortcut(RequestScope& scope, Texts const& parts, Text const& reference);
    bool findQueryItem(Texts const& parts, Handles& candidates, Path& path) const;
    Handle findQuerySubject(Handle container, Texts const& parts, Path& path) const;
    Handle findQuerySubjectModelWide(Texts const& parts) const;
    Handle shortcutTarget(Handle shortcut) const;
    bool namespaceHasName(Handle object, Text const& wanted) const;

    // Shortcuts
    void findShortcutReference(Text const& name, Handle& shortcut, Text& targetClass) const;
    std::unique_ptr<ResponseElement> writeShortcut(RequestScope& scope, Handle shortcut,
                                                   Text const& parentPath, Path const& path,
                                                   int level, bool pathHoldsElement, bool atStart);
    void setShortcutAttributes(RequestScope const& scope, Texts const& names, Handle shortcut,
                               Handle target, Text const& name, Text const& pathText,
                               Text const& reference, ResponseElement& element) const;

    // Classification
    Text referenceOf(RequestScope& scope, Path const& path) const;
    bool isNamespaceBoundary(RequestScope& scope, ElementInfo const& info,
                             Text& namespaceName) const;
    bool isShortcutToSegment(RequestScope& scope, ElementInfo const& info) const;

    // Output
    void writeObjects(RequestScope& scope, Text const& className, Text const& startPath,
                      Path const& path, ResponseElement& parent, Handles const& objects, int level,
                      OutputFlags flags);
    void writeObject(RequestScope& scope, Text const& className, Text const& startPath,
                     Path const& path, ResponseElement& parent, Handle object, int level,
                     OutputFlags flags);
    bool setAttributes(RequestScope& scope, Text const& className, Handle object, OutputFlags flags,
                       Text& pathText, Path& records, ResponseElement& element) const;
    void writeMembers(RequestScope& scope, Text const& tag, Handle object, Text const& pathText,
                      Path const& records, ResponseElement& parent, int level, OutputFlags flags);

    // Schema
    Texts allAttributes(Handles const& properties) const;
    Texts allCollections(Handles const& properties) const;
    Text nameOf(Handle object) const;
    Text classOf(Handle object) const;

    NaiveHost m_host;
    PlainModel const& m_model;
    Text m_modelPath;
    bool m_nonContentPath = false;
    bool m_securityRetrieved = false;
    std::optional<SecuritySource> m_source;
    Texts m_availableViews;
    Texts m_roles;
    Handle m_rootNamespace = nullptr;
    Texts m_supportedLocales;
    Text m_defaultLocale;
};

} // namespace naive
