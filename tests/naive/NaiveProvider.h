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
    const PlainModel& model;
    const PlainCatalogue* catalogue; ///< null when a model was given alone
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
    const NaiveRequest& request;
    const Text& locale;
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
    NaiveProvider(const NaiveHost& host, const Text& modelPath);

    void doRequest(const NaiveRequest& request, ResponseDocument& document, WorkBudget& budget);

private:
    // Entry
    void retrieveSecurityInfo();
    void answerFunctionRequest(const NaiveRequest& request, ResponseDocument& document);
    void answerModelRequest(const NaiveRequest& request, int depth, ResponseDocument& document,
                            WorkBudget& budget);
    NaiveAccessEngine accessEngine(const NaiveRequest& request) const;

    // Global information
    void getModelLocales();
    void writeGlobals(const NaiveRequest& request, ResponseDocument& document) const;

    // The start object
    void processRequest(RequestScope& scope, const Texts& parts, const Text& startPath,
                        bool isReference);
    void walkStartPath(RequestScope& scope, const Texts& parts, const Text& startPath,
                       Handles found);
    bool findItemInCollection(const Text& wanted, Handles& items, Path& path) const;
    bool matchesInSupportedLocale(const Text& wanted, const Handles& items) const;

    // References
    void processReference(RequestScope& scope, const Texts& parts, const Text& reference,
                          Handles found, bool secondPass);
    bool findFilterOrCalculation(const Texts& parts, Handles& candidates, Path& path) const;
    bool namespaceExistsBelow(const Text& name, const Handles& candidates) const;
    bool findThroughShortcut(RequestScope& scope, const Texts& parts, const Text& reference);
    bool findQueryItem(const Texts& parts, Handles& candidates, Path& path) const;
    Handle findQuerySubject(Handle container, const Texts& parts, Path& path) const;
    Handle findQuerySubjectModelWide(const Texts& parts) const;
    Handle shortcutTarget(Handle shortcut) const;
    bool namespaceHasName(Handle object, const Text& wanted) const;

    // Shortcuts
    void findShortcutReference(const Text& name, Handle& shortcut, Text& targetClass) const;
    std::unique_ptr<ResponseElement> writeShortcut(RequestScope& scope, Handle shortcut,
                                                   const Text& parentPath, const Path& path,
                                                   int level, bool pathHoldsElement, bool atStart);
    void setShortcutAttributes(const RequestScope& scope, const Texts& names, Handle shortcut,
                               Handle target, const Text& name, const Text& pathText,
                               const Text& reference, ResponseElement& element) const;

    // Classification
    Text referenceOf(RequestScope& scope, const Path& path) const;
    bool isNamespaceBoundary(RequestScope& scope, const ElementInfo& info,
                             Text& namespaceName) const;
    bool isShortcutToSegment(RequestScope& scope, const ElementInfo& info) const;

    // Output
    void writeObjects(RequestScope& scope, const Text& className, const Text& startPath,
                      const Path& path, ResponseElement& parent, const Handles& objects, int level,
                      OutputFlags flags);
    void writeObject(RequestScope& scope, const Text& className, const Text& startPath,
                     const Path& path, ResponseElement& parent, Handle object, int level,
                     OutputFlags flags);
    bool setAttributes(RequestScope& scope, const Text& className, Handle object, OutputFlags flags,
                       Text& pathText, Path& records, ResponseElement& element) const;
    void writeMembers(RequestScope& scope, const Text& tag, Handle object, const Text& pathText,
                      const Path& records, ResponseElement& parent, int level, OutputFlags flags);

    // Schema
    Texts allAttributes(const Handles& properties) const;
    Texts allCollections(const Handles& properties) const;
    Text nameOf(Handle object) const;
    Text classOf(Handle object) const;

    NaiveHost m_host;
    const PlainModel& m_model;
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
