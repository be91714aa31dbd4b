#include "host/service/PathConfinement.h"

#include "VexAction.h"
#include "resources.h"

namespace vex {

namespace {

I18NString prefixed(I18NString const& path) {
    return I18NString(resources::getString(resources::PathMark)).append(path);
}

/// The parameter of an action that names a model.
struct PathPlace {
    long action;
    std::size_t parameter;
};
constexpr PathPlace places[] = {
    {VexAction::MetadataRequest, 1},
    {VexAction::AccessibilityRequest, 1},
};

std::string quotedPath(I18NString const& path) {
    constexpr int most = 80;
    return '"' + path.substring(0, most).toUtf8() + (path.length() > most ? "...\"" : "\"");
}

} // namespace

PathConfinement::PathConfinement(I18NString path)
    : m_path(std::move(path)), m_prefixed(prefixed(m_path)) {}

bool PathConfinement::admits(I18NString const& asked) const {
    return asked == m_path || asked == m_prefixed;
}

void PathConfinement::require(I18NString const& asked) const {
    if (!admits(asked)) {
        throw ForeignPathException(
            "the session may only be asked about its own model path " + quotedPath(m_path) +
            ", and " + quotedPath(asked) +
            " is another one; name its own, or open a session for the other");
    }
}

void PathConfinement::requireIn(VexVariant const& action, VexParams const& in) const {
    for (PathPlace const& place : places) {
        if (action.GetType() == VexVariant::Long && static_cast<long>(action) == place.action) {
            if (auto const* const asked = static_cast<I18NString*>(in[place.parameter])) {
                require(*asked);
            }
        }
    }
}

bool PathConfinement::isMeantBy(I18NString const& read) const {
    return read == m_path || prefixed(read) == m_path;
}

} // namespace vex
