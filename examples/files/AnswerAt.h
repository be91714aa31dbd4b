#pragma once

#include "KRLException.h"
#include "VexAction.h"
#include "VexAnswerAt.h"
#include "VexLoadedPlugin.h"
#include "VexModel.h"

/// Whether the session's user may see the object.
inline bool isAccessible(VexLoadedPlugin& plugin, VexSession& session, I18NString& modelPath,
                         VEX_HANDLE object) {
    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(VexVariant(&modelPath));
    in.AddParam(VexVariant(object));
    in.AddParam(VexVariant(0L));
    VexParams out;
    return plugin.act(session, VexAction::AccessibilityRequest, in, out) &&
           static_cast<long>(out[1]) == 1;
}

/// Answers the request at the object with that id. False, and nothing is answered, when the
/// user knows of none: the same for an id that there is not and for an object that is hidden.
/// Raises `KRLException` when the plug-in does not offer it.
inline bool answerAt(VexLoadedPlugin& plugin, VexSession& session, I18NString& modelPath,
                     VexModel const& model, I18NString const& id, KRLIDOM_Node& request,
                     KRLIDOM_Node& response) {
    VexAnswerAt const* const extension = plugin.findExtension<VexAnswerAt>();
    if (extension == nullptr) {
        throw KRLException(plugin.file() + " does not offer " + VexAnswerAt::Id);
    }
    VEX_HANDLE const object = model.findById(id);
    if (!object.IsNotNull() || !isAccessible(plugin, session, modelPath, object)) {
        return false;
    }
    extension->answer(session, modelPath, request, &response, object, nullptr);
    return true;
}
