#pragma once

#include "I18NLocale.h"
#include "I18NString.h"
#include "VEX_HANDLE.h"
#include "Vex_Handle_Collection.h"

#include <map>

class VexMDAccessEngine;
class VexMDMaProvider;
class VexSession;

/// Decides for one request whether a namespace that is not included is shown
/// for what lies inside it. A verdict, once reached, is never changed: what is
/// asked first matters. Kept on purpose.
class VexMDMaProviderVisability {
public:
    enum state {
        NotVisible = 0,
        Visible = 1,
        NothingFound = 2,
    };

    /// Nothing is owned; the engine must outlive this. It alone is asked: the model is
    /// read without the others, which are kept as they are and may be null.
    VexMDMaProviderVisability(I18NLocale const& locale, VexSession* session,
                              VexMDAccessEngine* engine, VexMDMaProvider* provider);

    /// The verdict on one object; only `Visible` means that it is shown. The
    /// handle may be replaced on the way.
    state IsVisible(VEX_HANDLE& object);

    /// `Visible` when something below the object is included, else the last
    /// examination's result.
    state ExamineNamespaceVisability(VEX_HANDLE& object);

    /// Appends the object's children of one class to `found` and tests all that
    /// is in there. When one is included, `object` becomes that child, for
    /// another class than the namespace's the child's nearest namespace.
    bool hasIncludedChild(VEX_HANDLE& object, I18NString const& className,
                          Vex_Handle_Collection& found);

private:
    std::map<I18NString, state> m_verdicts;
    [[maybe_unused]] VexSession* m_session;
    [[maybe_unused]] I18NLocale m_locale; // a copy
    VexMDAccessEngine* m_engine;
    [[maybe_unused]] VexMDMaProvider* m_provider;
};
