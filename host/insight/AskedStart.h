#pragma once

#include "I18NLocale.h"
#include "VexTreeExplanation.h"
#include "host/service/MetadataRequest.h"
#include "host/store/image/Model.h"

#include <optional>

namespace vex {

/// Where a request asks to start.
struct AskedStart {
    I18NString text; // a start path, or a reference
    I18NString lastName;
    bool isReference = false;

    /// The one of a request; none when it names no start, or the text does not
    /// split into names.
    static std::optional<AskedStart> of(MetadataRequest const& request);
};

/// The same request for its start alone.
MetadataRequest startAloneOf(MetadataRequest request);

/// Keeps where a tree starts, as the plug-in reports it.
class StartObserver final : public VexTreeObserver {
public:
    void report(VexTreeReport const& report) override;
    void reportOutside(VexTreeSize const& /*size*/) override {}

    /// Null when nothing was found to start at. A shortcut is the start itself.
    VEX_HANDLE start() const { return m_start; }
    /// True when a shortcut on the way was followed.
    bool isBehindShortcut() const { return m_isBehindShortcut; }

private:
    VEX_HANDLE m_start;
    bool m_isBehindShortcut = false;
};

/// True when the object has that name in `locale` or in a language of the model.
bool bearsName(Model const& model, I18NLocale const& locale, VEX_HANDLE object,
               I18NString const& name);

/// True when the object stands where the start path says: in what has the other names,
/// in some language. Not told, so true, of references and of what stands behind a
/// shortcut.
bool standsOnTheWay(Model const& model, I18NLocale const& locale, StartObserver const& found,
                    AskedStart const& asked);

} // namespace vex
