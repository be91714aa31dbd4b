#pragma once

#include "I18NString.h"
#include "VEX_HANDLE.h"

class KRLIDOM_Node;
class VexSession;
class VexTreeObserver;

/// The extension that answers metadata requests at an object that the host has a
/// handle of; see `VexPluginExtension.h`. A start path or a reference is searched for
/// by name, and may lead to another object than the one meant; a handle cannot.
struct VexAnswerAt {
    static constexpr char const* Id = "vex.answer-at/1"; ///< what a host asks for

    /// Answers `request` into `response` exactly as the metadata request of a fresh
    /// session would whose start path leads to `object`, with the same checks and
    /// failures. The options of the request that say where to start are not read. The
    /// path of the start is the object's own, from the outermost element below the
    /// model's root on, in the session's language, a "]" in a name doubled. A request
    /// for functions is answered as ever.
    ///
    /// Like every start the object is shown whatever the user may see: a host asks the
    /// accessibility of `object` first, and answers for one that is not accessible as
    /// for one that does not exist.
    ///
    /// An observer is told what becomes of each object, as by `VexExplainTree`; null
    /// tells nobody. With a null `response` the same is decided and reported and nothing
    /// is built; that needs an observer.
    ///
    /// `object` is an element of the session's open model below its root; for anything
    /// else the failure of a parameter of the wrong type is raised, before anything is
    /// written, as for a response that is no element and for neither response nor
    /// observer. The session's own action object plays no part: the session stays as it
    /// was. A call of the session: one at a time, between the plug-in's `Initialize` and
    /// `Terminate`.
    void (*answer)(VexSession& session, I18NString const& modelPath, KRLIDOM_Node& request,
                   KRLIDOM_Node* response, VEX_HANDLE object, VexTreeObserver* observer);
};
